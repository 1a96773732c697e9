#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepTools.hxx>
#include <BRep_Tool.hxx>
#include <Interface_Static.hxx>
#include <STEPControl_Writer.hxx>
#include <StlAPI_Writer.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <cell/documents/ShapeOutput.h>
#include <cell/text/OutputFile.h>
#include <fstream>
#include <map>
#include <sstream>

namespace fs = std::filesystem;

// Not all writers of Open CASCADE report a full disk, so each file is checked after writing.

namespace cell {

namespace {

constexpr double StlDeflection = 0.5; // mm
constexpr double StlAngle = 0.1;      // rad

bool EndsIn(const fs::path& file, const std::string& end) {
    std::ifstream stream(file, std::ios::binary | std::ios::ate);
    const auto room = static_cast<std::streamoff>(end.size()) + 2; // and a line's end
    if (!stream || stream.tellg() < room) {
        return false;
    }
    stream.seekg(-room, std::ios::end);
    std::ostringstream tail;
    tail << stream.rdbuf();
    return tail.str().find(end) != std::string::npos;
}

bool WriteStep(const TopoDS_Shape& shape, const fs::path& file) {
    STEPControl_Writer writer;
    Interface_Static::SetCVal("write.step.unit", "MM");
    return writer.Transfer(shape, STEPControl_AsIs) == IFSelect_RetDone &&
           writer.Write(file.string().c_str()) == IFSelect_RetDone && EndsIn(file, "END-ISO-10303-21;");
}

bool WriteBRep(const TopoDS_Shape& shape, const fs::path& file) {
    std::ofstream stream(file, std::ios::binary);
    BRepTools::Write(shape, stream);
    stream.close();
    return stream.good();
}

bool WriteStl(const TopoDS_Shape& shape, const fs::path& file) {
    constexpr std::uintmax_t Header = 84;
    constexpr std::uintmax_t Record = 50;
    IMeshTools_Parameters parameters;
    parameters.Deflection = StlDeflection;
    parameters.Angle = StlAngle;
    // Cones are straight between their rims; intermediate points would only cost minutes.
    parameters.InternalVerticesMode = Standard_False;
    const BRepMesh_IncrementalMesh mesher(shape, parameters);
    std::uintmax_t triangles = 0;
    for (TopExp_Explorer faces(shape, TopAbs_FACE); faces.More(); faces.Next()) {
        TopLoc_Location location;
        const auto mesh = BRep_Tool::Triangulation(TopoDS::Face(faces.Current()), location);
        triangles += mesh.IsNull() ? 0 : static_cast<std::uintmax_t>(mesh->NbTriangles());
    }
    StlAPI_Writer writer;
    writer.ASCIIMode() = Standard_False;
    return writer.Write(shape, file.string().c_str()) && fs::file_size(file) == Header + Record * triangles;
}

using Writer = bool (*)(const TopoDS_Shape&, const fs::path&);

const std::map<fs::path, Writer>& Writers() {
    static const std::map<fs::path, Writer> writers = {
        {".step", WriteStep}, {".stp", WriteStep}, {".brep", WriteBRep}, {".stl", WriteStl}};
    return writers;
}

} // namespace

bool IsShapeName(const fs::path& file) { return Writers().contains(file.extension()); }

void WriteShape(const TopoDS_Shape& shape, const fs::path& file) {
    const Writer write = Writers().at(file.extension());
    WriteWhole(file, [&](const fs::path& beside) { return write(shape, beside); });
}

} // namespace cell
