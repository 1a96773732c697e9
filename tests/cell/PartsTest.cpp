#include "Documents.h"

#include <cell/InputError.h>
#include <cell/documents/Frames.h>
#include <cell/text/OutputFile.h>
#include <cell/text/Text.h>
#include <host/workpiece/LinkRod.h>

using namespace cell;

namespace {

// A dozen products of entries that are at most one.
constexpr double Rounding = 1e-15;

TEST(FrameOfJoint, TurnsAboutTheAxisWhicheverWayItPoints) {
    const Triple origin{10, -20, 30};
    for (const Triple& raw : std::vector<Triple>{{1, 0, 0},
                                                 {0, 1, 0},
                                                 {0, 0, 1},
                                                 {-1, 0, 0},
                                                 {0, -1, 0},
                                                 {0, 0, -1},
                                                 {0.6, 0, -0.8},
                                                 {0.1, 0.99, 0.05},
                                                 {1, 1e-9, 0},
                                                 {1, 2, 3}}) {
        const Triple axis = Unit(raw);
        const auto [frame, type] = FrameOfJoint(origin, axis);
        const gp_Dir own = LinkRod::GetAxis(type);
        EXPECT_LE(Length(Minus(Turn(frame, {own.X(), own.Y(), own.Z()}), axis)), Rounding);
        const Triple x = Turn(frame, {1, 0, 0});
        const Triple y = Turn(frame, {0, 1, 0});
        const Triple z = Turn(frame, {0, 0, 1});
        EXPECT_NEAR(Dot(Cross(x, y), z), 1, Rounding) << "right-handed";
        for (const Triple& side : {x, y, z}) {
            EXPECT_NEAR(Length(side), 1, Rounding);
        }
        EXPECT_EQ(Apply(frame, {0, 0, 0}), origin);
    }
}

TEST(FrameOfFlange, KeepsZAndCorrectsX) {
    const Rigid frame =
        FrameOfFlange({1, 2, 3}, {-0.0001, 0.001, -0.999999995}, {0.999999995, 1e-7, -0.0001});
    const Triple z = Unit({0.999999995, 1e-7, -0.0001});
    EXPECT_LE(Length(Minus(Turn(frame, {0, 0, 1}), z)), Rounding);
    EXPECT_NEAR(Dot(Turn(frame, {1, 0, 0}), z), 0, Rounding);
    EXPECT_NEAR(Length(Turn(frame, {1, 0, 0})), 1, Rounding);
}

TEST(Text, NumbersReadAsPeopleWroteThem) {
    EXPECT_EQ(Rounded(-1e-12, 9), "0");
    EXPECT_EQ(Rounded(1200, 0), "1200");
    EXPECT_EQ(Rounded(-2.50, 3), "-2.5");
    EXPECT_EQ(ParseNumbers("1, -2.5\t+3e1\r"), (std::vector<double>{1, -2.5, 30}));
    EXPECT_EQ(ParseNumbers(" "), std::vector<double>());
    for (const char* bad : {"1,,x", "0x10", "nan", "-inf", "1e999", "1;2", "--1", "1.2.3"}) {
        EXPECT_EQ(ParseNumbers(bad), std::nullopt) << bad;
    }
}

TEST(WriteWhole, LeavesTheOldFileWhereTheNewOneFails) {
    const Folder folder;
    const auto target = folder.path / "deeper" / "file.txt";
    WriteWhole(target, "old");
    const auto spoil = [](const std::filesystem::path& beside) {
        std::ofstream(beside) << "half";
        return false;
    };
    EXPECT_THROW(WriteWhole(target, spoil), InputError);
    EXPECT_THROW(WriteWhole(target, [&](const auto& beside) -> bool { throw spoil(beside); }), bool);
    EXPECT_EQ(Read(target), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(target.parent_path()), {}), 1);
    EXPECT_THROW(WriteWhole(folder.path / "deeper", "a file in place of a folder"), InputError);
    EXPECT_THROW(WriteWhole(target / "below" / "a_file", "x"), InputError);
}

} // namespace
