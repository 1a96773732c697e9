#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <host/tools/LocEuler.h>
#include <json/forwards.h>
#include <mechanism/AxisVocabulary.h>
#include <mechanism/Export.h>
#include <mechanism/GrpConfig.h>
#include <string>
#include <vector>

namespace mechanism_detail {
struct StateAccess;
}

/// The state of one robot system at one instant: the joint values (rad, mm) of its robots, pedestal and
/// benches in one flat buffer laid out by the system's GrpConfig, one tool-centre pose a robot, and the
/// command fields that a planned path carries at each point.
///
/// A default state is bound to no system and has neither values nor poses. A bound state keeps a plain
/// pointer to its registry entry, which must outlive it. A state that was moved from has no buffer, though it
/// still names its system: it reads as a state without values.
///
/// The buffer keeps the size that it was made with. Where the layout becomes larger (a document names a
/// larger system, the registry entry changes), the state keeps the values that it has.
///
/// Operations that copy several values are bounded by the state's layout. A missing source (an empty vector,
/// a null pointer, a state without a buffer) or a count past the range is a fatal programming error: the
/// range is cleared, a line goes to standard error and the process is aborted.
class MECHANISM_EXPORT GrpState {
public:
    /// Hosts number their own path types; those above 0 are work states.
    enum RobotPathType : std::int32_t { PathTypeDefault = 0, PathTypeWork = 1, PathTypeValidWork = 2 };

    GrpState() = default;
    /// A state with zero values and zero poses.
    /// @throws std::string as GrpConfig::GetGrpConfig does for a system that is not registered.
    GrpState(std::uint64_t system_);
    /// An independent copy, poses and text included.
    GrpState(const GrpState& other);
    /// Takes the values over; poses and text are copied, so this may throw std::bad_alloc.
    GrpState(GrpState&& other);
    /// An unbound source removes system and buffer and leaves the other fields as they were.
    /// A failed allocation (std::bad_alloc) leaves this state as it was.
    GrpState& operator=(const GrpState& other);
    /// As the move constructor; moving a state to itself changes nothing.
    GrpState& operator=(GrpState&& other);
    ~GrpState();

    /// Hash of the system that the state is bound to; 0 for none.
    std::uint64_t GetSystem() const { return system; }
    /// @{
    /// The command at this point of a path, and its text.
    RobotMoveCmdType GetCmdType() { return cmdType; }
    const std::string& GetLogicalCmd() const { return logicalCmd; }
    /// @}
    /// The text is kept only with MoveCmdLogical; any other type leaves the text as it was.
    void SetCmdTypeAndCmd(RobotMoveCmdType type, const std::string& cmd);
    /// @{
    /// How the point is reached.
    MoveModel GetMoveModel() { return moveModel; }
    void SetMoveModel(MoveModel model) { moveModel = model; }
    /// @}
    /// @{
    /// Offset along the tool's Z, mm.
    float GetOffset() const { return offset; }
    void SetOffset(float offset_) { offset = offset_; }
    /// @}
    /// @{
    /// Index of the tool in the robot's list.
    unsigned short GetToolIndex() const { return toolIndex; }
    void SetToolIndex(unsigned short index) { toolIndex = index; }
    /// @}
    /// @{
    /// Whether the tool works at this point: every path type above 0, or PathTypeValidWork alone.
    void SetPathStateType(RobotPathType type) { pathType = type; }
    bool IsWorkState() const { return pathType > PathTypeDefault; }
    bool IsValidWorkState() const { return pathType == PathTypeValidWork; }
    /// @}
    /// @{
    /// Whether the point is part of an exported program.
    bool NeedExport() const { return needExport; }
    void SetNeedExport(bool need) { needExport = need; }
    /// @}

    /// @{
    /// The system's layout, as its GrpConfig says; nothing but zeros for a state that was never bound.
    int GetRobotDof() const { return config->robotDof; }
    int GetRobotNum() const { return config->robotNum; }
    int GetBenchNum() const { return config->benchNum; }
    int GetContextDof() const { return config->contextDof; }
    int GetRobotAndPedestalDof() const { return config->GetRobotAndPedestalDof(); }
    /// @}
    /// Axes of all benches, each sum cut to a whole number.
    /// @throws std::out_of_range "invalid vector subscript" when benchNum counts a bench that was never set.
    int GetBenchDof() const;

    /// All values of the system; rad and mm.
    std::vector<double> GetValues();
    /// @param v GetContextDof() values; a shorter vector sets the values it has, none at all is fatal.
    void SetValues(const std::vector<double>& v);
    /// The buffer itself, as long as GetValues(); null after a move.
    double* GetValuesPtr() const { return values; }
    /// Copies GetContextDof() values; the buffer stays the same.
    void SetValuesPtr(double* const p);
    /// Copies the values of a state, whatever its system, as many as both have.
    void SetValuesByState(const GrpState& other);
    /// Adds value by value when both have the same number of values; otherwise nothing changes.
    void AddOtherValues(const GrpState& other);
    /// Doubles every value when the vector has GetContextDof() elements; what they are does not matter.
    void AddOtherValues(const std::vector<double>& v);

