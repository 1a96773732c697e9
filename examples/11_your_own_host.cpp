// What a host brings of its own: settings, a place for the log, the registration of its systems, and
// mechanisms that the library does not know. (Built with -DMECHANISM_BUILTIN_HOST=OFF the library takes even
// the framework from you: define the four targets mechanism::host_* with the headers of host/ before you add
// it.)
#include "common/Registrar.h"
#include "common/SampleArm.h"
#include <cmath>
#include <cstdio>
#include <host/tools/CADParamConfig.h>
#include <host/tools/LogUtils.h>
#include <iostream>
#include <spdlog/sinks/ostream_sink.h>
#include <spdlog/spdlog.h>

namespace {

/// A conveyor: one sliding axis that always starts from where it was last parked.
class Conveyor : public GenericEntityConfig {
public:
    explicit Conveyor(GenericEntity* structure) : GenericEntityConfig(structure) { Initial(); }

    void SetCurrentValue(const std::vector<double>& values, size_t system) override {
        GenericEntityConfig::SetCurrentValue(values, system);
        travelled += std::abs(GetCurrentValue(0)[0] - last);
        last = GetCurrentValue(0)[0];
    }
    double Travelled() const { return travelled; }

private:
    double last = 0;
    double travelled = 0;
};

} // namespace

int main() {
    // A logger that the host registers under the library's name gets its records; nothing else is touched.
    auto sink = std::make_shared<spdlog::sinks::ostream_sink_mt>(std::cout);
    auto logger = std::make_shared<spdlog::logger>(LogUtils::LoggerName, sink);
    logger->set_level(spdlog::level::err);
    logger->set_pattern("log, %l: %v");
    spdlog::register_logger(logger);

    CADParamConfig::GetInstance()->defaultRobotValues = {0, -20 * Deg, 0, 0, 20 * Deg, 0};
    const std::unique_ptr<RobotEntity> arm = MakeSampleArm(1);
    arm->UpdateModelPara();
    std::printf("starts with joint 2 at %.0f deg\n", arm->GetInitialValue()[1] / Deg);
    try {
        GrpConfig::GetRobotDof(arm->GetRobotSystem()); // not registered yet: logged, and thrown as a string
    } catch (const std::string&) {
        Registrar::Register(arm->GetRobotSystem());
    }
    std::printf("joints: %d\n", GrpConfig::GetRobotDof(arm->GetRobotSystem()));

    GenericEntityConfig structure;
    structure.SetName("belt");
    structure.SetRootMdl(new ShapeEntity(TopoDS_Shape(), Uuid::CreateUuid()));
    Json::Value link = LinkOfRow(1, {0, 0, 0, 0});
    link["joint_type"] = static_cast<int>(JointLinear);
    for (const double number : {0, 0, 0, 1, 0, 0}) {
        link["joint_axis"].append(number);
    }
    structure.UpdateLinkRodPara(link, false);
    Conveyor belt(&structure);
    belt.SetCurrentValue({120}, 0);
    belt.SetCurrentValue({20}, 0);
    belt.ForwardTrsf(0, true, true);
    std::printf("%s at %.0f mm, travelled %.0f mm\n", belt.GetName().c_str(),
                belt.GetLink(0)->worldTrsf.TranslationPart().X(), belt.Travelled());
}
