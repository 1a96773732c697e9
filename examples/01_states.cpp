// A system is one robot cell: its joint values lie in one flat vector, first the robot's, then the
// pedestal's, then the benches'. A GrpState is that vector at one instant.
#include "common/Registrar.h"
#include <iostream>
#include <mechanism/mechanism.h>

int main() {
    constexpr std::uint64_t cell = 7; // any number but 0; hosts use the robot's hash
    Registrar::Register(cell, /*pedestal axes*/ 1, /*a bench with two axes*/ {2});

    GrpState state(cell);
    state.SetValues(Robot, std::vector<double>{0.1, 0.2, 0.3, 0.4, 0.5, 0.6}); // rad
    state.SetValue(Pedestal, 0, 1500);                                         // mm along the rail
    state.SetValues(Bench, std::vector<double>{0.0, 1.57});

    std::cout << "values:";
    for (const double value : state.GetValues()) {
        std::cout << ' ' << value;
    }
    std::cout << "\njoint 3: " << state.GetValue(Robot, ARM_J3) << " rad\n";
    std::cout << "rail: " << state.GetValue(Pedestal, Gantry_X1) << " mm\n";
    std::cout << "bench axes: " << state.GetValues(Bench).size() << "\n";

    GrpState moved = state; // states are values: copies are independent
    moved.SetValue(Pedestal, 0, 1500.05);
    std::cout << "equal: " << (moved == state) << ", equal for simulation: " << moved.IsEqualForSimu(state)
              << "\n";

    try {
        const GrpState unknown(99);
    } catch (const std::string& error) { // the library's failures are strings
        std::cout << "no system 99: " << error.substr(error.rfind(':') + 1) << "\n";
    }
}
