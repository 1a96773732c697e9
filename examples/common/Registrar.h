#pragma once

#include <mechanism/GrpConfig.h>

/// The registry of systems is open to derived classes only: a host registers what it has through one of
/// these, before it makes the first state of the system.
struct Registrar : GrpConfig {
    /// @param benches axes of each bench.
    static void Register(std::uint64_t system, int pedestalAxes = 0,
                         const std::vector<double>& benches = {}) {
        auto config = std::make_shared<GrpConfig>();
        config->InitDOF(pedestalAxes, /*joints*/ 6, /*robots*/ 1, /*benches, counted below*/ 0);
        config->SetBenchesDofs(benches);
        ChangeGrpConfigList()[system] = config;
    }
};
