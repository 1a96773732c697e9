#include <app/commands/Commands.h>
#include <cell/Cell.h>
#include <cell/documents/SavedMechanism.h>
#include <cell/model/Kinds.h>
#include <cell/text/OutputFile.h>
#include <cell/text/Text.h>
#include <ostream>
#include <regex>

namespace fs = std::filesystem;

namespace cell {

namespace {

constexpr const char* CellName = "cell.json";
constexpr const char* FolderName = "mechanisms";

/// The saved cell is complete: the files that it was built from are included.
Json::Value InlinedItem(const JsonNode& node, const fs::path& base) {
    Json::Value item = node.Value();
    if (item.isMember("file")) {
        const fs::path file = node.File().parent_path() / item["file"].asString();
        const std::string copy =
            std::string(FolderName) + "/shape-" + item["hash"].asString() + file.extension().string();
        fs::create_directories(base / FolderName);
        fs::copy_file(file, base / copy);
        item["file"] = copy;
    }
    if (item.isMember("model")) {
        item["structure"] = StructureOf(node).Value();
        item.removeMember("model");
    }
    return item;
}

void SaveInto(const Cell& cell, const fs::path& folder) {
    Json::Value json = cell.Node().Value();
    Json::Value& items = json["mechanisms"];
    for (Json::ArrayIndex i = 0; i < items.size(); ++i) {
        const Mechanism& mechanism = cell.Mechanisms()[i];
        items[i] = InlinedItem(*mechanism.node, folder);
        SaveMechanism(*mechanism.entity, folder, FolderName, items[i]);
    }
    WriteText(folder / CellName, JsonText(json));
}

/// Whether save writes files of this name.
bool IsSaved(const std::string& name) {
    static const std::regex names(
        R"(cell\.json|mechanisms(/shape-\d+\.\w+|/[^/]+-\d+(\.json|/[^/]+\.(json|brep))?)?)");
    return std::regex_match(name, names);
}

} // namespace

void Save(const SaveRequest& request, std::ostream& out) {
    const Cell cell = Cell::Load(request.file);
    cell.Node().At("mechanisms"); // an arm alone is not a cell
    WriteFolder(request.folder, IsSaved, [&](const fs::path& folder) { SaveInto(cell, folder); });
    out << "saved " << cell.Mechanisms().size() << " mechanisms of \"" << cell.Name() << "\" in "
        << request.folder.string() << '\n';
}

} // namespace cell
