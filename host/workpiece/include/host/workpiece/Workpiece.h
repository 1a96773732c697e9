#pragma once

#include <host/workpiece/GenericEntityConfig.h>

class BenchEntity;

/// A part to be worked on: an entity, usually without links, that a bench may carry.
///
/// Its placement in the world is GetRootMdlTrsf; a workpiece mounted on a flange of a positioner
/// (AssembleOtherModel) follows it with every ForwardTrsf. Tool paths are given in the workpiece's frame.
class Workpiece : public GenericEntityConfig {
public:
    /// A workpiece without models, at the world's origin.
    Workpiece();
    /// Takes over the models, name, hash and mounting of an entity that is already built.
    /// @throws std::invalid_argument for a null parent.
    explicit Workpiece(GenericEntity* parent);

    /// The bench that carries it, not owned; null while it is on none. Kept by BenchEntity, which also clears
    /// it.
    BenchEntity* carrier = nullptr;
};
