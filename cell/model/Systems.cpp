#include <cell/model/Systems.h>

namespace cell {

namespace {

constexpr int WristFollower = 5;

} // namespace

std::vector<const LinkRod*> AxesOf(const GenericEntity& entity) {
    std::vector<const LinkRod*> axes;
    axes.reserve(static_cast<std::size_t>(entity.GetLinkSize()));
    for (int i = 0; i < entity.GetLinkSize(); ++i) {
        axes.push_back(entity.GetLink(static_cast<std::size_t>(i)));
    }
    return axes;
}

std::vector<const LinkRod*> System::PedestalAxes() const {
    std::vector<const LinkRod*> axes;
    if (pedestal != nullptr) {
        const auto [start, count] = pedestal->GetCurrentValueData(Hash());
        for (std::uint64_t i = start; i < start + count; ++i) {
            axes.push_back(pedestal->GetLink(i));
        }
    }
    return axes;
}

void Registrar::Register(const System& system) {
    auto wanted = std::make_shared<GrpConfig>();
    const std::vector<double> benches(system.benches.size(),
                                      system.benches.empty() ? 0.0 : system.benches.front()->GetLinkSize());
    wanted->InitDOF(static_cast<int>(system.PedestalAxes().size()), system.robot->GetDOF(0), 1, 0);
    wanted->SetBenchesDofs(benches);
    auto& entry = ChangeGrpConfigList()[system.Hash()];
    if (!entry || entry->robotDof != wanted->robotDof || entry->pedestalDof != wanted->pedestalDof ||
        entry->benchesDofs != wanted->benchesDofs) {
        entry = std::move(wanted);
    }
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
