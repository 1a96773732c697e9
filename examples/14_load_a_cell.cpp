// A cell file as the program loads it: mechanisms, key states, motions, and every state of a planned motion.
#include <cell/Cell.h>
#include <cell/InputError.h>
#include <cell/Planner.h>
#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s CELL.json\n", argv[0]);
        return 2;
    }
    try {
        const cell::Cell cell = cell::Cell::Load(argv[1]);
        std::printf("%s: %zu mechanisms, %zu systems, %zu key states\n", cell.Name().c_str(),
                    cell.Mechanisms().size(), cell.Systems().size(), cell.KeyStates().size());
        for (const cell::PlannedMotion& planned : cell::PlanMotions(cell, {})) {
            std::printf("motion %s (%s): %zu states, tool centre moves %.1f mm\n",
                        planned.motion->name.c_str(), planned.motion->kind.c_str(), planned.Steps(),
                        planned.tcpLength);
        }
    } catch (const cell::InputError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
