#pragma once

#include <random>

/// How many random cases a test draws; `--draws=N` on the command line of a test program turns it up.
/// Every test seeds its own generator, so a case that fails is drawn again.
struct Draws {
    static int& Count() {
        static int count = 2000;
        return count;
    }
};

/// Seeded source of the numbers that tests draw.
class Draw {
public:
    explicit Draw(unsigned seed) : engine(seed) {}
    double Between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(engine);
    }
    int Whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine); }

private:
    std::mt19937 engine;
};
