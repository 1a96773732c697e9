#pragma once

#include <array>
#include <host/workpiece/GenericEntityConfig.h>
#include <map>
#include <mechanism/Export.h>
#include <memory>
#include <vector>

class Bnd_OBB;
class GrpState;

/// Where one system's axes lie in a pedestal's link list.
struct ArrData {
    std::uint64_t start = 0; ///< position of the system's top-most link
    std::uint64_t count = 0; ///< number of its links, its pedestal degrees of freedom
};

/// A pedestal or ground rail: driven axes that carry robots on their flanges.
///
/// Each robot that stands on a flange leads one system, known by the robot's hash. A system owns the run of
/// links from the top of its tree down to its flange; system 0 is the pedestal as a whole. Values are mm for
/// linear and rad for rotary joints. Axes are in the pedestal's own frame: links keep identity centre
/// transforms. A law that tests check: TransLocEulerToZero of a pose at any axis values is that pose with all
/// axes at zero.
///
/// Operations that need a system's run fail for a system that no mounted robot leads, 0 included where they
/// do not say otherwise: logged at critical and thrown as std::string,
/// "...PedestalEntity::GetCurrentValueDatamap传入key错误，数据不在范围内".
class MECHANISM_EXPORT PedestalEntity : public GenericEntityConfig {
public:
    PedestalEntity();
    /// Takes over a built mechanism and is complete: Initial has run.
    /// @throws std::invalid_argument for a null parent, else as Initial.
    explicit PedestalEntity(GenericEntity* parent);
    ~PedestalEntity() override;

    // --- structure ---------------------------------------------------------------------------------------
    /// Puts the links in depth-first order and finds the systems that stand on the flanges. The first link is
    /// placed alone and every later one with its whole sub-tree, so the branches of one tree are contiguous.
    /// A run starts at the top of its tree: systems that share their top link have runs that overlap.
    /// @throws std::out_of_range "invalid map<K, T> key" for a child link or a flange's link that is not in
    ///         the list; std::invalid_argument for links in a circle. The list is then as it was, and the
    ///         systems are those found so far.
    void Initial() override;
    /// Copies the links' joint values into the values of the pedestal and of every system.
    void UpdateState() override;
    /// Names every model after the pedestal, then runs Initial. @throws as Initial.
    void UpdateLinkModelNames() override;
    /// Does nothing: ForwardTrsf moves the links.
    void Forward() {}

    // --- systems and values ------------------------------------------------------------------------------
    /// Whether the pedestal carries the robot that leads this system.
    bool HasInSystem(size_t system) const { return currentValueData.contains(system); }
    /// The lowest system whose run holds the link, 0 where none does.
    /// @throws std::invalid_argument for null; std::out_of_range for a link that is not the pedestal's.
    size_t GetSystem(LinkRod* link) const;
    /// Number of the system's axes; of all links for 0, and for any system while no robot is mounted.
    int GetDOF(size_t system) const override;
    /// The system's values, top link first; those of the whole pedestal for 0, and for any system while no
    /// robot is mounted.
    /// @throws std::string "...PedestalEntity::GetCurrentValuemap传入key错误，数据不在范围内".
    const std::vector<double>& GetCurrentValue(size_t system) const override;
    /// Where the system's axes lie in the link list.
    ArrData GetCurrentValueData(size_t system);
    /// Stores the values and moves no link (ForwardTrsf does). An empty vector changes nothing.
    /// @throws std::invalid_argument, with nothing changed, for fewer values than the system has axes; else
    ///         as GetCurrentValue.
    void SetCurrentValue(const std::vector<double>& values, size_t system) override;

    // --- limits ------------------------------------------------------------------------------------------
    /// (minimum + margin, maximum - margin) of the system's axes.
    /// @throws std::string "...PedestalEntity::GetLimit限位错误" when the margin leaves no range; else as
    ///         GetCurrentValue. For the pedestal as a whole as GenericEntity::GetLimit.
    std::vector<std::pair<double, double>> GetLimit(size_t system, double tolerance) override;
    /// Whether every axis of the system is within its limits narrowed by the margin; true for no values.
    /// @throws std::out_of_range "invalid vector subscript" where the values end before the first axis
    ///         that is out of its limits.
    bool IsInLimit(const std::vector<double>& values, size_t system, double tolerance) const override;

    // --- geometry ----------------------------------------------------------------------------------------
    /// Frame on each axis in the pedestal's frame, Z along it: origin (mm), then the rotation row by row.
    std::vector<std::array<double, 12>> GetAxes(size_t system);
    /// Direction of the axis with the longest range in the link's own frame, the first of equals; X where no
    /// axis has a range, and for system 0.
    gp_Dir GetMaxAxisDir(size_t system);
    /// How far each axis is aligned with a path's box, signed: the axis' components along the box's edges,
    /// weighted with their lengths relative to the longest. A void box gives ones.
    /// @param box in the world.
    std::vector<double> GetPathBoxOffsetScale(const Bnd_OBB& box, size_t system);
    /// Velocity (mm/s, world) of the flange due to the linear axes up to the first that is not linear.
    /// @param speeds one number an axis of the system, mm/s.
    /// @throws std::invalid_argument for null speeds of a system that has axes.
    gp_XYZ GetSpeedValue(const double* speeds, size_t system);
    /// Sum over the axes of the component-wise product of axis direction and translation: the share of a
    /// translation (mm, pedestal's frame) that the axes carry out where they are parallel to the frame's
    /// axes.
    gp_XYZ GetStateValue(const gp_Trsf& target, size_t system);
    /// Removes the motion of the pedestal's axes from a pose, top link first. Axes whose value is below 1e-6
    /// are passed over; a joint that is neither rotary nor linear ends the removal.
    /// @param pose X_WP at the values of the state.
    /// @param state names the system and has its pedestal values.
    /// @param base X_WB, the pedestal's placement. @return X_WP with the axes at zero.
    /// @throws std::out_of_range "invalid vector subscript" when the state has fewer pedestal values than
    /// axes.
    gp_Trsf TransLocEulerToZero(const gp_Trsf& pose, const GrpState& state, const gp_Trsf& base);

    // --- persistence -------------------------------------------------------------------------------------
    /// Writes the package to `path` (an empty path writes none), then answers the common keys and "type".
    Json::Value ToJson(const std::string& path) override;
    /// Reads "ID" and "HashID". Nothing happens without a root model.
    /// @throws std::invalid_argument naming key, value and expectation; the pedestal stays as it was.
    void LoadFromJson(const Json::Value& json) override;

private:
    void UpdateCollisionMdlState() override;
    MECHANISM_NO_EXPORT void OrderLinks();
    MECHANISM_NO_EXPORT void OrderLink(std::shared_ptr<LinkRod> link,
                                       const std::vector<std::shared_ptr<LinkRod>>& given,
                                       const std::map<size_t, unsigned short>& order);
    MECHANISM_NO_EXPORT ArrData RunTo(const LinkRod* link) const;
    MECHANISM_NO_EXPORT ArrData RunOf(size_t system) const;

    LinkRod* rootLink = nullptr;
    std::map<std::uint64_t, std::vector<double>> currentValues;
    std::map<std::uint64_t, ArrData> currentValueData;
};
