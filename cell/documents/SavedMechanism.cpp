#include <algorithm>
#include <cell/InputError.h>
#include <cell/documents/SavedMechanism.h>
#include <cell/text/OutputFile.h>
#include <cell/text/Text.h>

namespace fs = std::filesystem;

namespace cell {

namespace {

constexpr const char* AsSaved = "a document as save writes it";

using Models = std::vector<opencascade::handle<ViewShape>>;

/// In the order of the package's list: fixed models, then those of the links.
Models PartsOf(const GenericEntityConfig& entity) {
    Models parts;
    for (const auto& [key, model] : entity.GetFixMdlMap()) {
        parts.push_back(model);
    }
    for (int i = 0; i < entity.GetLinkSize(); ++i) {
        const auto& models = entity.GetLink(static_cast<std::size_t>(i))->models;
        std::copy_if(models.begin(), models.end(), std::back_inserter(parts),
                     [](const auto& model) { return !model.IsNull(); });
    }
    return parts;
}

void RestoreDocument(GenericEntityConfig& entity, const JsonNode& document) {
    const JsonNode hash = document.At("HashID");
    if (hash.Hash() != entity.GetHashIndex()) {
        hash.Refuse(std::to_string(entity.GetHashIndex()) + ", the hash of " + entity.GetName());
    }
    const int kind = entity.GetMechanismType();
    if (const auto type = document.Find("type"); type && type->Value() != kind) {
        type->Refuse(std::to_string(kind));
    }
    try {
        entity.LoadFromJson(document.Value());
    } catch (const RefusedValue& refused) {
        document.Refuse(refused);
    } catch (const std::exception& error) {
        document.Refuse(error.what(), AsSaved);
    } catch (const std::string& text) { // the library's own failures
        document.Refuse(text, AsSaved);
    }
}

Uuid ReadId(const JsonNode& node) {
    try {
        return Uuid::FromString(node.Text());
    } catch (const std::invalid_argument&) {
        node.Refuse("an identifier of the form 8-4-4-4-12 hexadecimal digits");
    }
}

void RestoreParts(const GenericEntityConfig& entity, const JsonNode& manifest) {
    const Models parts = PartsOf(entity);
    const JsonNode list = manifest.At("models");
    const std::vector<JsonNode> entries = list.Items("models");
    if (entries.size() != parts.size()) {
        list.Refuse(std::to_string(entries.size()) + " models",
                    std::to_string(parts.size()) + ", one for each part of " + entity.GetName());
    }
    for (std::size_t i = 0; i < parts.size(); ++i) {
        parts[i]->SetId(ReadId(entries[i].At("id")));
    }
}

/// Replaces characters that file names must not contain; the hash distinguishes names that become equal.
std::string FileNameOf(const GenericEntityConfig& entity) {
    std::string text = entity.GetName();
    std::replace_if(
        text.begin(), text.end(),
        [](unsigned char c) { return c < 0x80 && std::isalnum(c) == 0 && c != '-' && c != '_'; }, '_');
    return text + "-" + std::to_string(entity.GetHashIndex());
}

} // namespace

void RestoreSaved(GenericEntityConfig& entity, const JsonNode& item) {
    const fs::path folder = item.File().parent_path();
    if (const auto document = item.Find("document")) {
        RestoreDocument(entity, JsonNode::Load(folder / document->Text()));
    }
    if (const auto package = item.Find("package")) {
        RestoreParts(entity, JsonNode::Load(folder / package->Text() / "manifest.json"));
    }
}

void SaveMechanism(GenericEntityConfig& entity, const fs::path& base, const std::string& folder,
                   Json::Value& item) {
    const std::string package = folder + "/" + FileNameOf(entity);
    Json::Value document = entity.ToJson((base / package).string());
    entity.ExportParaToJson(document);
    // Some kinds write no package, and none reports a failure to write one.
    if (!fs::exists(base / package / "manifest.json")) {
        GenericEntityConfig::ExportEntityPkg(&entity, (base / package).string());
    }
    if (!fs::exists(base / package / "manifest.json")) {
        throw InputError((base / package).string(), "", "cannot be written", "room for the package");
    }
    WriteText(base / (package + ".json"), JsonText(document));
    item["document"] = package + ".json";
    item["package"] = package;
}

} // namespace cell
