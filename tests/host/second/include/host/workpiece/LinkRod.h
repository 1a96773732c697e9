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
/// * motion of the link's own value. Models are kept in the link's frame: a model's placement in the world is
/// the link's world transform.
class LinkRod {
public:
    /// Current joint value: rad, or mm where the joint is linear.
    double value = 0;
    /// Joint axis in the link's own frame; its location is the joint origin. Keep the direction in step with
    /// the type where that is X, Y or Z.
    gp_Ax1 axis;
    /// Placement in the world, as the last forward kinematics left it.
    gp_Trsf worldTrsf;
    LinkRod* parent = nullptr;
    JointType jointType = JointZ;
    /// Identity within the entity; 0 is none.
    std::uint64_t linkHash = 0;
    std::string name;
    /// View models in the link's frame; an entry may be null.
    std::vector<opencascade::handle<ViewShape>> models;
    AxisRange limit{0, 0};

    /// Whether the link has an identity and so belongs to a mechanism.
    bool IsValid() const { return linkHash != 0; }

    /// Placement of the link at value zero, relative to its parent.
    const gp_Trsf& GetCenterTrsf() const { return centerTrsf; }
    void SetCenterTrsf(const gp_Trsf& trsf);

    /// Child number `index`, null past the end.
    LinkRod* GetSubLink(int index) const {
        return index >= 0 && index < SubLinkSize() ? children[static_cast<std::size_t>(index)] : nullptr;
    }
    int SubLinkSize() const { return static_cast<int>(children.size()); }
    void AddSubLink(LinkRod* child) { children.push_back(child); }
    const std::vector<LinkRod*>& GetSubLinks() const { return children; }

    const AxisRange& GetLimit() const { return limit; }
    /// Whether minimum + margin <= value <= maximum - margin.
    bool IsInLimit(double jointValue, double margin) const;

    gp_Pnt GetJointOrigin() const { return axis.Location(); }
    /// Direction of the joint axis in the link's own frame.
    const gp_Dir& GetDirection() const { return axis.Direction(); }
    /// Direction of the joint axis in the parent's frame.
    gp_Dir GetCenterAxis() const;
    /// Unit direction of a joint type in the link's frame; +X for a type that names no axis.
    static gp_Dir GetAxis(JointType type);

    /// Places the link, at its value, on its parent's frame in the world.
    void PlaceOn(const Rigid& parentWorld);
    Rigid GetWorld() const { return Rigid::From(worldTrsf); }

private:
    gp_Trsf centerTrsf;
    std::vector<LinkRod*> children;
};
