#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <clocale>
#include <filesystem>
#include <fstream>
#include <host/tools/ShapeHandle.h>
#include <json/json.h>
#include <support/Mechanism.h>

// Hosts set the user's locale, with decimal commas and points between thousands. Documents written then must
// be readable by any other program, at any path.

namespace {

namespace fs = std::filesystem;

/// The build creates these locales: a minimal system has only C.
class InEveryLocale : public testing::TestWithParam<const char*> {
protected:
    InEveryLocale() { setenv("LOCPATH", LOCALES, 1); }
    ~InEveryLocale() override {
        std::locale::global(std::locale::classic());
        fs::remove_all(folder);
    }
    const fs::path folder = fs::temp_directory_path() / ("机器人 包 " + Uuid::CreateUuid().ToString());
};

std::string Text(const Json::Value& json) { return Json::writeString(Json::StreamWriterBuilder(), json); }

TEST_P(InEveryLocale, DocumentsNamesAndPackagesAreTheSame) {
    const Registrar registrar(12345, {});
    RobotEntity robot(sample::Build(sample::SixAxisArm(), 12345, "焊 接").get());
    GrpState state(12345);
    state.SetValues({1234.5, 0.1, -2.25, 1e-7, 1e9, 3});
    const auto everything = [&] {
        robot.UpdateLinkModelNames();
        return Text(robot.ToJson("")) + Text(state.ToJson()) + robot.GetLink(1)->models[0]->GetName() +
               Thrown([&] {
                   InterpHandle::EulerByQuaternion({}, {1, 0, 0}, 12345678);
               });
    };
    const std::string classic = everything();
    std::locale::global(std::locale(GetParam()));
    ASSERT_STREQ(std::setlocale(LC_ALL, nullptr), GetParam());
    EXPECT_EQ(everything(), classic);
    ASSERT_TRUE(GenericEntityConfig::ExportEntityPkg(&robot, folder.string()));
    std::locale::global(std::locale::classic());
    Json::Value manifest;
    std::ifstream(folder / "manifest.json") >> manifest;
    EXPECT_EQ(manifest["name"], "焊 接");
    ASSERT_EQ(manifest["models"].size(), 6U);
    TopoDS_Shape link;
    const fs::path file = folder / manifest["models"][0]["file"].asString();
    ASSERT_TRUE(BRepTools::Read(link, file.c_str(), BRep_Builder()));
    EXPECT_NEAR(ShapeHandle::GetAreaOrVol(link), 60 * 80 * 100, 1e-6);
}

INSTANTIATE_TEST_SUITE_P(Locales, InEveryLocale,
                         testing::Values("C.UTF-8", "de_DE.UTF-8", "de_DE.ISO-8859-1", "zh_CN.GB18030"));

} // namespace
