#include <cell/Systems.h>

namespace cell {

namespace {

constexpr int WristFollower = 5;

} // namespace

void Registrar::RegisterRobot(std::uint64_t hash, int dof) {
    auto& entry = ChangeGrpConfigList()[hash];
    if (entry && entry->robotDof == dof && entry->contextDof == dof) {
        return;
    }
    entry = std::make_shared<GrpConfig>();
    entry->InitDOF(0, dof, 1, 0);
}

void FillCoupling(std::uint64_t hash, int dof, bool coupled) {
    CoupedValue record;
    int count = 0;
    for (int i = 0; i < dof; ++i) {
        if (!coupled || i != WristFollower) {
            record.index[count++] = i;
        }
    }
    if (coupled) {
        record.skip[WristFollower] = -1;
        record.ratio[WristFollower] = -1.0;
    }
    record.enabled = coupled;
    record.robotValueCount = dof;
    GrpConfig::ChangeCoupledList()[hash] = record;
}

} // namespace cell
