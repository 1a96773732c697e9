#include <cmath>
#include <host/tools/Angles.h>
#include <host/tools/DataHandle.h>
#include <host/tools/TextHandle.h>
#include <host/workpiece/GenericEntityConfig.h>
#include <optional>
#include <stdexcept>

// Links as JSON records, and how a new record changes the bodies of an existing link.

using DataHandle::Refuse;

namespace {

// A frame that was written and read again differs by the rounding of an Euler conversion (1e-16 rad over
// metres); frames closer than this are the same and are not changed.
constexpr double SameFrame = 1e-10;

/// Directions (rad) closer than this are the same: they were written with six decimals.
constexpr double SameAxis = 1e-5;

using Angles::DegreesPerRadian;

std::uint64_t ReadHash(const Json::Value& json, const char* key) {
    const Json::Value& value = json[key];
    if (!value.isUInt64()) {
        Refuse(key, value, "an unsigned 64-bit number");
    }
    return value.asUInt64();
}

double ReadNumber(const Json::Value& json, const char* key) {
    const Json::Value& value = json[key];
    if (!value.isNumeric() || !DataHandle::IsSound(value.asDouble())) {
        Refuse(key, value, "a finite number within 1e9");
    }
    return value.asDouble();
}

JointType ReadJointType(const Json::Value& json) {
    const Json::Value& value = json["joint_type"];
    if (value.isInt()) {
        switch (const auto type = static_cast<JointType>(value.asInt())) {
        case JointX:
        case JointY:
        case JointZ:
        case JointRotary:
        case JointLinear:
            return type;
        case JointFixed:
            break;
        }
    }
    Refuse("joint_type", value, "3, 4 or 5 (about X, Y, Z), 7 (rotary) or 8 (linear)");
}

gp_Trsf ReadCenter(const Json::Value& json) {
    try {
        return DataHandle::JsonSixToTrsf(json["center_trsf"]);
    } catch (const std::invalid_argument& error) {
        throw std::invalid_argument(std::string("center_trsf: ") + error.what());
    }
}

std::optional<gp_Ax1> ReadAxis(const Json::Value& json, JointType type) {
    const Json::Value& value = json["joint_axis"];
    if (value.isNull()) {
        return std::nullopt;
    }
    std::array<double, 6> n{};
    for (Json::ArrayIndex i = 0; i < 6; ++i) {
        if (!value.isArray() || value.size() != 6 || !value[i].isNumeric() ||
            !DataHandle::IsSound(value[i].asDouble())) {
            Refuse("joint_axis", value, "six finite numbers within 1e9");
        }
        n[i] = value[i].asDouble();
    }
    const gp_XYZ direction(n[3], n[4], n[5]);
    if (direction.Modulus() < gp::Resolution()) {
        Refuse("joint_axis", value, "a direction that is not zero");
    }
    const gp_Ax1 axis(gp_Pnt(n[0], n[1], n[2]), gp_Dir(direction));
    if (type != JointRotary && type != JointLinear &&
        axis.Direction().Angle(LinkRod::GetAxis(type)) > SameAxis) {
        Refuse("joint_axis", value,
               "the direction of the axis that joint_type " + std::to_string(type) +
                   " names, or joint_type 7 (rotary) or 8 (linear)");
    }
    return axis;
}

std::optional<AxisRange> ReadLimit(const Json::Value& json, JointType type) {
    if (!json.isMember("axis_min") && !json.isMember("axis_max")) {
        return std::nullopt;
    }
    const double low = ReadNumber(json, "axis_min");
    const double high = ReadNumber(json, "axis_max");
    if (low > high) {
        Refuse("axis_min", json["axis_min"], "at most axis_max (" + TextHandle::Shortest(high) + ")");
    }
    const double unit = type == JointLinear ? 1.0 : 1.0 / DegreesPerRadian;
    return AxisRange(low * unit, high * unit);
}

std::vector<Uuid> ReadModelIds(const Json::Value& json) {
    std::vector<Uuid> ids;
    const Json::Value& list = json["axis_models"];
    if (!list.isNull() && !list.isArray()) {
        Refuse("axis_models", list, "an array of identifiers");
    }
    for (const Json::Value& id : list) {
        if (!id.isString()) {
            Refuse("axis_models", id, "an identifier as text");
        }
        ids.push_back(Uuid::FromString(id.asString()));
    }
    return ids;
}

// A record, read and checked before anything is changed.
struct LinkRecord {
    std::uint64_t hash;
    std::uint64_t parentHash;
    std::string name;
    JointType type;
    double value;
    gp_Trsf center;
    std::optional<gp_Ax1> axis;
    std::optional<AxisRange> limit;
    std::vector<Uuid> modelIds;
};

LinkRecord ReadRecord(const Json::Value& json) {
    if (!json.isObject()) {
        Refuse("link", json, "an object");
    }
    LinkRecord record;
    record.hash = ReadHash(json, "link_hash");
    if (record.hash == 0) {
        Refuse("link_hash", json["link_hash"], "a hash that is not 0");
    }
    record.parentHash = ReadHash(json, "parent_link_hash");
    if (!json["name"].isString()) {
        Refuse("name", json["name"], "a text");
    }
    record.name = json["name"].asString();
    record.type = ReadJointType(json);
    record.value = ReadNumber(json, "joint_value");
    record.center = ReadCenter(json);
    record.axis = ReadAxis(json, record.type);
    record.limit = ReadLimit(json, record.type);
    record.modelIds = ReadModelIds(json);
    return record;
}

void SetModelIds(const LinkRod& link, const std::vector<Uuid>& ids) {
    auto id = ids.begin();
    for (const auto& model : link.models) {
        if (!model.IsNull() && id != ids.end()) {
            model->SetId(*id++);
        }
    }
}

bool IsSameFrame(const gp_Trsf& a, const gp_Trsf& b) {
    const Rigid x = Rigid::From(a);
    const Rigid y = Rigid::From(b);
    double difference = 0;
    for (int i = 0; i < 9; ++i) {
        difference = std::max(difference, std::abs(x.r[i] - y.r[i]));
    }
    for (int i = 0; i < 3; ++i) {
        difference = std::max(difference, std::abs(x.p[i] - y.p[i]));
    }
    return difference <= SameFrame;
}

} // namespace

