#include <algorithm>
#include <app/commands/Commands.h>
#include <cell/model/Cell.h>
#include <cell/text/InputError.h>
#include <cell/text/OutputFile.h>
#include <cell/text/Text.h>
#include <json/value.h>
#include <ostream>

namespace cell {

namespace {

const ToolPath& Choose(const Cell& cell, const PathRequest& request) {
    const auto& paths = cell.ToolPaths();
    const auto found = std::find_if(paths.begin(), paths.end(),
                                    [&](const ToolPath& path) { return path.name == request.name; });
    if (found == paths.end()) {
        throw InputError(request.file.string(), "--name", request.name,
                         "the name of a tool_path of the cell");
    }
    return *found;
}

Json::Value ToJson(const Cell& cell, const ToolPath& path, const WorkedPath& worked) {
    Json::Value json(Json::objectValue);
    json["cell"] = cell.Name();
    json["name"] = path.name;
    json["workpiece"] = path.workpiece->GetName();
    json["poses"] = Json::Value(Json::arrayValue);
    for (const ToolPose& pose : worked.poses) {
        Json::Value numbers(Json::arrayValue);
        for (const double number : pose) {
            numbers.append(number);
        }
        json["poses"].append(std::move(numbers));
    }
    return json;
}

} // namespace

void WritePath(const PathRequest& request, std::ostream& standard) {
    std::ostream& out = RemarksBeside(request.target, standard);
    const Cell cell = Cell::Load(request.file);
    const ToolPath& path = Choose(cell, request);
    const WorkedPath worked = WorkUp(path);
    WriteWhole(request.target, JsonText(ToJson(cell, path, worked)));
    if (request.json) {
        Json::Value counts;
        counts["converted"] = Json::UInt64(worked.converted);
        counts["smoothed"] = Json::UInt64(worked.smoothed);
        counts["thinned"] = Json::UInt64(worked.thinned);
        counts["checked"] = Json::UInt64(worked.poses.size());
        out << JsonText(counts);
        return;
    }
    out << "tool path \"" << path.name << "\" on \"" << path.workpiece->GetName() << "\"\n"
        << "  converted " << worked.converted << " poses\n"
        << "  smoothed  " << worked.smoothed << " poses, " << Shortest(path.smooth) << " mm apart\n"
        << "  thinned   " << worked.thinned << " poses, every " << path.keepEvery << ". kept\n"
        << "  checked   " << worked.poses.size() << " poses within " << Shortest(path.tolerance)
        << " mm of the workpiece\n";
}

} // namespace cell
