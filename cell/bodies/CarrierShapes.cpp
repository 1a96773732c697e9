#include <algorithm>
#include <cell/bodies/CarrierShapes.h>
#include <cell/bodies/Solids.h>
#include <cmath>

namespace cell {

namespace {

const Quantity_Color Cast(0.25, 0.27, 0.31, Quantity_TOC_sRGB);
const Quantity_Color Frame(0.42, 0.46, 0.52, Quantity_TOC_sRGB);
const Quantity_Color Moving(0.93, 0.74, 0.13, Quantity_TOC_sRGB);
const Quantity_Color Steel(0.78, 0.80, 0.82, Quantity_TOC_sRGB);

/// Things lower than this (mm) above the floor still get a body under them.
constexpr double LowestBody = 80;
/// Height of a beam, as part of the height of what it carries; the rest is the carriage.
constexpr double BeamHeight = 0.62;
constexpr double BeamWidth = 1.7;     ///< parts of the beam's height
constexpr double CarriageOver = 1.15; ///< carriage over beam, as part of the beam's width
constexpr double CarriageLength = 1.9;
/// Radius of a table, as part of its height: it must clear the floor when it is tilted.
constexpr double TableRadius = 0.52;
constexpr double TableThickness = 0.10; ///< parts of the table's radius, as all below
constexpr double HubRadius = 0.36;
constexpr double Span = 1.28; ///< from the middle to the uprights
constexpr double UprightThickness = 0.30;
constexpr double UprightDepth = 0.42;
constexpr double BeamHalf = 0.17;
/// Axes within sixty degrees of the vertical turn a table, all others tilt it.
constexpr double Upright = 0.5;

class CarrierShaper {
public:
    explicit CarrierShaper(const CarrierDescription& carrier_)
        : carrier(carrier_), top{carrier.flange.p[0], carrier.flange.p[1], carrier.flange.p[2]},
          height(std::max(top[2], LowestBody)), radius(TableRadius * height) {
        for (const CarrierJoint& joint : carrier.joints) {
            const bool lies = joint.type == JointRotary && std::abs(joint.axis[2]) < Upright;
            tilts = tilts || lies;
            if (lies) {
                radius = TableRadius * std::max(joint.origin[2], LowestBody);
            }
        }
        bodies.links.resize(carrier.joints.size());
    }

    Bodies Shape() {
        for (std::size_t i = 0; i < carrier.joints.size(); ++i) {
            const CarrierJoint& joint = carrier.joints[i];
            if (joint.type == JointLinear) {
                AddTrack(i, joint);
            } else if (std::abs(joint.axis[2]) < Upright) {
                AddTiltingFrame(i, joint);
            } else {
                AddTurntable(i, joint);
            }
        }
        if (carrier.joints.empty()) {
            AddTable();
        }
        return std::move(bodies);
    }

private:
    /// What the joint stands on: the link before it, or the base.
    std::vector<Body>& Below(std::size_t joint) { return joint == 0 ? bodies.base : bodies.links[joint - 1]; }

    void AddTrack(std::size_t i, const CarrierJoint& joint) {
        const gp_Dir along = Direction(joint.axis);
        const bool stands = std::abs(joint.axis[2]) > Upright;
        const gp_Ax2 frame(Point(top), stands ? gp::DX() : gp::DZ(), along);
        const double beam = BeamHeight * height;
        const double half = 0.5 * BeamWidth * beam;
        const double reach = 0.5 * CarriageLength * half * 2;
        const double low = -height;
        Assembly track;
        track.Add(
            Block(frame, {joint.low - reach, -half, low}, {joint.high + reach, half, low + 0.8 * beam}));
        for (const double side : {-0.8, 0.6}) {
            track.Add(Block(frame, {joint.low - reach, side * half, low + 0.8 * beam},
                            {joint.high + reach, (side + 0.2) * half, low + beam}));
        }
        Below(i).push_back({track.Shape(), Frame, true});
        const double wide = CarriageOver * half;
        bodies.links[i].push_back(
            {Block(frame, {-reach, -wide, low + beam}, {reach, wide, -0.12 * (height - beam)}), Moving});
        bodies.links[i].push_back({Drum(Point(top).Translated(gp_Vec(frame.Direction()) * (-0.06 * height)),
                                        frame.Direction(), 0.75 * half, 0.06 * height),
                                   Cast});
    }

    /// Uprights on both sides of the flange, and a beam between them that tilts.
    void AddTiltingFrame(std::size_t i, const CarrierJoint& joint) {
        const gp_Pnt middle = Point(joint.origin + Dot(top - joint.origin, joint.axis) * joint.axis);
        const gp_Ax2 frame(middle, gp::DZ(), Direction(joint.axis));
        const double span = Span * radius;
        const double outer = span + UprightThickness * radius;
        const double deep = UprightDepth * radius;
        Assembly stand;
        stand.Add(Block(frame, {-outer, -1.4 * deep, -middle.Z()},
                        {outer, 1.4 * deep, 0.12 * radius - middle.Z()}));
        Assembly beam;
        beam.Add(Block(frame, {-span, -1.5 * BeamHalf * radius, -BeamHalf * radius},
                       {span, 1.5 * BeamHalf * radius, BeamHalf * radius}));
        for (const double side : {-1.0, 1.0}) {
            const double near = side < 0 ? -outer : span;
            stand.Add(Block(frame, {near, -deep, -middle.Z()},
                            {near + UprightThickness * radius, deep, 0.9 * deep}));
            beam.Add(Drum(middle.Translated(gp_Vec(frame.XDirection()) * (side * 0.97 * span)),
                          frame.XDirection(), 0.8 * deep, 0.09 * radius));
        }
        Below(i).push_back({stand.Shape(), Frame});
        bodies.links[i].push_back({beam.Shape(), Moving});
    }

    /// A round table under the flange, on a hub that reaches down to the tilting beam or to the floor.
    void AddTurntable(std::size_t i, const CarrierJoint& joint) {
        const gp_Pnt flange = Point(top);
        const double thick = TableThickness * radius;
        const double down = tilts ? std::max(top[2] - joint.origin[2], 2 * thick) : height;
        const gp_Pnt foot = flange.Translated(gp_Vec(0, 0, -down));
        const gp_Pnt under = flange.Translated(gp_Vec(0, 0, -thick));
        Below(i).push_back(
            {Tube(foot, under, (tilts ? 1.0 : 1.5) * HubRadius * radius, HubRadius * radius), Cast});
        bodies.links[i].push_back(
            {Drum(flange.Translated(gp_Vec(0, 0, -0.5 * thick)), gp::DZ(), radius, 0.5 * thick), Steel});
    }

    /// The camera is fitted to the table and what it carries, not to the frame below.
    void AddTable() {
        const gp_Ax2 frame(Point(top), gp::DZ(), gp::DX());
        const double half = radius + 0.5 * LowestBody;
        const double thick = 0.5 * LowestBody;
        bodies.base.push_back(
            {Block(frame, {-1.4 * half, -half, -thick}, {1.4 * half, half, 0}), Steel, true});
        if (height > thick) {
            bodies.base.push_back(
                {Block(frame, {-1.1 * half, -0.7 * half, -height}, {1.1 * half, 0.7 * half, -thick}), Frame,
                 true});
        }
    }

    const CarrierDescription& carrier;
    Vec top;       ///< the flange's origin
    double height; ///< of the flange above the floor
    double radius; ///< of a table on it
    bool tilts = false;
    Bodies bodies;
};

} // namespace

Bodies ShapeCarrier(const CarrierDescription& carrier) { return CarrierShaper(carrier).Shape(); }

} // namespace cell
