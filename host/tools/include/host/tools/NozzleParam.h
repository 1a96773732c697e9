#pragma once

#include <TopoDS_Shape.hxx>
#include <host/tools/LocEuler.h>
#include <host/tools/SharedRecord.h>
#include <utility>
#include <vector>

/// A welding torch in twelve numbers, in this order. Lengths in mm. The torch stands on its mounting frame
/// with the body along Z; the neck bends in the XZ plane towards the tool centre.
struct NozzleParam {
    double tipRadius = 0;    ///< "tip_radius": contact tip
    double tipLength = 0;    ///< "tip_length": how far the tip shows from the gas nozzle
    double nozzleRadius = 0; ///< "nozzle_radius": gas nozzle, larger than the tip's
    double nozzleLength = 0; ///< "nozzle_length"
    double neckRadius = 0;   ///< "neck_radius"
    double bodyRadius = 0;   ///< "body_radius"
    double tcpZ = 0;         ///< "tcp_z": tool centre along Z of the mounting frame
    double tcpX = 0;         ///< "tcp_x": tool centre along X
    double torchAngle = 0;   ///< "torch_angle": between body and gas nozzle, degrees; 180 is a straight torch
    double bodyLength = 0;   ///< "body_length"
    double stickOut = 0;     ///< "stick_out": wire between the tip and the tool centre
    double guardClearance = 10; ///< "guard_clearance": how far the guard volume reaches around the gas nozzle

    /// All zero but the guard clearance, which is 10. (Defined by the mechanism library.)
    MECHANISM_SHARED_RECORD NozzleParam();
    /// Sets the first six numbers to zero. (Defined by the mechanism library.)
    MECHANISM_SHARED_RECORD void SetZero();

    /// Reads the keys named above; "stick_out" (15) and "guard_clearance" (what is there) may be left out.
    /// @throws std::invalid_argument naming key, value and expectation: every length above 0 and
    ///         at most 10000 (tcp_x either way, stick_out at least 0), torch_angle above 90 and at most 180.
    ///         Nothing is changed then.
    void LoadFrom(const Json::Value& json);

    /// The torch as solids: contact tip, gas nozzle, neck, guard volume, body, each a closed valid solid.
    /// @param tcp tool centre in the mounting frame; its Z is the direction in which the wire leaves.
    /// @return false with no shapes when the numbers give no torch: no room for the neck between body and
    ///         nozzle, or a bend tighter than the neck is thick.
    static std::pair<bool, std::vector<TopoDS_Shape>> LoadTcpLocEuler(const NozzleParam& nozzle,
                                                                      const LocEuler& tcp);
};
