#include <BRepPrimAPI_MakeCylinder.hxx>
#include <cell/bodies/Bodies.h>
#include <cell/bodies/Solids.h>
#include <cell/documents/ShapeFile.h>
#include <cell/model/Kinds.h>
#include <host/workpiece/Workpiece.h>

namespace cell {

namespace {

const Quantity_Color RawSteel(0.55, 0.60, 0.66, Quantity_TOC_sRGB);

using SolidReader = TopoDS_Shape (*)(const JsonNode& node);

/// Stands on its frame's origin, in the middle of its base.
TopoDS_Shape ReadBox(const JsonNode& node) {
    node.OnlyKeys({"kind", "size_mm", "placement"});
    const std::vector<JsonNode> sizes = node.At("size_mm").Items("sizes");
    if (sizes.size() != 3) {
        node.At("size_mm").Refuse("three lengths");
    }
    const double x = sizes[0].Length() / 2;
    const double y = sizes[1].Length() / 2;
    return Block(gp_Ax2(), {-x, -y, 0}, {x, y, sizes[2].Length()});
}

TopoDS_Shape ReadCylinder(const JsonNode& node) {
    node.OnlyKeys({"kind", "radius_mm", "height_mm", "placement"});
    return BRepPrimAPI_MakeCylinder(node.At("radius_mm").Length(), node.At("height_mm").Length()).Shape();
}

const std::map<std::string, SolidReader>& SolidKinds() {
    static const std::map<std::string, SolidReader> kinds = {{"box", ReadBox}, {"cylinder", ReadCylinder}};
    return kinds;
}

TopoDS_Shape ReadSolids(const JsonNode& list) {
    Assembly assembly;
    for (const JsonNode& node : list.Items("solids")) {
        const TopoDS_Shape solid = RequireKind(SolidKinds(), node.At("kind"))(node);
        const auto placement = node.Find("placement");
        assembly.Add(placement ? solid.Moved(TopLoc_Location(ReadPlacement(*placement))) : solid);
    }
    if (assembly.IsEmpty()) {
        list.Refuse("at least one solid");
    }
    return assembly.Shape();
}

} // namespace

std::shared_ptr<GenericEntityConfig> ReadWorkpiece(const JsonNode& item, const std::string& name,
                                                   std::uint64_t hash) {
    OnlyMechanismKeys(item, {"solids", "file", "edges"});
    const auto solids = item.Find("solids");
    const auto file = item.Find("file");
    if (solids.has_value() == file.has_value()) {
        item.Refuse(file ? "both solids and file" : "neither solids nor file",
                    "either a list of solids or the path of a shape");
    }
    auto workpiece = std::make_shared<Workpiece>();
    workpiece->SetName(name);
    workpiece->SetHashIndex(hash);
    AddBase({{solids ? ReadSolids(*solids) : ReadShape(*file), RawSteel}}, *workpiece);
    workpiece->UpdateLinkModelNames();
    return workpiece;
}

} // namespace cell
