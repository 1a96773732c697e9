#include "Rail.h"

#include <algorithm>
#include <random>
#include <support/Mechanism.h>

namespace {

TEST(PedestalOrder, EverySystemOwnsAContiguousRangeOfLinks) {
    const std::map<std::uint64_t, std::uint64_t> parents = {{2, 1},   {3, 2},   {4, 1},
                                                            {11, 10}, {12, 11}, {21, 20}};
    std::vector<std::uint64_t> listing = {2, 3, 4, 10, 11, 12, 20, 21};
    std::mt19937 random(5);
    for (int draw = 0; draw < 50; ++draw) {
        std::shuffle(listing.begin(), listing.end(), random);
        Rail rail;
        rail.Add(1);
        for (std::size_t i = 0; rail.GetLinkSize() < 9; i = (i + 1) % listing.size()) {
            const bool isRoot = !parents.contains(listing[i]);
            LinkRod* const parent = isRoot ? nullptr : rail.GetLinkByHash(parents.at(listing[i]));
            if (rail.GetLinkByHash(listing[i]) == nullptr && (isRoot || parent != nullptr)) {
                rail.Add(listing[i], parent)->value = static_cast<double>(listing[i]);
            }
        }
        rail.Stand(rail.GetLinkByHash(12), 700);
        rail.Stand(rail.GetLinkByHash(21), 600);
        rail.Initial();
        ASSERT_THAT(rail.GetCurrentValue(700), testing::ElementsAre(10, 11, 12));
        ASSERT_THAT(rail.GetCurrentValue(600), testing::ElementsAre(20, 21));
        ASSERT_EQ(rail.GetLinkIndexOrder(2) + 1, rail.GetLinkIndexOrder(3)) << "a branch stays together";
        ASSERT_EQ(rail.GetSystem(rail.GetLinkByHash(11)), 700U);
    }
}

TEST(PedestalOrder, BranchesOfOneTreeStartAtTheSameLink) {
    Rail rail;
    LinkRod* const top = rail.Add(1);
    rail.Add(9);
    LinkRod* const left = rail.Add(2, top);
    LinkRod* const right = rail.Add(3, top);
    rail.Stand(rail.Add(4, left), 70);
    rail.Stand(rail.Add(5, right), 80);
    rail.AddFlange(std::make_shared<Flange>());
    rail.GetFlangeByIndex(2)->linkHash = 77; // of a link that does not exist yet
    rail.Initial();
    EXPECT_EQ(rail.GetLinkIndexOrder(9), 1) << "the first link comes without its branches";
    EXPECT_EQ(rail.GetLinkIndexOrder(4), 3) << "all others depth first";
    EXPECT_EQ(rail.GetCurrentValueData(80).start, 0U);
    EXPECT_EQ(rail.GetSystem(right), 0U) << "the later branch lies behind its own run";
    EXPECT_EQ(rail.GetSystem(left), 70U) << "the lowest of those that hold it";
}

TEST(PedestalOrder, FaultyTreeThrowsAndKeepsTheLinks) {
    Rail rail;
    LinkRod* const child = rail.Add(2, rail.Add(1));
    rail.Add(3);
    rail.Stand(child, 70);
    LinkRod stranger;
    stranger.linkHash = 9;
    rail.AddFlange(std::make_shared<Flange>(&stranger, gp_Trsf()));
    const auto complaint = [&] { return Thrown([&] { rail.Initial(); }); };
    EXPECT_EQ(complaint(), "invalid map<K, T> key") << "a place, free at that, on no link of ours";
    stranger.parent = &stranger;
    EXPECT_THAT(complaint(), testing::HasSubstr("link 9"));
    child->AddSubLink(&stranger);
    EXPECT_EQ(complaint(), "invalid map<K, T> key");
    stranger.linkHash = 2; // the child now has its own parent's hash
    EXPECT_THAT(complaint(), testing::HasSubstr("link_hash: 2"));
}

} // namespace
