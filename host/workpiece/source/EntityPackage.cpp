#include <BRepTools.hxx>
#include <filesystem>
#include <fstream>
#include <host/workpiece/GenericEntityConfig.h>

// The package: a folder with a manifest and one BRep file a model.

namespace {

Json::Value WriteModel(const opencascade::handle<ViewShape>& model, const std::filesystem::path& folder) {
    Json::Value entry(Json::objectValue);
    entry["id"] = model->GetId().ToString();
    entry["name"] = model->GetName();
    if (!model->Shape().IsNull()) {
        const std::string file = model->GetId().ToString() + ".brep";
        std::ofstream out(folder / file, std::ios::binary);
        BRepTools::Write(model->Shape(), out);
        out.flush();
        if (!out) {
            throw std::filesystem::filesystem_error("cannot write model", folder / file,
                                                    std::make_error_code(std::errc::io_error));
        }
        entry["file"] = file;
    }
    return entry;
}

void WriteManifest(const Json::Value& manifest, const std::filesystem::path& file) {
    std::ofstream out(file, std::ios::binary);
    out << manifest.toStyledString();
    out.close();
    if (!out) {
        // What is there afterwards counts as a package.
        std::error_code ignored;
        std::filesystem::remove(file, ignored);
        throw std::filesystem::filesystem_error("cannot write manifest", file,
                                                std::make_error_code(std::errc::io_error));
    }
}

} // namespace

bool GenericEntityConfig::ExportEntityPkg(GenericEntityConfig* entity, const std::string& path) {
    if (entity == nullptr || path.empty()) {
        return false;
    }
    try {
        const std::filesystem::path folder(path);
        std::filesystem::create_directories(folder);
        Json::Value manifest = entity->GenericEntityConfig::DataToJson(path);
        for (const auto& [key, model] : entity->GetFixMdlMap()) {
            manifest["models"].append(WriteModel(model, folder));
        }
        for (int i = 0; i < entity->GetLinkSize(); ++i) {
            for (const auto& model : entity->GetLink(static_cast<std::size_t>(i))->models) {
                if (!model.IsNull()) {
                    Json::Value entry = WriteModel(model, folder);
                    entry["link_hash"] = Json::UInt64(entity->GetLink(static_cast<std::size_t>(i))->linkHash);
                    manifest["models"].append(entry);
                }
            }
        }
        WriteManifest(manifest, folder / "manifest.json");
        return true;
    } catch (const std::filesystem::filesystem_error&) {
        return false;
    }
}
