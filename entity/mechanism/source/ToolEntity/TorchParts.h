#pragma once

#include <array>
#include <host/tools/LocEuler.h>
#include <host/workpiece/ShapeEntity.h>
#include <json/forwards.h>
#include <optional>
#include <vector>

namespace mechanism_detail {

/// A torch built from its parameters: tool centre in the mounting frame, and solids.
struct Torch {
    LocEuler tcp;
    std::vector<TopoDS_Shape> shapes;
};

/// Whether the parameters describe a welding torch ("Type").
bool IsWeldGun(const Json::Value& param);

/// @return the torch, or nothing when the numbers describe none.
/// @throws std::invalid_argument naming the key of a number that is missing or out of range.
std::optional<Torch> BuildTorch(const Json::Value& param);

/// The three part models: the tip; nozzle, neck and guard; the body. Each has a fresh identity.
/// @throws std::out_of_range "invalid vector subscript" for fewer than five shapes.
std::vector<opencascade::handle<ShapeEntity>> MakeTorchParts(const std::vector<TopoDS_Shape>& shapes);

} // namespace mechanism_detail
