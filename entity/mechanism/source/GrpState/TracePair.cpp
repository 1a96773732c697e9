#include <mechanism/ContextState.h>

#include <utility>

TracePair::TracePair(std::vector<GrpState> trace_, TraceType type_) : type(type_), trace(std::move(trace_)) {}

TracePair::TracePair(const TracePair& other) { *this = other; }

const TracePair& TracePair::operator=(const TracePair& other) {
    trace.clear();
    type = other.type;
    if (this != &other) {
        trace = other.trace;
    }
    return *this;
}

void TracePair::setTrace(const std::vector<GrpState>& states) {
    if (&states == &trace) {
        setTrace(std::vector<GrpState>(states));
        return;
    }
    trace.insert(trace.end(), states.begin(), states.end());
}
