#include <algorithm>
#include <app/commands/Commands.h>
#include <cell/Cell.h>
#include <cell/InputError.h>
#include <cell/plan/StateFile.h>
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

Json::Value ToJson(const PathRequest& request, const Cell& cell, const ToolPath& path,
                   const std::vector<ToolPose>& poses) {
    Json::Value json(Json::objectValue);
    json["cell"] = cell.Name();
    json["name"] = path.name;
    json["workpiece"] = path.workpiece->GetName();
    json["frame"] = request.state.empty() ? "workpiece" : "world";
    if (!request.state.empty()) {
        json["state"] = request.state;
    }
    json["poses"] = Json::Value(Json::arrayValue);
    for (const ToolPose& pose : poses) {
        Json::Value numbers(Json::arrayValue);
        for (const double number : pose) {
            numbers.append(number);
        }
        json["poses"].append(std::move(numbers));
    }
    return json;
}

Json::Value CountsToJson(const WorkedPath& worked) {
    Json::Value counts;
    counts["converted"] = Json::UInt64(worked.converted);
    counts["smoothed"] = Json::UInt64(worked.smoothed);
    counts["added"] = Json::UInt64(worked.added);
    counts["thinned"] = Json::UInt64(worked.thinned);
    counts["checked"] = Json::UInt64(worked.poses.size());
    return counts;
}

void Print(std::ostream& out, const PathRequest& request, const ToolPath& path, const WorkedPath& worked) {
    const std::string workpiece = "\"" + path.workpiece->GetName() + "\"";
    out << "tool path \"" << path.name << "\" on " << workpiece << '\n'
        << "  converted " << worked.converted << " poses\n"
        << "  smoothed  " << worked.smoothed << " poses, " << Shortest(path.smooth) << " mm apart\n";
    if (worked.added > 0) {
        out << "  added     " << worked.added << (worked.added == 1 ? " pose" : " poses")
            << " at the ends, which smoothing leaves out\n";
    }
    out << "  thinned   " << worked.thinned << " poses, every " << path.keepEvery << ". kept\n"
        << "  checked   " << worked.poses.size() << " poses within " << Shortest(path.tolerance)
        << " mm of the workpiece\n"
        << "  written   "
        << (request.state.empty() ? "in the frame of " + workpiece : "in the world at " + request.state)
        << '\n';
}

} // namespace

void WritePath(const PathRequest& request, std::ostream& standard) {
    std::ostream& out = RemarksBeside(request.target, standard);
    const Cell cell = Cell::Load(request.file);
    const ToolPath& path = Choose(cell, request);
    const WorkedPath worked = WorkUp(path);
    if (!request.state.empty()) {
        MoveToNamedState(request.state, cell);
    }
    const std::vector<ToolPose> poses =
        request.state.empty() ? worked.poses : InWorld(*path.workpiece, worked.poses);
    WriteWhole(request.target, JsonText(ToJson(request, cell, path, poses)));
    if (request.json) {
        out << JsonText(CountsToJson(worked));
    } else {
        Print(out, request, path, worked);
    }
}

} // namespace cell
