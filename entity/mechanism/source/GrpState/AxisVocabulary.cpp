#include <mechanism/AxisVocabulary.h>

#include <array>
#include <string_view>
#include <utility>

namespace {

constexpr std::array<std::pair<std::string_view, AxisName>, 10> NamedAxes{{{"ARM_J1", ARM_J1},
                                                                           {"ARM_J2", ARM_J2},
                                                                           {"ARM_J3", ARM_J3},
                                                                           {"ARM_J4", ARM_J4},
                                                                           {"ARM_J5", ARM_J5},
                                                                           {"ARM_J6", ARM_J6},
                                                                           {"Tool", Tool},
                                                                           {"Gantry_X1", Gantry_X1},
                                                                           {"Gantry_Y1", Gantry_Y1},
                                                                           {"Gantry_Z1", Gantry_Z1}}};
constexpr std::array<AxisName, 3> CartesianAxes{axisX1, axisY1, axisZ1};

} // namespace

AxisName StringToAxis(const std::string& text) {
    for (const auto& [name, axis] : NamedAxes) {
        if (text == name) {
            return axis;
        }
    }
    for (std::size_t i = 0; i < CartesianAxes.size(); ++i) {
        if (text == CartesianAxisNames[i]) {
            return CartesianAxes[i];
        }
    }
    return Tool;
}
