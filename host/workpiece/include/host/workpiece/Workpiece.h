#pragma once

#include <host/workpiece/GenericEntityConfig.h>

class BenchEntity;

/// A part to be worked on, held by a bench.
class Workpiece : public GenericEntityConfig {
public:
    Workpiece();
    explicit Workpiece(GenericEntity* parent);

    /// The bench that holds it, or null while it is loose.
    BenchEntity* carrier = nullptr;
};
