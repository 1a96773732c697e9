#include <BRepTools.hxx>
#include <filesystem>
#include <fstream>
#include <host/workpiece/GenericEntityConfig.h>
#include <map>
#include <utility>

// The package: a folder with a manifest and one BRep file a model.

namespace {

/// Writes models into a folder, one file each, named by the model's identifier; a number is added where
/// several models share one.
class ModelWriter {
public:
    explicit ModelWriter(std::filesystem::path packageFolder) : folder(std::move(packageFolder)) {}

    /// @return the model's entry in the manifest.
    Json::Value Write(const ViewShape& model) {
        const std::string id = model.GetId().ToString();
        Json::Value entry(Json::objectValue);
        entry["id"] = id;
        entry["name"] = model.GetName();
        if (!model.Shape().IsNull()) {
            const int number = ++used[id];
            const std::string file = id + (number > 1 ? "-" + std::to_string(number) : "") + ".brep";
            WriteShape(model.Shape(), folder / file);
            entry["file"] = file;
        }
        return entry;
    }

private:
    static void WriteShape(const TopoDS_Shape& shape, const std::filesystem::path& file) {
        std::ofstream out(file, std::ios::binary);
        BRepTools::Write(shape, out);
        out.flush();
        if (!out) {
            throw std::filesystem::filesystem_error("cannot write model", file,
                                                    std::make_error_code(std::errc::io_error));
        }
    }

    std::filesystem::path folder;
    std::map<std::string, int> used;
};

Json::Value WriteModels(GenericEntityConfig& entity, ModelWriter& writer) {
    Json::Value models(Json::arrayValue);
    for (const auto& [key, model] : entity.GetFixMdlMap()) {
        models.append(writer.Write(*model));
    }
    for (int i = 0; i < entity.GetLinkSize(); ++i) {
        const LinkRod& link = *entity.GetLink(static_cast<std::size_t>(i));
        for (const auto& model : link.models) {
            if (!model.IsNull()) {
                Json::Value entry = writer.Write(*model);
                entry["link_hash"] = Json::UInt64(link.linkHash);
                models.append(entry);
            }
        }
    }
    return models;
}

void WriteManifest(const Json::Value& manifest, const std::filesystem::path& file) {
    std::ofstream out(file, std::ios::binary);
    out << manifest.toStyledString();
    out.close();
    if (!out) {
        // A manifest marks a complete package, so an incomplete one must not stay.
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
        ModelWriter writer(folder);
        manifest["models"] = WriteModels(*entity, writer);
        if (!entity->GetRootMdl().IsNull()) {
            manifest["root"] = writer.Write(*entity->GetRootMdl());
        }
        WriteManifest(manifest, folder / "manifest.json");
        return true;
    } catch (const std::filesystem::filesystem_error&) {
        return false;
    }
}
