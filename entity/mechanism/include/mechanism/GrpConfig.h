#pragma once

#include <cstdint>
#include <map>
#include <mechanism/AxisVocabulary.h>
#include <mechanism/Export.h>
#include <memory>
#include <vector>

/// Coupling of one system's axes: which are independent, and how all values follow from them.
/// The arrays hold one entry a position; positions from 20 on take no part in coupling.
struct MECHANISM_EXPORT CoupedValue {
    static constexpr int Capacity = 20; ///< Positions that the arrays have room for.

    /// Multiplier of the source value of each position; 1 by default.
    double ratio[Capacity];
    /// Step to the source of each position: position 0 reads source skip[0], position i + 1 the source after
    /// the previous one plus skip[i + 1]. -1 repeats the previous source.
    std::int32_t skip[Capacity] = {};
    /// The independent positions in order; the first entry that is no position of the vector ends them.
    std::int32_t index[Capacity];
    /// Whether the coupled operations use this record.
    bool enabled = false;
    /// Number of values that the coupled operations on the first robot alone take.
    std::int32_t robotValueCount = 6;

    CoupedValue();
};

/// The layout of one system's flat value vector, and the process-wide lists of layouts and couplings.
///
/// Robot i owns robotDof values from i * robotDof on, the pedestal pedestalDof values after the last robot,
/// bench k benchesDofs[k] values from trunc(k * benchesDofs[k] + (robotDof + pedestalDof)) on. The bench rule
/// is a running layout only for one robot with benches of one size, and is kept for compatibility.
///
/// The lists are created on first use and are not locked: hosts fill them during set-up, before the first
/// state of the system, and must not change an entry while such a state exists.
struct MECHANISM_EXPORT GrpConfig {
    /// Largest count that is accepted, more than any system has.
    static constexpr std::int32_t MostValues = 1'000'000;

    std::int32_t pedestalDof = 0;    ///< axes of the pedestal
    std::int32_t robotDof = 6;       ///< joints of each robot
    std::vector<double> benchesDofs; ///< axes of each bench
    std::int32_t benchNum = 0;       ///< number of benches
    std::int32_t robotNum = 0;       ///< robots
    std::int32_t contextDof = 6;     ///< number of values of the whole system

    /// Stores the counts and derives contextDof from robots and pedestal; benches are added by
    /// SetBenchesDofs.
    /// @throws std::invalid_argument, with nothing changed, for a count or a sum that is not in 0 ..
    ///         MostValues.
    void InitDOF(int pedestalDof_, int robotDof_, int robotNum_, int benchNum_);
    /// Sets the axes of each bench and adds them to contextDof, after InitDOF and once: a second call counts
    /// the benches twice.
    /// @throws std::invalid_argument, with nothing changed, for bench axes or a sum that are not in 0 ..
    ///         MostValues.
    void SetBenchesDofs(const std::vector<double>& dofs);

    /// The range of an entity's values. A bench past benchNum leaves both outputs as they are.
    /// @throws std::out_of_range "invalid vector subscript" when benchNum promises a bench that was never
    ///         set; std::invalid_argument for bench axes that are no 32-bit number.
    void GetIndex(EntityName entity, int& start, int& count) const;
    /// Number of values of the whole system.
    int GetContextDof() const { return contextDof; }
    /// Joints of one robot plus the pedestal's axes, however many robots there are.
    int GetRobotAndPedestalDof() const { return robotDof + pedestalDof; }

    /// The registered layouts by system hash. A null entry counts as not registered everywhere.
    static const std::map<std::uint64_t, std::shared_ptr<GrpConfig>>& GetGrpConfigList();

    /// @{
    /// The five look-ups by system hash.
    /// @throws std::string ending in the function's name and "当前系统不存在该型号机器人", logged at
    ///         critical, when the system is not registered.
    static const std::shared_ptr<GrpConfig>& GetGrpConfig(std::uint64_t system);
    static int GetContextDof(std::uint64_t system);
    static int GetRobotAndPedestalDof(std::uint64_t system);
    static int GetRobotDof(std::uint64_t system);
    static PedestalType GetSystemType(std::uint64_t system);
    /// @}

    /// The couplings by system hash, for set-up.
    static std::map<std::uint64_t, CoupedValue>& ChangeCoupledList();
    /// The system's coupling; a missing one is created, disabled.
    static CoupedValue& GetCoupledValue(std::uint64_t system);

protected:
    /// For a host's registrar, which derives from this struct.
    static std::map<std::uint64_t, std::shared_ptr<GrpConfig>>& ChangeGrpConfigList();
};
