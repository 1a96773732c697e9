#pragma once

#include <functional>
#include <string>
#include <vector>

/// Rows of the comparison: ours beside a peer, on the same work with the same inputs, in one run.
namespace bench {

/// One side's work, prepared: the timed call, and how many elements it treats.
struct Side {
    std::function<void()> run;
    double elements = 1;
    /// What `run` also does and is not to count: measured beside it and taken off. May be left out.
    std::function<void()> besides = {};
};

struct Work {
    Side ours;
    Side peer;
    /// How the two results differ, after each side has run once; empty when they agree.
    std::function<std::string()> disagreement;
};

struct Row {
    std::string name;
    std::string peer;
    double goal; ///< largest wanted ours / peer, per element
    /// @param quick small sizes: only the agreement of results is looked at then.
    std::function<Work(bool quick)> prepare;
};

/// Rows of each subject; main runs them in this order.
std::vector<Row> KinematicsRows();
std::vector<Row> InverseKinematicsRows();
std::vector<Row> SeamRows();
std::vector<Row> InterpolationRows();
std::vector<Row> StateRows();
std::vector<Row> PathRows();
std::vector<Row> EnvelopeRows();
std::vector<Row> MeshRows();

/// "" when no element differs by more than the tolerance, else where and by how much.
std::string Difference(const std::vector<double>& ours, const std::vector<double>& peer, double tolerance);

/// Keeps the optimiser from dropping a result.
void Keep(double value);

} // namespace bench
