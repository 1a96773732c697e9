#pragma once

#include <array>
#include <host/tools/LocEuler.h>
#include <host/workpiece/ShapeEntity.h>
#include <json/forwards.h>
#include <optional>
#include <vector>

namespace mechanism_detail {

/// A torch as its parameters give it: the tool centre in the mounting frame, and the solids.
struct Torch {
    LocEuler tcp;
    std::vector<TopoDS_Shape> shapes;
};

/// Whether the parameters speak of a welding torch at all.
bool IsWeldGun(const Json::Value& param);

/// Nothing when the numbers give no torch.
/// @throws std::invalid_argument naming the key of a number that is missing or out of range.
std::optional<Torch> BuildTorch(const Json::Value& param);

/// The three part models: the tip; nozzle, neck and guard; the body. Each has a fresh identity.
/// @throws std::out_of_range "invalid vector subscript" for fewer than five shapes.
std::vector<opencascade::handle<ShapeEntity>> MakeTorchParts(const std::vector<TopoDS_Shape>& shapes);

} // namespace mechanism_detail
