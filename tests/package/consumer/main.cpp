#include <iostream>
#include <mechanism/mechanism.h>

// The registry is open to derived classes only: this is how a host registers its systems.
struct Registrar : GrpConfig {
    static void Register(std::uint64_t system) {
        auto config = std::make_shared<GrpConfig>();
        config->InitDOF(0, 6, 1, 0);
        ChangeGrpConfigList()[system] = config;
    }
};

int main() {
    Registrar::Register(7);
    const GrpState start(7);
    GrpState goal(7);
    goal.SetValue(Robot, 0, 1.5);
    const auto path = InterpHandle::InterpolationPts(start, goal, std::vector<double>(6, 0.5));
    std::cout << "states " << path.size() << ", last " << path.back().GetValue(Robot, ARM_J1) << "\n";
}
