#include <BRepAdaptor_Curve.hxx>
#include <BRepBndLib.hxx>
#include <BRep_Tool.hxx>
#include <BinTools.hxx>
#include <Bnd_Box.hxx>
#include <GCPnts_AbscissaPoint.hxx>
#include <Standard_Failure.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cell/InputError.h>
#include <cell/documents/ChildProcess.h>
#include <cell/documents/ShapeFile.h>
#include <cell/documents/ShapeFormats.h>
#include <cell/text/Notice.h>
#include <cmath>
#include <host/view/TriangleModel.h>
#include <sstream>

namespace fs = std::filesystem;

namespace cell {

namespace {

/// Beyond a kilometre (mm) there is no cell.
constexpr double FarthestOut = 1e6;

/// Large assemblies take up to a minute; files that take longer are usually broken.
std::chrono::milliseconds timeLimit = std::chrono::seconds(120);

[[noreturn]] void RefuseEmpty(const fs::path& file) {
    throw InputError(file.string(), "", "holds no faces",
                     "a shape in the format of its extension, " + file.extension().string());
}

void RequireReasonableSize(const TopoDS_Shape& shape, const fs::path& file) {
    Bnd_Box box;
    BRepBndLib::AddOptimal(shape, box, Standard_False);
    if (box.IsVoid()) { // triangles without a surface
        BRepBndLib::Add(shape, box);
    }
    const auto isOutside = [](const gp_Pnt& p) {
        return !(std::max({std::abs(p.X()), std::abs(p.Y()), std::abs(p.Z())}) <= FarthestOut);
    };
    if (box.IsVoid() || box.IsOpen() || isOutside(box.CornerMin()) || isOutside(box.CornerMax())) {
        throw InputError(file.string(), "", "is not within 1000000 mm of its origin",
                         "a part of a robot cell");
    }
}

TopoDS_Shape Unpacked(const std::string& bytes) {
    std::istringstream stream(bytes);
    TopoDS_Shape shape;
    BinTools::Read(shape, stream);
    return shape;
}

/// What commands do with a part later, no finer than they do it: where that crashes or hangs, it is to happen
/// in the child. Done on the shape that the parent will get.
void Rehearse(const TopoDS_Shape& shape) {
    constexpr double FinestDeflection = 0.05; // mm
    for (TopExp_Explorer edges(shape, TopAbs_EDGE); edges.More(); edges.Next()) {
        const TopoDS_Edge& edge = TopoDS::Edge(edges.Current());
        if (!BRep_Tool::Degenerated(edge)) {
            GCPnts_AbscissaPoint::Length(BRepAdaptor_Curve(edge));
        }
    }
    const TriangleModel rehearsed(shape, FinestDeflection);
}

std::string ReadInChild(const fs::path& file) {
    try {
        const TopoDS_Shape shape = ReadShapeUnguarded(file);
        if (shape.IsNull() || !TopExp_Explorer(shape, TopAbs_FACE).More()) {
            RefuseEmpty(file);
        }
        RequireReasonableSize(shape, file);
        std::ostringstream bytes;
        BinTools::Write(shape, bytes);
        Rehearse(Unpacked(bytes.str()));
        return bytes.str();
    } catch (const Standard_Failure&) { // broken files make readers stumble in many ways
        RefuseEmpty(file);
    } catch (const std::ios::failure&) {
        RefuseEmpty(file);
    }
}

} // namespace

void SetShapeTimeLimit(std::chrono::milliseconds limit) { timeLimit = limit; }

TopoDS_Shape ReadShape(const fs::path& file) {
    if (std::error_code error; !fs::is_regular_file(file, error)) {
        throw InputError(file.string(), "",
                         error ? "cannot be read (" + error.message() + ")" : "cannot be read",
                         "a file with a shape");
    }
    Notice("reading " + file.string());
    try {
        return Unpacked(RunInChild([&] { return ReadInChild(file); }, timeLimit));
    } catch (const ChildFailure& failure) {
        throw InputError(file.string(), "", failure.what(),
                         "a whole shape, or --part-seconds for one that takes long");
    }
}

TopoDS_Shape ReadShape(const JsonNode& name) {
    const fs::path file = name.File().parent_path() / name.Text();
    if (!IsReadableShapeName(file)) {
        name.Refuse("a file that ends in .step, .stp, .brep or .stl");
    }
    return ReadShape(file);
}

} // namespace cell
