#include <cell/Cell.h>
#include <cell/Commands.h>
#include <cell/Kinds.h>
#include <cell/OutputFile.h>
#include <cell/SavedMechanism.h>
#include <cell/Text.h>
#include <ostream>

namespace cell {

namespace {

constexpr const char* CellName = "cell.json";
constexpr const char* FolderName = "mechanisms";

/// The saved cell stands alone: what it was built from comes along.
Json::Value InlinedItem(const JsonNode& node) {
    Json::Value item = node.Value();
    if (item.isMember("model")) {
        item["structure"] = StructureOf(node).Value();
        item.removeMember("model");
    }
    return item;
}

void SaveInto(const Cell& cell, const std::filesystem::path& folder) {
    Json::Value json = cell.Node().Value();
    Json::Value& items = json["mechanisms"];
    for (Json::ArrayIndex i = 0; i < items.size(); ++i) {
        const Mechanism& mechanism = cell.Mechanisms()[i];
        items[i] = InlinedItem(mechanism.node);
        SaveMechanism(*mechanism.entity, folder, FolderName, items[i]);
    }
    WriteWhole(folder / CellName, JsonText(json));
}

} // namespace

void Save(const SaveRequest& request, std::ostream& out) {
    const Cell cell = Cell::Load(request.file);
    cell.Node().At("mechanisms"); // an arm alone is not a cell
    WriteFolder(request.folder, {CellName, FolderName},
                [&](const std::filesystem::path& beside) { SaveInto(cell, beside); });
    out << "saved " << cell.Mechanisms().size() << " mechanisms of \"" << cell.Name() << "\" in "
        << request.folder.string() << '\n';
}

} // namespace cell
