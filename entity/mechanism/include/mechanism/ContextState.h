#pragma once

#include <cstdint>
#include <json/forwards.h>
#include <map>
#include <mechanism/Export.h>
#include <mechanism/GrpState.h>
#include <vector>

/// The states of several robot systems at one instant, by system hash.
class MECHANISM_EXPORT ContextState {
public:
    /// A zero state of every system that is registered now.
    ContextState();
    /// An empty context that then reads the document; the result of FromJson is ignored. @throws as FromJson.
    ContextState(const Json::Value& json);

    /// Whether the context holds any system.
    bool HasSystem() const { return !states.empty(); }
    /// Whether the context holds this system.
    bool HasSystem(std::uint64_t system) const { return states.contains(system); }
    /// @{
    /// All states, by system hash.
    const std::map<std::uint64_t, GrpState>& GetSystemValues() const { return states; }
    std::map<std::uint64_t, GrpState>& ChangeSystemValues() { return states; }
    /// @}
    /// @{
    /// The system's state, or that of the first system when the context does not hold it. The context must
    /// not be empty: @throws std::out_of_range "invalid map<K, T> key".
    const GrpState& GetValues(std::uint64_t system) const;
    GrpState& ChangeValues(std::uint64_t system);
    /// @}
    /// Replaces the state of a system that the context holds; for any other nothing happens.
    void SetValues(std::uint64_t system, const GrpState& state);

    /// Whether every system of this context is equal in the other; systems that only the other holds do not
    /// count. The tolerance of IsEqual is always 1e-6; the argument is ignored.
    /// @throws std::out_of_range "invalid map<K, T> key" when the other lacks a system.
    bool IsEqual(const ContextState& other, double tolerance) const;
    /// @{
    /// The same with the comparison of GrpState of this name.
    /// @throws std::out_of_range as IsEqual.
    bool IsEqualForSimu(const ContextState& other) const;
    bool IsEqualForCollisonShow(const ContextState& other) const;
    /// @}

    /// The states under "systems", in ascending order of hash.
    Json::Value ToJson();
    /// Merges the entries under "system" (not "systems", which ToJson writes) into this context.
    /// @return false, with nothing changed, when the document or that member is null.
    /// @throws std::string for a system that is not registered, with the entries before it merged;
    ///         std::out_of_range, std::invalid_argument and Json::Exception as GrpState::FromJson, for the
    ///         same reason with the entries before it merged.
    bool FromJson(const Json::Value& json);

private:
    std::map<std::uint64_t, GrpState> states;
};

/// A recorded or planned sequence of states.
struct MECHANISM_EXPORT TracePair {
    TraceType type = TraceDefault; ///< What was recorded.
    std::vector<GrpState> trace;   ///< The states in order of time.

    TracePair() = default;
    /// A trace of these states.
    TracePair(std::vector<GrpState> trace_, TraceType type_);
    /// An independent copy.
    TracePair(const TracePair& other);
    /// Clears this trace before copying: assigning a trace to itself empties it, and so does a copy that
    /// fails (std::bad_alloc).
    const TracePair& operator=(const TracePair& other);
    ~TracePair() = default;

    /// Appends the states to those already held. @throws std::bad_alloc, with none appended.
    void setTrace(const std::vector<GrpState>& states);
    /// Sets the type; the states stay.
    void setType(TraceType type_) { type = type_; }
};