void GenericEntityConfig::CheckLinkRecord(const Json::Value& json) { ReadRecord(json); }

LinkRod* GenericEntityConfig::UpdateLinkRodPara(const Json::Value& json, bool carryBodies) {
    const LinkRecord record = ReadRecord(json);
    LinkRod* parent = GetLinkByHash(record.parentHash);
    if (record.parentHash != 0 && parent == nullptr) {
        Refuse("parent_link_hash", json["parent_link_hash"], "0 or the hash of a link of " + GetName());
    }
    LinkRod* link = GetLinkByHash(record.hash);
    if (link == nullptr) {
        auto created = std::make_shared<LinkRod>();
        created->linkHash = record.hash;
        created->parent = parent;
        created->jointType = record.type;
        created->axis.SetDirection(LinkRod::GetAxis(record.type));
        created->SetCenterTrsf(record.center);
        AddNewLink(created);
        if (parent != nullptr) {
            parent->AddSubLink(created.get());
        }
        link = created.get();
    } else if (link->parent != parent) {
        Refuse("parent_link_hash", json["parent_link_hash"],
               "the link's present parent; links do not move house");
    } else {
        Reframe(*link, record.center, record.type, carryBodies);
    }
    link->name = record.name;
    link->value = record.value;
    currentValues[linkOrder.at(record.hash)] = record.value;
    link->limit = record.limit.value_or(link->limit);
    link->axis = record.axis.value_or(link->axis);
    SetModelIds(*link, record.modelIds);
    UpdateRootTrsf(rootTrsf, true);
    return link;
}

void GenericEntityConfig::Reframe(LinkRod& link, const gp_Trsf& center, JointType type, bool carryBodies) {
    const bool sameFrame = IsSameFrame(center, link.GetCenterTrsf());
    if (sameFrame && type == link.jointType) {
        return;
    }
    link.jointType = type;
    if (!sameFrame) {
        const gp_Trsf oldInNew = center.Inverted() * link.GetCenterTrsf();
        link.SetCenterTrsf(center);
        if (!carryBodies) {
            for (const auto& model : link.models) {
                if (!model.IsNull()) {
                    model->MoveGeometry(oldInNew);
                }
            }
            for (const auto& flange : flanges) {
                if (flange->link == &link) {
                    flange->ChangeTrsf(oldInNew * flange->GetTrsf());
                }
            }
            for (LinkRod* child : link.GetSubLinks()) {
                child->SetCenterTrsf(oldInNew * child->GetCenterTrsf());
            }
            link.axis.Transform(oldInNew);
            if (&link == GetEndLink(0)) {
                endCenterTrsf = oldInNew * endCenterTrsf;
            }
        }
    }
    if (type != JointRotary && type != JointLinear) {
        link.axis.SetDirection(LinkRod::GetAxis(type));
    }
}

Json::Value GenericEntityConfig::LinkToJson(LinkRod* const link) const {
    if (link == nullptr) {
        throw std::invalid_argument(GetName() + ": null link, expected one to write");
    }
    Json::Value json(Json::objectValue);
    json["name"] = link->name;
    json["joint_type"] = static_cast<int>(link->jointType);
    json["joint_value"] = link->value;
    json["link_hash"] = Json::UInt64(link->linkHash);
    json["parent_link_hash"] = Json::UInt64(link->parent != nullptr ? link->parent->linkHash : 0);
    json["center_trsf"] = DataHandle::TrsfToJsonSix(link->GetCenterTrsf());
    return json;
}
