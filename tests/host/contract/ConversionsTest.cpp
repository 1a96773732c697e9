#include <cmath>
#include <gmock/gmock.h>
#include <gp_Quaternion.hxx>
#include <host/tools/DataHandle.h>
#include <host/tools/gpHandle.h>
#include <random>
#include <support/Text.h>
#include <support/Thrown.h>

namespace {

using namespace gpHandle;
using namespace DataHandle;

/// Some ten products of unit numbers on the way to angles and back; translations are copied.
constexpr double RoundingOfRotation = 1e-14;

/// Poses whose second angle lies a given distance short of a right angle, the others anywhere.
class RoundTrip : public testing::TestWithParam<double> {};

TEST_P(RoundTrip, AnglesAndTextGiveTheSameTransform) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> angle(-3.14, 3.14);
    for (int i = 0; i < 5000; ++i) {
        const double y = std::copysign(std::acos(0.0) - GetParam(), angle(random));
        const LocEuler pose(gp_Pnt(1e4 * angle(random), -3, 5), gp_Pnt(angle(random), y, angle(random)));
        const gp_Trsf trsf = EulerToTrsf(pose);
        ASSERT_TRUE(IsSameTrsf(LocEulerToTrsf(TrsfToEuler(trsf)), trsf, RoundingOfRotation))
            << pose.euler.X() << ", " << y << ", " << pose.euler.Z();
        ASSERT_TRUE(IsSameTrsf(JsonArrToTrsf(ThroughText(TrsfToJsonArr(trsf))), trsf, 0)) << "to the bit";
        ASSERT_TRUE(sameTrsf(JsonSixToTrsf(ThroughText(TrsfToJsonSix(trsf))), trsf, RoundingOfRotation));
    }
}

INSTANTIATE_TEST_SUITE_P(FromFreeToGimbalLock, RoundTrip,
                         testing::Values(1.5, 0.4, 1e-3, 1e-7, 1e-9, 1e-12, 1e-14, 4e-15, 1e-16, 0.0));

TEST(GpHandle, AnglesAreIntrinsicXyz) {
    const gp_Trsf product = AxisRotateToTrsf(gp_Vec(2, 0, 0), 0.3) *
                            AxisRotateToTrsf(gp_Vec(0, 0.1, 0), -0.7) *
                            AxisRotateToTrsf(gp_Vec(0, 0, 5), 2.1);
    EXPECT_TRUE(IsSameTrsf(EulerToRotateTrsf(gp_Pnt(0.3, -0.7, 2.1)), product, RoundingOfRotation));
    gp_Quaternion scaled = product.GetRotation();
    scaled.Scale(3);
    EXPECT_LT(QuaToEuler(scaled).Distance(gp_Pnt(0.3, -0.7, 2.1)), RoundingOfRotation);
}

TEST(DataHandle, InvalidRigidTransformIsRefused) {
    const auto messageFor = [&](Json::ArrayIndex index, const Json::Value& element) {
        Json::Value json = TrsfToJsonArr(gp_Trsf());
        json[index] = element;
        return Thrown([&] { JsonArrToTrsf(json); });
    };
    EXPECT_THAT(messageFor(7, "far"), testing::HasSubstr("element 7"));
    EXPECT_THAT(messageFor(3, true), testing::HasSubstr("element 3"));
    EXPECT_THAT(messageFor(5, 1.001), testing::HasSubstr("elements 4 to 6"));
    EXPECT_THAT(messageFor(10, -1.0), testing::HasSubstr("left-handed"));
    EXPECT_EQ(messageFor(0, 1 + 1e-7), "");
    EXPECT_THROW(JsonArrToTrsf(TrsfToJsonSix(gp_Trsf())), std::invalid_argument);
    EXPECT_THROW(JsonSixToTrsf(TrsfToJsonArr(gp_Trsf())), std::invalid_argument);
}

TEST(DataHandle, RotationsRoundedToSixDecimalsAreReadAndMadeOrthonormal) {
    std::mt19937 random(3);
    std::normal_distribution<double> number;
    for (int i = 0; i < 2000; ++i) {
        gp_Trsf exact;
        exact.SetRotation(gp_Quaternion(number(random), number(random), number(random), number(random)));
        Json::Value json = TrsfToJsonArr(exact);
        for (Json::Value& entry : json) {
            entry = std::round(entry.asDouble() * 1e6) / 1e6;
        }
        const gp_Trsf read = JsonArrToTrsf(json);
        EXPECT_TRUE(IsSameTrsf(read, exact, 2e-6));
        const gp_Mat product = read.VectorialPart().Multiplied(read.VectorialPart().Transposed());
        for (int row = 1; row <= 3; ++row) {
            EXPECT_NEAR(product(row, row), 1, RoundingOfRotation);
            EXPECT_NEAR(product(row, row % 3 + 1), 0, RoundingOfRotation);
        }
    }
}

TEST(DataHandle, TextsBecomeUtf8) {
    for (const char* valid : {"", "axis", "机器人", "\xF0\x9F\xA6\xBE", "\xED\x9F\xBF", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_EQ(StringToUTF8string(valid), valid);
    }
    EXPECT_EQ(StringToUTF8string("caf\xE9"), "caf\xC3\xA9");
    EXPECT_EQ(StringToUTF8string("\xE6\x9C"), "\xC3\xA6\xC2\x9C") << "cut short";
    EXPECT_EQ(StringToUTF8string("\xC0\xAF"), "\xC3\x80\xC2\xAF") << "too long a form";
    EXPECT_EQ(StringToUTF8string("\xED\xA0\x80"), "\xC3\xAD\xC2\xA0\xC2\x80") << "surrogate";
}

} // namespace
