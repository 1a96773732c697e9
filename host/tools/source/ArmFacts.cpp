#include <gp_Vec.hxx>
#include <host/tools/ArmFacts.h>
#include <host/tools/gpHandle.h>
#include <numbers>

Rigid ArmFacts::ChainBase(int structure) {
    return structure == 1 ? Rigid::From(gpHandle::AxisRotateToTrsf(gp_Vec(0, 0, 1), std::numbers::pi))
                          : Rigid();
}
