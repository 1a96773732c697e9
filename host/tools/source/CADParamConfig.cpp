#include <host/tools/CADParamConfig.h>

CADParamConfig* CADParamConfig::GetInstance() {
    static CADParamConfig instance;
    return &instance;
}
