#include <BRepCheck_Analyzer.hxx>
#include <BRepClass3d_SolidClassifier.hxx>
#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <gp_Quaternion.hxx>
#include <host/tools/NozzleParam.h>
#include <limits>
#include <numbers>
#include <support/Mechanism.h>

namespace {

using testing::AllOf;
using testing::HasSubstr;

LocEuler TcpOf(const NozzleParam& nozzle) {
    gp_Quaternion turn(gp_Vec(0, 1, 0), (180 - nozzle.torchAngle) * std::numbers::pi / 180);
    return {gp_Pnt(nozzle.tcpX, 0, nozzle.tcpZ), gpHandle::QuaToEuler(turn)};
}

double Volume(const TopoDS_Shape& shape) {
    GProp_GProps properties;
    BRepGProp::VolumeProperties(shape, properties);
    return properties.Mass();
}

bool Contains(const TopoDS_Shape& shape, const gp_Pnt& point) {
    BRepClass3d_SolidClassifier classifier(shape, point, 1e-6);
    return classifier.State() == TopAbs_IN;
}

TEST(Nozzle, BuildsFiveValidSolidsAtTheGivenSizes) {
    for (const double angle : {180.0, 158.0, 135.0}) {
        Json::Value json = sample::TorchParameters();
        json["torch_angle"] = angle;
        json["tcp_x"] = angle == 180 ? 0.0 : (180 - angle) * 3;
        NozzleParam nozzle;
        nozzle.LoadFrom(json);
        const LocEuler tcp = TcpOf(nozzle);
        const auto [built, shapes] = NozzleParam::LoadTcpLocEuler(nozzle, tcp);
        ASSERT_TRUE(built) << angle;
        ASSERT_EQ(shapes.size(), 5U);
        for (const TopoDS_Shape& shape : shapes) {
            EXPECT_TRUE(BRepCheck_Analyzer(shape).IsValid());
            EXPECT_GT(Volume(shape), 0) << "closed, and the right way out";
            EXPECT_FALSE(Contains(shape, tcp.location)) << "the wire stands free";
        }
        const gp_Trsf frame = gpHandle::EulerToTrsf(tcp);
        const auto behind = [&](double distance) { return gp_Pnt(0, 0, -distance).Transformed(frame); };
        EXPECT_TRUE(Contains(shapes[0], behind(15 + 4))) << "tip";
        EXPECT_TRUE(Contains(shapes[1], behind(15 + 8 + 40))) << "gas nozzle";
        EXPECT_TRUE(Contains(shapes[2], behind(15 + 8 + 75 + 5))) << "neck reaches the nozzle";
        EXPECT_TRUE(Contains(shapes[2], gp_Pnt(0, 0, 115))) << "neck reaches the body";
        EXPECT_TRUE(Contains(shapes[3], gp_Pnt(20, 0, -15 - 8 - 40).Transformed(frame))) << "guard";
        EXPECT_NEAR(Volume(shapes[4]), std::numbers::pi * 28 * 28 * 110, 1) << "body";
    }
}

using Change = std::pair<const char*, Json::Value>;

NozzleParam Changed(const Change& change) {
    Json::Value json = sample::TorchParameters();
    json[change.first] = change.second;
    NozzleParam nozzle;
    nozzle.LoadFrom(json);
    return nozzle;
}

TEST(Nozzle, SetZeroKeepsValuesSixToEleven) {
    NozzleParam nozzle = Changed({"stick_out", 3});
    nozzle.SetZero();
    EXPECT_EQ(nozzle.tipRadius + nozzle.tipLength + nozzle.nozzleRadius + nozzle.nozzleLength +
                  nozzle.neckRadius + nozzle.bodyRadius,
              0);
    EXPECT_EQ(nozzle.tcpZ, 330);
    EXPECT_EQ(nozzle.stickOut, 3);
    EXPECT_EQ(nozzle.guardClearance, NozzleParam().guardClearance);
}

TEST(Nozzle, InvalidNumberIsRefusedByName) {
    const double infinity = std::numeric_limits<double>::infinity();
    const std::vector<Change> bad = {
        {"tip_radius", 0.0},      {"tip_length", -1.0},          {"nozzle_radius", "12"}, {"tcp_z", infinity},
        {"tcp_x", std::nan("")},  {"torch_angle", 181.0},        {"torch_angle", 90.0},   {"stick_out", -0.5},
        {"guard_clearance", 0.0}, {"body_length", Json::Value()}};
    for (const Change& change : bad) {
        EXPECT_THAT(Thrown([&] { Changed(change); }),
                    AllOf(HasSubstr(change.first), HasSubstr("expected a finite number")));
    }
}

} // namespace
