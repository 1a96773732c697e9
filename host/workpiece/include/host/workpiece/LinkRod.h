#pragma once

#include <cstdint>
#include <gp_Ax1.hxx>
#include <gp_Trsf.hxx>
#include <host/tools/Rigid.h>
#include <host/view/ViewShape.h>
#include <host/workpiece/MechanismTypes.h>
#include <string>
#include <vector>

/// One joint and the rigid body that it moves.
///
/// World frame of a link = world frame of its parent (of the entity's base for a root) * centre transform
/// * motion of the link's own value. Models are stored in the link's frame: a model's placement in the world
/// is the link's world transform.
class LinkRod {
public:
    /// Joint value that the link was placed with: rad, or mm where the joint is linear.
    double value = 0;
    /// Joint axis in the link's own frame, mm; its location is the joint origin. For types X, Y and Z the
    /// direction must be that axis.
    gp_Ax1 axis;
    /// Placement in the world, mm, as the last GenericEntity::ForwardTrsf computed it.
    gp_Trsf worldTrsf;
    /// Link that this one moves on, owned by the entity; null for a root.
    LinkRod* parent = nullptr;
    /// How the joint moves.
    JointType jointType = JointZ;
    /// Identity within the entity; 0 is none.
    std::uint64_t linkHash = 0;
    /// Name of the link, UTF-8.
    std::string name;
    /// View models in the link's frame; an entry may be null.
    std::vector<opencascade::handle<ViewShape>> models;
    /// Minimum and maximum of the joint value, rad or mm.
    AxisRange limit{0, 0};

    /// Whether the link has an identity and so belongs to a mechanism.
    bool IsValid() const { return linkHash != 0; }

    /// Placement of the link at value zero, relative to its parent; mm.
    const gp_Trsf& GetCenterTrsf() const { return centerTrsf; }
    /// Sets that placement; the link moves with the next GenericEntity::ForwardTrsf.
    void SetCenterTrsf(const gp_Trsf& trsf);

    /// Child number `index`, null past the end.
    LinkRod* GetSubLink(int index) const {
        return index >= 0 && index < SubLinkSize() ? children[static_cast<std::size_t>(index)] : nullptr;
    }
    /// Number of child links.
    int SubLinkSize() const { return static_cast<int>(children.size()); }
    /// Appends a child link, which the entity owns; its `parent` is set by the caller.
    void AddSubLink(LinkRod* child) { children.push_back(child); }
    /// Child links in the order in which they were added.
    const std::vector<LinkRod*>& GetSubLinks() const { return children; }

    /// Minimum and maximum of the joint value, rad or mm.
    const AxisRange& GetLimit() const { return limit; }
    /// Whether minimum + margin <= jointValue <= maximum - margin; all in rad, or mm where linear.
    bool IsInLimit(double jointValue, double margin) const;

    /// Origin of the joint axis in the link's own frame, mm.
    gp_Pnt GetJointOrigin() const { return axis.Location(); }
    /// Direction of the joint axis in the link's own frame.
    const gp_Dir& GetDirection() const { return axis.Direction(); }
    /// Direction of the joint axis in the parent's frame.
    gp_Dir GetCenterAxis() const;
    /// Unit direction of a joint type in the link's frame; +X for a type that names no axis.
    static gp_Dir GetAxis(JointType type);

    /// Computes the world frame from the parent's world frame, the centre transform and the link's value.
    void PlaceOn(const Rigid& parentWorld);
    /// The same placement as worldTrsf on plain numbers, mm.
    const Rigid& GetWorld() const { return world; }

private:
    gp_Trsf centerTrsf;
    Rigid center; // the same on plain numbers, folded once for the kinematics
    Rigid world;
    std::vector<LinkRod*> children;
};
