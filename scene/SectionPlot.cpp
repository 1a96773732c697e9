#include <algorithm>
#include <cell/text/Text.h>
#include <cmath>
#include <scene/SectionPlot.h>
#include <scene/SideView.h>

namespace cell {

namespace {

/// Sizes of the drawing in its own units, which are pixels on a screen.
constexpr double PlotHeight = 860;
constexpr double LeftMargin = 95, RightMargin = 35, TopMargin = 70, BottomMargin = 75;
constexpr double NarrowestPlot = 420;
constexpr double TickLength = 6;
constexpr double MostTicks = 9;
/// Free space around what is drawn, as part of its height.
constexpr double Air = 0.04;

constexpr const char* Style = R"(<style>
text { font-family: sans-serif; font-size: 17px; fill: #29303d }
.title { font-size: 21px; font-weight: bold }
.grid { stroke: #d5dae1; stroke-width: 1 }
.axis { stroke: #29303d; stroke-width: 1.5 }
.joint { stroke: #8a93a0; stroke-width: 1.2; stroke-dasharray: 14 4 3 4 }
.reach { fill: #1d6fd0; fill-opacity: 0.16; stroke: #1657a6; stroke-width: 2; stroke-linejoin: round }
.rim { fill: #29303d; stroke: #29303d; stroke-width: 2.5; stroke-linejoin: round }
.tool { fill: #c81e3c; stroke: white; stroke-width: 1.5 }
</style>
)";

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        escaped += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : std::string(1, c);
    }
    return escaped;
}

std::string Attribute(const char* name, const std::string& value) {
    std::string text = " ";
    return text.append(name).append("=\"").append(value).append("\"");
}

std::string Number(double value) { return Rounded(value, 2); }

/// 1, 2 or 5 times a power of ten, so that there are not too many ticks.
double TickStep(double range) {
    const double power = std::pow(10, std::floor(std::log10(range / MostTicks)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (range / (factor * power) <= MostTicks) {
            return factor * power;
        }
    }
    return 10 * power;
}

class Plot {
public:
    Plot(const Reach& reach_, const SideView& view_) : reach(reach_), view(view_) {
        left = view.left;
        right = view.right;
        bottom = view.bottom;
        top = view.top;
        for (const auto& point : reach.section) {
            right = std::max(right, point[0]);
            bottom = std::min(bottom, point[1]);
            top = std::max(top, point[1]);
        }
        const double air = Air * (top - bottom);
        left -= air;
        right += air;
        bottom -= air;
        top += air;
        scale = std::max(PlotHeight / (top - bottom), NarrowestPlot / (right - left));
    }

    std::string Text() {
        const double width = LeftMargin + scale * (right - left) + RightMargin;
        const double height = TopMargin + scale * (top - bottom) + BottomMargin;
        svg = "<svg xmlns='http://www.w3.org/2000/svg'" + Attribute("width", Number(width)) +
              Attribute("height", Number(height)) +
              Attribute("viewBox", "0 0 " + Number(width) + " " + Number(height)) + ">\n" + Style +
              "<rect width='100%' height='100%' fill='white'/>\n";
        Grid();
        Section();
        Robot();
        Axes(height);
        return svg + "</svg>\n";
    }

private:
    double X(double r) const { return LeftMargin + scale * (r - left); }
    double Y(double z) const { return TopMargin + scale * (top - z); }

    void Line(const char* style, double x1, double y1, double x2, double y2) {
        svg += "<line" + Attribute("class", style) + Attribute("x1", Number(x1)) +
               Attribute("y1", Number(y1)) + Attribute("x2", Number(x2)) + Attribute("y2", Number(y2)) +
               "/>\n";
    }
    void Label(const std::string& text, double x, double y, const std::string& attributes) {
        svg += "<text" + Attribute("x", Number(x)) + Attribute("y", Number(y)) + " " + attributes + ">" +
               Escaped(text) + "</text>\n";
    }

    void Grid() {
        step = TickStep(std::max(right - left, top - bottom));
        for (double r = std::ceil(left / step) * step; r <= right; r += step) {
            Line("grid", X(r), Y(bottom), X(r), Y(top));
            Line("axis", X(r), Y(bottom), X(r), Y(bottom) + TickLength);
            Label(Rounded(r, 0), X(r), Y(bottom) + 25, "text-anchor='middle'");
        }
        for (double z = std::ceil(bottom / step) * step; z <= top; z += step) {
            Line("grid", X(left), Y(z), X(right), Y(z));
            Line("axis", X(left), Y(z), X(left) - TickLength, Y(z));
            Label(Rounded(z, 0), X(left) - 11, Y(z) + 6, "text-anchor='end'");
        }
        Line("joint", X(0), Y(bottom), X(0), Y(top));
    }

    void Section() {
        svg += "<path class='reach' d='";
        for (std::size_t i = 0; i + 1 < reach.section.size(); ++i) {
            svg +=
                (i == 0 ? "M" : "L") + Number(X(reach.section[i][0])) + " " + Number(Y(reach.section[i][1]));
        }
        svg += "Z'/>\n";
    }

    std::string PathOf(const SideView::Patch& patch) const {
        std::string path;
        for (const auto& corners : patch.triangles) {
            for (std::size_t i = 0; i < corners.size(); i += 2) {
                path.append(i == 0 ? "M" : "L").append(Rounded(X(corners[i]), 1));
                path.append(" ").append(Rounded(Y(corners[i + 1]), 1));
            }
            path += "Z";
        }
        return path;
    }

    /// Each body over a rim of its own shape, which shows where bodies end.
    void Robot() {
        for (const auto& body : view.bodies) {
            std::string rim;
            std::string fills;
            for (const SideView::Patch& patch : body) {
                const std::string path = PathOf(patch);
                const auto& [red, green, blue] = patch.colour;
                const std::string colour = "rgb(" + Rounded(255 * red, 0) + "," + Rounded(255 * green, 0) +
                                           "," + Rounded(255 * blue, 0) + ")";
                rim += path;
                fills += "<path" + Attribute("fill", colour) + Attribute("stroke", colour) +
                         " stroke-width='0.7'" + Attribute("d", path) + "/>\n";
            }
            svg += "<path class='rim'" + Attribute("d", rim) + "/>\n" + fills;
        }
        svg += "<circle class='tool' r='6'" + Attribute("cx", Number(X(view.toolCentre[0]))) +
               Attribute("cy", Number(Y(view.toolCentre[1]))) + "/>\n";
    }

    void Axes(double height) {
        Line("axis", X(left), Y(bottom), X(right), Y(bottom));
        Line("axis", X(left), Y(bottom), X(left), Y(top));
        Label("radius r from joint 1 (mm)", X((left + right) / 2), height - 20, "text-anchor='middle'");
        const std::string middle = Number(Y((bottom + top) / 2));
        Label("height z (mm)", 26, Y((bottom + top) / 2),
              "text-anchor='middle'" + Attribute("transform", "rotate(-90 26 " + middle + ")"));
        Label(reach.robot->GetName(), LeftMargin, 32, "class='title'");
        Label("reach of the tool centre (dot); " + Rounded(reach.longest, 0) + " mm at most", LeftMargin, 55,
              "");
    }

    const Reach& reach;
    const SideView& view;
    double left, right, bottom, top; ///< mm
    double scale;                    ///< units of the drawing a mm
    double step = 0;
    std::string svg;
};

} // namespace

std::string SectionPlot(const Reach& reach) {
    const SideView view = SeenFromTheSide(*reach.robot);
    return Plot(reach, view).Text();
}

} // namespace cell
