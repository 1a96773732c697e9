#include <host/tools/NozzleParam.h>

NozzleParam::NozzleParam() = default;

void NozzleParam::SetZero() {
    tipRadius = 0;
    tipLength = 0;
    nozzleRadius = 0;
    nozzleLength = 0;
    neckRadius = 0;
    bodyRadius = 0;
}
