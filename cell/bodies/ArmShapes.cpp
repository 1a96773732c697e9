#include <algorithm>
#include <array>
#include <cell/bodies/ArmShapes.h>
#include <cell/bodies/Solids.h>

namespace cell {

namespace {

/// Thickness at each joint, as part of the length of the chain: industrial arms of all sizes taper alike.
constexpr std::array<double, 7> RelativeThickness = {0.070, 0.054, 0.045, 0.036, 0.029, 0.025, 0.022};

/// A chain whose joints all meet in one point still gets bodies (mm).
constexpr double ShortestChain = 50;

/// Parts of the thickness at a joint.
constexpr double LimbRadius = 0.72;
constexpr double HingeHalfLength = 1.12;
constexpr double CollarHalfLength = 0.30;
constexpr double FootRadius = 1.75;
constexpr double FootHalfHeight = 0.11;
constexpr double FlangeRadius = 0.92;
constexpr double FlangeHalfHeight = 0.20;
/// Limbs shorter than this part of the thickness vanish inside the joints.
constexpr double ShortestLimb = 0.25;
/// Height of the fixed column, as part of the second joint's height.
constexpr double ColumnHeight = 0.40;
/// Joint axes within about ten degrees of a limb turn it about its own length.
constexpr double AlongLimb = 0.985;

const Quantity_Color Paint(1.0, 0.50, 0.08, Quantity_TOC_sRGB);
const Quantity_Color Cast(0.25, 0.27, 0.31, Quantity_TOC_sRGB);
const Quantity_Color Steel(0.78, 0.80, 0.82, Quantity_TOC_sRGB);

class ArmShaper {
public:
    explicit ArmShaper(const ArmDescription& arm_) : arm(arm_) {
        for (const ArmJoint& joint : arm.joints) {
            points.push_back(joint.origin);
        }
        points.push_back({arm.flange.p[0], arm.flange.p[1], arm.flange.p[2]});
        for (std::size_t i = 0; i + 1 < points.size(); ++i) {
            chain += Length(points[i + 1] - points[i]);
        }
        chain = std::max(chain, ShortestChain);
    }

    Bodies Shape() const {
        Bodies bodies;
        bodies.base = Base();
        for (std::size_t i = 0; i < arm.joints.size(); ++i) {
            bodies.links.push_back(Link(i));
        }
        return bodies;
    }

private:
    double Thickness(std::size_t i) const {
        return chain * RelativeThickness[std::min(i, RelativeThickness.size() - 1)];
    }

    /// How high along the first axis the fixed column ends.
    double Column() const {
        const double height = Dot(points[1] - points[0], arm.joints[0].axis);
        return std::max(ColumnHeight * height, 4 * FootHalfHeight * Thickness(0));
    }

    std::vector<Body> Base() const {
        const Vec& up = arm.joints[0].axis;
        Assembly cast;
        cast.Add(Drum(Point(points[0] + FootHalfHeight * Thickness(0) * up), Direction(up),
                      FootRadius * Thickness(0), FootHalfHeight * Thickness(0)));
        cast.Add(Tube(Point(points[0]), Point(points[0] + Column() * up), 1.35 * Thickness(0),
                      1.12 * Thickness(0)));
        return {{cast.Shape(), Cast}};
    }

    std::vector<Body> Link(std::size_t i) const {
        Assembly paint;
        Assembly cast;
        std::vector<Body> bodies;
        cast.Add(Joint(i));
        AddLimb(i, paint);
        if (!paint.IsEmpty()) {
            bodies.push_back({paint.Shape(), Paint});
        }
        bodies.push_back({cast.Shape(), Cast});
        if (i + 1 == arm.joints.size()) {
            bodies.push_back({Flange(), Steel});
        }
        return bodies;
    }

    TopoDS_Shape Joint(std::size_t i) const {
        const gp_Dir axis = Direction(arm.joints[i].axis);
        if (i == 0) {
            const Vec top = points[0] + Column() * arm.joints[0].axis;
            return Drum(Point(top), axis, 1.28 * Thickness(0), 0.14 * Thickness(0));
        }
        const bool roll = RollsLimb(i);
        const double collar = roll ? 0.86 : 1.0;
        return Drum(Point(points[i]), axis, collar * Thickness(i),
                    (roll ? CollarHalfLength : HingeHalfLength) * Thickness(i));
    }

    bool RollsLimb(std::size_t i) const {
        const auto along = [&](std::size_t from) {
            const Vec d = points[from + 1] - points[from];
            return std::abs(Dot(d, arm.joints[i].axis)) > AlongLimb * Length(d) && Length(d) > 0;
        };
        return along(i) || along(i - 1);
    }

    /// From a joint to the next: along the own axis first, then across, as castings do.
    void AddLimb(std::size_t i, Assembly& paint) const {
        const Vec& axis = arm.joints[i].axis;
        const Vec start = i == 0 ? points[0] + Column() * axis : points[i];
        const Vec& end = points[i + 1];
        const Vec corner = start + Dot(end - start, axis) * axis;
        const double thick = LimbRadius * Thickness(i) * (i == 0 ? 1.3 : 1.0);
        const double thin = LimbRadius * Thickness(i + 1);
        const double least = ShortestLimb * Thickness(i);
        const bool rises = Length(corner - start) > least;
        const bool crosses = Length(end - corner) > least;
        const double bend = crosses ? thick : thin;
        if (rises) {
            paint.Add(Tube(Point(start), Point(corner), thick, bend));
        }
        if (crosses) {
            paint.Add(Tube(Point(corner), Point(end), thick, thin));
        }
        if (rises && crosses) {
            paint.Add(Ball(Point(corner), thick));
        }
    }

    TopoDS_Shape Flange() const {
        const std::size_t last = arm.joints.size() - 1;
        const Vec normal = spatial::Column(arm.flange, 2);
        // Flange frames point every way; the disc lies on the side that the last axis comes from.
        const Vec& axis = arm.joints[last].axis;
        const Vec centre = points.back() - FlangeHalfHeight * Thickness(last) * axis;
        const bool faces = std::abs(Dot(normal, axis)) > AlongLimb;
        return Drum(Point(centre), Direction(faces ? normal : axis), FlangeRadius * Thickness(last),
                    FlangeHalfHeight * Thickness(last));
    }

    const ArmDescription& arm;
    std::vector<Vec> points; ///< joint origins, then the flange's
    double chain = 0;        ///< length from joint to joint to flange
};

} // namespace

Bodies ShapeArm(const ArmDescription& arm) { return ArmShaper(arm).Shape(); }

} // namespace cell
