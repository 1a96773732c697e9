#include <app/commands/Commands.h>
#include <cell/Planner.h>
#include <cell/documents/JsonNode.h>
#include <cell/text/OutputFile.h>
#include <cell/text/Text.h>
#include <cell/text/Units.h>
#include <iostream>

namespace cell {

namespace {

constexpr int ShownDecimals = 3;
/// One report for each thousand states costs little and shows progress.
constexpr std::size_t ProgressStep = 1000;

Progress ProgressLine(bool wanted) {
    if (!wanted) {
        return [](std::size_t, std::size_t) {};
    }
    return [](std::size_t done, std::size_t total) {
        if (done % ProgressStep == 0) {
            std::cerr << "\rplanning: " << done << " of " << total << " states" << std::flush;
        }
        if (done == total && total >= ProgressStep) {
            std::cerr << "\r\033[K" << std::flush;
        }
    };
}

void PrintRow(std::ostream& out, const std::string& name, const std::vector<std::string>& columns) {
    constexpr std::size_t NameWidth = 24;
    constexpr std::size_t ColumnWidth = 19;
    out << name << std::string(name.size() < NameWidth ? NameWidth - name.size() : 1, ' ');
    for (const std::string& column : columns) {
        out << Padded(column, ColumnWidth);
    }
    out << '\n';
}

void PrintTable(std::ostream& out, const std::vector<PlannedMotion>& plan) {
    PrintRow(out, "motion", {"kind", "states", "removed", "joint travel (deg)", "TCP path (mm)"});
    for (const PlannedMotion& planned : plan) {
        PrintRow(out, planned.motion->name,
                 {planned.motion->kind, std::to_string(planned.Steps()), std::to_string(planned.removed),
                  Rounded(planned.jointTravel / RadiansPerDegree, ShownDecimals),
                  Rounded(planned.tcpLength, ShownDecimals)});
    }
}

Json::Value TableToJson(const std::vector<PlannedMotion>& plan) {
    Json::Value table(Json::arrayValue);
    for (const PlannedMotion& planned : plan) {
        Json::Value row;
        row["motion"] = planned.motion->name;
        row["kind"] = planned.motion->kind;
        row["states"] = Json::UInt64(planned.Steps());
        row["removed"] = Json::UInt64(planned.removed);
        row["joint_travel_deg"] = planned.jointTravel / RadiansPerDegree;
        row["tcp_path_mm"] = planned.tcpLength;
        table.append(std::move(row));
    }
    return table;
}

} // namespace

void Plan(const PlanRequest& request, std::ostream& standard) {
    const Cell cell = Cell::Load(request.file);
    if (cell.Motions().empty()) {
        cell.Node().Refuse("no motions", "at least one under motions that moves a system");
    }
    std::vector<PlannedMotion> plan = PlanMotions(cell, ProgressLine(request.progress));
    const bool straight = IsStandardOutput(request.folder);
    WriteWhole(straight ? request.folder : request.folder / "trace.json", JsonText(TraceToJson(cell, plan)));
    std::ostream& out = RemarksBeside(request.folder, standard);
    if (request.json) {
        out << JsonText(TableToJson(plan));
    } else {
        PrintTable(out, plan);
    }
}

} // namespace cell