    /// The values of one entity; empty for a bench that the system does not have.
    std::vector<double> GetValues(EntityName entity);
    /// @param v the entity's values; a shorter vector sets the values it has, an empty one nothing.
    void SetValues(EntityName entity, const std::vector<double>& v);
    /// Sets the first n values of an entity; n past its count is fatal, except for a bench that the
    /// system does not have, where nothing happens.
    void SetValues(EntityName entity, const double* p, std::size_t n);
    /// The value at the entity's start plus the axis' place in it, which may be another entity's.
    /// @throws std::out_of_range "invalid vector subscript" when that is no place of the state.
    double GetValue(EntityName entity, AxisName axis) const;
    /// Sets one value of a robot or the pedestal by its plain position; benches are set as a whole only, so
    /// for them nothing happens. @throws as GetValue.
    void SetValue(EntityName entity, int axis, double value);

    /// @throws std::out_of_range "invalid vector subscript" when there is no such robot.
    const LocEuler& GetLocEuler(int robot) const;
    /// @return false, with `out` as it was, when there is no such robot.
    bool GetLocEuler(int robot, LocEuler& out) const;
    /// @throws std::out_of_range "invalid vector subscript" when there is no such robot.
    void SetLocEuler(int robot, const LocEuler& pose);

    /// @{
    /// The independent values of the system, or of one entity, in the order of the coupling's index list; all
    /// values where no coupling is enabled, and for every entity but the first robot.
    std::vector<double> GetValuesCoupling();
    std::vector<double> GetValuesCoupling(EntityName entity);
    /// @}
    /// @{
    /// Sets the full vector, or the first robot's part, from independent values. Without coupling as
    /// SetValues, except that a shorter vector sets the values it has.
    /// @throws std::out_of_range "invalid vector subscript" when the coupling reads past the vector; values
    ///         before that are set.
    void SetValuesCoupling(const std::vector<double>& v);
    void SetValuesCoupling(EntityName entity, const std::vector<double>& v);
    /// @}

    /// @{
    /// Comparisons of values; a difference of exactly the tolerance is equal, and so is NaN. A state is not
    /// equal to one that has fewer values or none (unbound, moved from).
    static bool IsEqual(const std::vector<double>& a, const std::vector<double>& b, double tolerance);
    bool IsEqual(const GrpState& other, double tolerance) const;
    /// @}
    /// Same system, pedestal values within 0.1 and all others within 0.0001.
    bool IsEqualForSimu(const GrpState& other) const;
    /// Same system, pedestal values within 1 and all others within 0.0001.
    bool IsEqualForCollisonShow(const GrpState& other) const;
    /// A step for each value: the given one for the values from robotDof to robotDof + pedestalDof, a tenth
    /// of its radians for all others.
    std::vector<double> GetScaleValues(double step);

    /// The state as a document; numbers read back to the bit.
    Json::Value ToJson();
    /// Loads a document of the system that this state is bound to. Values and poses are read only when
    /// "J_value" is an array, the values only when it is long enough. Another registered system is taken over
    /// with its layout; buffer and poses stay as many as they were.
    /// @return false, with nothing changed, for null.
    /// @throws std::out_of_range "invalid map<K, T> key" when "system_index" is not registered;
    ///         Json::Exception for a member of the wrong type. What comes before a fault in the order values
    ///         and poses (both or none), system, all other fields (all or none) is read then.
    bool FromJson(const Json::Value& json);

private:
    friend struct mechanism_detail::StateAccess;

    /// Layout of a state that is bound to no system: all zeros.
    static const GrpConfig NoLayout;

    /// Number of values: the layout's, at most those that the buffer was made for.
    int CountRoom() const { return std::clamp(config->contextDof, 0, room); }
    /// Number of values; 0 without a buffer.
    int CountValues() const { return values != nullptr ? CountRoom() : 0; }
    /// Makes this default state one of the system: zero poses, values allocated but not set.
    MECHANISM_NO_EXPORT void Bind(std::uint64_t system_, const GrpConfig* config_);
    /// Everything but the values when shareValues is set: then both states use one buffer, and the caller
    /// must see to it that only one of them releases it.
    MECHANISM_NO_EXPORT void CopyFrom(const GrpState& other, bool shareValues);
    MECHANISM_NO_EXPORT void CopyFields(const GrpState& other);
    MECHANISM_NO_EXPORT void TakeFrom(GrpState& other);
    /// Allocates nothing.
    MECHANISM_NO_EXPORT void Swap(GrpState& other) noexcept;
    MECHANISM_NO_EXPORT bool IsWithin(const GrpState& other, double pedestalTolerance) const;
    /// Each changes either all that it reads or nothing.
    MECHANISM_NO_EXPORT void ReadValues(const Json::Value& json);
    MECHANISM_NO_EXPORT void ReadFields(const Json::Value& json);

    std::vector<LocEuler> tcps;
    double* values = nullptr;
    std::int32_t room = 0;
    float offset = 0;
    unsigned short toolIndex = 0;
    const GrpConfig* config = &NoLayout;
    std::uint64_t system = 0;
    bool needExport = true;
    MoveModel moveModel = MoveModelDefault;
    std::string logicalCmd;
    RobotMoveCmdType cmdType = MoveCmdDefault;
    RobotPathType pathType = PathTypeDefault;
};

/// Same system, values within 1e-7 and equal poses; command fields, tool, offset and export flag do not
/// count.
MECHANISM_EXPORT bool operator==(const GrpState& a, const GrpState& b);
MECHANISM_EXPORT bool operator!=(const GrpState& a, const GrpState& b);
