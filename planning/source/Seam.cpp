#include <planning/Seam.h>

namespace planning {

SeamFreedom SeamFreedom::Welding() {
    constexpr double Off = 5 * DegreeInRadians;
    SeamFreedom freedom;
    freedom.lead = {0, Off, Off, Off};
    freedom.work = {0, Off, Off, Off};
    return freedom;
}

SeamFreedom SeamFreedom::Painting() {
    constexpr double Off = 10 * DegreeInRadians;
    SeamFreedom freedom;
    freedom.spin.step = Off;
    freedom.lead = {0, Off, Off, Off};
    freedom.work = {0, Off, Off, Off};
    return freedom;
}

} // namespace planning
