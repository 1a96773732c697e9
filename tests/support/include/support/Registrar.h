#pragma once

#include <mechanism/GrpConfig.h>
#include <memory>
#include <vector>

/// Registers a system during its lifetime; states of the system must not outlive it.
class Registrar : private GrpConfig {
public:
    struct Layout {
        int pedestal = 0;
        int joints = 6;
        int robots = 1;
        std::vector<double> benches = {};
    };

    Registrar(std::uint64_t system_, const Layout& layout) : system(system_) {
        auto config = std::make_shared<GrpConfig>();
        config->InitDOF(layout.pedestal, layout.joints, layout.robots, 0);
        config->SetBenchesDofs(layout.benches);
        ChangeGrpConfigList()[system] = std::move(config);
    }
    ~Registrar() {
        ChangeGrpConfigList().erase(system);
        ChangeCoupledList().erase(system);
    }
    Registrar(const Registrar&) = delete;
    Registrar& operator=(const Registrar&) = delete;

private:
    std::uint64_t system;
};
