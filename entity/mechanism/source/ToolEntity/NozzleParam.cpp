#include <host/tools/NozzleParam.h>

namespace {
constexpr double DefaultGuardClearance = 10.0;
}

NozzleParam::NozzleParam()
    : tipRadius(0), tipLength(0), nozzleRadius(0), nozzleLength(0), neckRadius(0), bodyRadius(0), tcpZ(0),
      tcpX(0), torchAngle(0), bodyLength(0), stickOut(0), guardClearance(DefaultGuardClearance) {}

void NozzleParam::SetZero() {
    tipRadius = 0;
    tipLength = 0;
    nozzleRadius = 0;
    nozzleLength = 0;
    neckRadius = 0;
    bodyRadius = 0;
}
