#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <Interface_CheckIterator.hxx>
#include <RWStl.hxx>
#include <STEPControl_Reader.hxx>
#include <TopoDS_Face.hxx>
#include <XSControl_WorkSession.hxx>
#include <algorithm>
#include <cell/InputError.h>
#include <cell/documents/ShapeFormats.h>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>

namespace fs = std::filesystem;

namespace cell {

namespace {

/// The faults that Open CASCADE finds before it transfers the model; transferring such a file may crash.
void RequireSound(const STEPControl_Reader& reader, const fs::path& file) {
    Interface_CheckIterator checks = reader.WS()->ModelCheckList();
    if (checks.IsEmpty(Standard_True)) {
        return;
    }
    for (checks.Start(); checks.More(); checks.Next()) {
        if (checks.Value()->HasFailed()) {
            const std::string entity = checks.Number() > 0 ? "entity " + std::to_string(checks.Number()) : "";
            throw InputError(file.string(), entity, checks.Value()->CFail(1), "a whole STEP file");
        }
    }
}

TopoDS_Shape ReadStep(const fs::path& file) {
    STEPControl_Reader reader;
    if (reader.ReadFile(file.string().c_str()) != IFSelect_RetDone) {
        return {};
    }
    RequireSound(reader, file);
    reader.TransferRoots();
    return reader.OneShape();
}

/// The kernel's reader goes on with numbers that it never got, for ever or until memory ends: the stream
/// stops it.
TopoDS_Shape ReadBRep(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    TopoDS_Shape shape;
    BRepTools::Read(shape, stream, BRep_Builder());
    return shape;
}

/// Open CASCADE's reader accepts a truncated file. Binary files state their length, text files end with their
/// name.
bool IsWholeStl(const fs::path& file) {
    constexpr std::size_t Header = 80;
    constexpr std::uintmax_t Facet = 50;
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    std::uint32_t facets = 0;
    if (bytes.size() >= Header + sizeof facets) {
        std::memcpy(&facets, bytes.data() + Header, sizeof facets);
        if (bytes.size() == Header + sizeof facets + facets * Facet) {
            return true;
        }
    }
    return bytes.find("endsolid") != std::string::npos;
}

/// Triangles alone: one face that has no surface.
TopoDS_Shape ReadStl(const fs::path& file) {
    if (!IsWholeStl(file)) {
        return {};
    }
    const opencascade::handle<Poly_Triangulation> triangles = RWStl::ReadFile(file.string().c_str());
    if (triangles.IsNull() || triangles->NbTriangles() == 0) {
        return {};
    }
    TopoDS_Face face;
    BRep_Builder().MakeFace(face, triangles);
    return face;
}

using Reader = TopoDS_Shape (*)(const fs::path&);

Reader FindReader(const fs::path& file) {
    static const std::map<std::string, Reader> readers = {
        {".step", ReadStep}, {".stp", ReadStep}, {".brep", ReadBRep}, {".stl", ReadStl}};
    std::string extension = file.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const auto found = readers.find(extension);
    return found != readers.end() ? found->second : nullptr;
}

} // namespace

bool IsReadableShapeName(const fs::path& file) { return FindReader(file) != nullptr; }

TopoDS_Shape ReadShapeUnguarded(const fs::path& file) { return FindReader(file)(file); }

} // namespace cell
