#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <RWStl.hxx>
#include <STEPControl_Reader.hxx>
#include <Standard_Failure.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Face.hxx>
#include <algorithm>
#include <cell/InputError.h>
#include <cell/ShapeFile.h>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

namespace fs = std::filesystem;

namespace cell {

namespace {

TopoDS_Shape ReadStep(const fs::path& file) {
    STEPControl_Reader reader;
    if (reader.ReadFile(file.string().c_str()) != IFSelect_RetDone) {
        return {};
    }
    reader.TransferRoots();
    return reader.OneShape();
}

std::string Content(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The kernel's reader takes the numbers that a cut file no longer has from memory it never set, and makes
/// room for that many things. Whole files end each of their shapes with a star, and then name the last one.
bool IsWholeBRep(const fs::path& file) {
    const std::string text = Content(file);
    const auto start = text.rfind("\nTShapes ");
    if (start == std::string::npos) {
        return false;
    }
    std::istringstream words(text.substr(start));
    std::string word;
    long shapes = 0;
    words >> word >> shapes;
    while (shapes > 0 && words >> word) {
        shapes -= word == "*" ? 1 : 0;
    }
    int last = 0;
    int location = 0;
    return shapes == 0 && words >> last >> location;
}

TopoDS_Shape ReadBRep(const fs::path& file) {
    if (!IsWholeBRep(file)) {
        return {};
    }
    TopoDS_Shape shape;
    const bool isWhole = BRepTools::Read(shape, file.string().c_str(), BRep_Builder());
    return isWhole ? shape : TopoDS_Shape();
}

/// The kernel's reader keeps what a cut file still holds. Binary files tell their length, texts end by name.
bool IsWholeStl(const fs::path& file) {
    constexpr std::size_t Header = 80;
    constexpr std::uintmax_t Facet = 50;
    const std::string bytes = Content(file);
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

Reader RequireReader(const JsonNode& name, const fs::path& file) {
    static const std::map<std::string, Reader> readers = {
        {".step", ReadStep}, {".stp", ReadStep}, {".brep", ReadBRep}, {".stl", ReadStl}};
    std::string extension = file.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const auto found = readers.find(extension);
    if (found == readers.end()) {
        name.Refuse("a file that ends in .step, .stp, .brep or .stl");
    }
    return found->second;
}

} // namespace

TopoDS_Shape ReadShape(const JsonNode& name) {
    const fs::path file = name.File().parent_path() / name.Text();
    const Reader reader = RequireReader(name, file);
    if (!fs::is_regular_file(file)) {
        throw InputError(file.string(), "", "cannot be read", "a file with a shape");
    }
    TopoDS_Shape shape;
    try {
        shape = reader(file);
    } catch (const Standard_Failure&) {
        shape.Nullify(); // broken files make readers stumble in many ways
    }
    if (shape.IsNull() || !TopExp_Explorer(shape, TopAbs_FACE).More()) {
        throw InputError(file.string(), "", "holds no faces",
                         "a shape in the format of its extension, " + file.extension().string());
    }
    return shape;
}

} // namespace cell
