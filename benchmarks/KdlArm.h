#pragma once

#include <kdl/chain.hpp>
#include <support/SampleMechanisms.h>

/// A sample arm as KDL's chain, its frames parallel to the world's at zero.
namespace bench {

inline KDL::Vector ToKdl(const gp_Vec& v) { return {v.X(), v.Y(), v.Z()}; }

/// @param unit length of a millimetre in the chain.
inline KDL::Chain KdlChain(const sample::Mechanism& arm, double unit = 1) {
    KDL::Chain chain;
    const KDL::Frame base(ToKdl(gp_Vec(arm.axes[0].Location().XYZ()) * unit));
    chain.addSegment(KDL::Segment(KDL::Joint(KDL::Joint::None), base));
    for (std::size_t i = 0; i < arm.axes.size(); ++i) {
        const gp_Dir& axis = arm.axes[i].Direction();
        const auto type = axis.X() > 0.5   ? KDL::Joint::RotX
                          : axis.Y() > 0.5 ? KDL::Joint::RotY
                                           : KDL::Joint::RotZ;
        const bool last = i + 1 == arm.axes.size();
        const gp_XYZ next = last ? arm.flange.TranslationPart() : arm.axes[i + 1].Location().XYZ();
        chain.addSegment(KDL::Segment(KDL::Joint(type),
                                      KDL::Frame(ToKdl(gp_Vec(next - arm.axes[i].Location().XYZ()) * unit))));
    }
    return chain;
}

} // namespace bench
