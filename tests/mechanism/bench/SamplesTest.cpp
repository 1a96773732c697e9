#include <fstream>
#include <gtest/gtest.h>
#include <json/reader.h>
#include <mechanism/BenchEntity.h>
#include <support/SampleMechanisms.h>
#include <support/TrsfMatcher.h>

namespace {

// The files are rounded to 1e-6 mm and nine digits.
constexpr double Mm = 1e-5;
constexpr double Entries = 1e-8;

gp_XYZ Triple(const Json::Value& v) { return {v[0].asDouble(), v[1].asDouble(), v[2].asDouble()}; }

sample::Mechanism ReadMechanism(const Json::Value& json) {
    const Json::Value& flange = json["flange"];
    sample::Mechanism mechanism;
    mechanism.flange =
        sample::Frame(Triple(flange["origin_mm"]), Triple(flange["z_axis"]), Triple(flange["x_axis"]));
    for (const Json::Value& joint : json["joints"]) {
        mechanism.axes.emplace_back(gp_Pnt(Triple(joint["origin_mm"])), gp_Dir(Triple(joint["axis"])));
        mechanism.linear.push_back(joint["motion"].asString() == "linear");
    }
    return mechanism;
}

gp_Trsf FlangeOf(const Json::Value& at) {
    const Json::Value& rows = at["flange_rotation"];
    const auto column = [&](int i) {
        return gp_Dir(rows[0][i].asDouble(), rows[1][i].asDouble(), rows[2][i].asDouble());
    };
    return sample::Frame(Triple(at["flange_origin_mm"]), column(2), column(0));
}

class SampleFile : public testing::TestWithParam<const char*> {};

TEST_P(SampleFile, IsReproduced) {
    Json::Value json;
    std::ifstream(EXAMPLES_DIR "/arms/" + std::string(GetParam()) + ".json") >> json;
    const sample::Mechanism mechanism = ReadMechanism(json);
    BenchEntity bench(sample::Build(mechanism, 5).get());
    ASSERT_EQ(json["samples"].size(), 8U);
    for (const Json::Value& at : json["samples"]) {
        std::vector<double> values;
        for (const Json::Value& value : at["values"]) {
            const double unit = mechanism.Slides(values.size()) ? 1.0 : std::numbers::pi / 180;
            values.push_back(value.asDouble() * unit);
        }
        EXPECT_THAT(bench.KinematicForward(values, true) * bench.GetPlacementTrsf(),
                    IsTrsf(FlangeOf(at), Mm, Entries));
    }
}

INSTANTIATE_TEST_SUITE_P(Files, SampleFile,
                         testing::Values("gudel_tmf2_rail_10m", "motoman_motopos_d500",
                                         "abb_irbpa250_d1000_twc"),
                         [](const auto& file) { return std::string(file.param); });

} // namespace
