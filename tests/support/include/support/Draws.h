#pragma once

#include <random>

/// Number of random cases of a test; `--draws=N` on the command line of a test program changes it. Every test
/// seeds its own generator, so a failing case is reproducible.
struct Draws {
    static int& Count() {
        static int count = 2000;
        return count;
    }
};

/// Seeded random numbers for tests.
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
