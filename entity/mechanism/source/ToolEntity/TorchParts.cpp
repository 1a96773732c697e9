#include "TorchParts.h"

#include "Checked.h"
#include "Document.h"

#include <Quantity_Color.hxx>
#include <TopoDS_Builder.hxx>
#include <TopoDS_Compound.hxx>
#include <gp_Quaternion.hxx>
#include <host/tools/NozzleParam.h>
#include <host/tools/gpHandle.h>
#include <json/value.h>
#include <numbers>

using namespace mechanism_detail;

namespace {

constexpr ColorLayer Copper{133.0 / 255.0, 90.0 / 255.0, 0.0, 0.0, 8};
constexpr auto NozzleColour = static_cast<Quantity_NameOfColor>(131);
constexpr auto BodyColour = static_cast<Quantity_NameOfColor>(134);
/// Collision tolerance (mm) of the torch body, which stays away from the seam.
constexpr double BodyCollisionTolerance = 20.0;

ColorLayer Layer(Quantity_NameOfColor colour, double transparency) {
    ColorLayer layer;
    Quantity_Color(colour).Values(layer.red, layer.green, layer.blue, Quantity_TOC_RGB);
    layer.transparency = transparency;
    return layer;
}

opencascade::handle<ShapeEntity> Part(const TopoDS_Shape& shape) {
    return new ShapeEntity(shape, Uuid::CreateUuid());
}

} // namespace

bool mechanism_detail::IsWeldGun(const Json::Value& param) {
    if (!param.isNull() && !param.isObject()) {
        Refuse("parameters", param, "an object");
    }
    const Json::Value& type = param["Type"];
    if (type.isArray() || type.isObject()) {
        Refuse("Type", type, "a text");
    }
    return type.asString() == "WeldGun";
}

std::optional<Torch> mechanism_detail::BuildTorch(const Json::Value& param) {
    NozzleParam nozzle;
    nozzle.LoadFrom(param);
    gp_Quaternion turn;
    turn.SetVectorAndAngle(gp::DY(), (180.0 - nozzle.torchAngle) / 180.0 * std::numbers::pi);
    const LocEuler tcp(gp_Pnt(nozzle.tcpX, 0.0, nozzle.tcpZ), gpHandle::QuaToEuler(turn));
    auto [built, shapes] = NozzleParam::LoadTcpLocEuler(nozzle, tcp);
    if (!built) {
        return std::nullopt;
    }
    return Torch{tcp, std::move(shapes)};
}

std::vector<opencascade::handle<ShapeEntity>>
mechanism_detail::MakeTorchParts(const std::vector<TopoDS_Shape>& shapes) {
    const auto tip = Part(At(shapes, 0));
    tip->SetShapeLayer(shapes[0], Copper);

    TopoDS_Compound front;
    TopoDS_Builder builder;
    builder.MakeCompound(front);
    for (const int i : {1, 2, 3}) {
        builder.Add(front, At(shapes, i));
    }
    const auto middle = Part(front);
    middle->SetShapeLayer(shapes[1], Layer(NozzleColour, 0.0));
    middle->SetShapeLayer(shapes[2], Copper);
    middle->SetShapeLayer(shapes[3], Layer(NozzleColour, 1.0));

    const auto body = Part(At(shapes, 4));
    body->SetShapeColorLayer(Layer(BodyColour, 0.0));
    body->collisionTolerance = BodyCollisionTolerance;
    return {tip, middle, body};
}
