// Which target each of several sources gets, and what stands in its way; no file is touched.
#include "base/lettercase.h"
#include "cli/folderplan.h"
#include "cli/plan.h"

#include <gtest/gtest.h>

namespace {

using namespace lumbrix::cli;

namespace paths = std::filesystem;

paths::path PlainKey(const paths::path& path) { return path.lexically_normal(); }

std::vector<PlannedFile> PlanInto(const std::string& folder, const std::vector<std::string>& sources,
                                  const std::string& word, Collisions collisions = Collisions::Refused) {
    std::vector<Intent> intents;
    for (const std::string& source : sources) {
        const paths::path target = TargetIn(folder, source, word);
        intents.push_back({source, target, paths::path("/here") / source, paths::path("/here") / target});
    }
    return Plan(intents, PlainKey, collisions);
}

std::vector<std::string> TargetsOf(const std::vector<PlannedFile>& plan) {
    std::vector<std::string> targets;
    for (const PlannedFile& file : plan) {
        targets.push_back(file.target.generic_string());
    }
    return targets;
}

using TargetList = std::vector<std::string>;

TEST(Plan, KeepsTheOrderOfTheSources) {
    const auto plan = PlanInto("out", {"c.bmp", "sub/a.bmp", "b.x.bmp"}, "png");
    EXPECT_EQ(TargetsOf(plan), (TargetList{"out/c.png", "out/a.png", "out/b.x.png"}));
    EXPECT_EQ(plan[1].source, "sub/a.bmp");
}

TEST(Plan, SecondSourceForATargetIsRefused) {
    const auto plan = PlanInto("out", {"b/a.bmp", "a/a.gif"}, "png");
    EXPECT_EQ(plan[0].obstacle, Obstacle::None);
    EXPECT_EQ(plan[1].obstacle, Obstacle::SameTarget);
    EXPECT_EQ(plan[1].other, "b/a.bmp");
}

TEST(Plan, SameSourceTwiceHasOneTargetToo) {
    EXPECT_EQ(PlanInto("out", {"a.bmp", "./a.bmp"}, "png")[1].obstacle, Obstacle::SameTarget);
}

TEST(Plan, NumbersGoToTheLaterOnes) {
    const auto plan = PlanInto("out", {"a.bmp", "a.gif", "a.tif", "b.tif"}, "png", Collisions::Numbered);
    EXPECT_EQ(TargetsOf(plan), (TargetList{"out/a.png", "out/a (2).png", "out/a (3).png", "out/b.png"}));
    for (const PlannedFile& file : plan) {
        EXPECT_EQ(file.obstacle, Obstacle::None);
    }
}

TEST(Plan, NumberTakesNoNameThatAnotherFileHas) {
    const auto plan = PlanInto("out", {"a.bmp", "a.gif", "a (2).bmp"}, "png", Collisions::Numbered);
    EXPECT_EQ(TargetsOf(plan), (TargetList{"out/a.png", "out/a (3).png", "out/a (2).png"}));
}

TEST(Plan, NumberIsGivenWhereASourceStandsInTheWay) {
    const auto plan = PlanInto(".", {"a.bmp", "a.png", "a (2).png"}, "png", Collisions::Numbered);
    EXPECT_EQ(TargetsOf(plan), (TargetList{"./a (3).png", "./a (4).png", "./a (2) (2).png"}));
}

TEST(Plan, SourceInTheWayIsNamed) {
    const auto plan = PlanInto(".", {"a.bmp", "a.png"}, "png");
    EXPECT_EQ(plan[0].obstacle, Obstacle::OtherSource);
    EXPECT_EQ(plan[0].other, "a.png");
    EXPECT_EQ(plan[1].obstacle, Obstacle::ItIsTheSource);
}

TEST(Plan, NumberedFolderPlanIsTheSameForAnyOrder) {
    const FolderOrder order{"/in", "/out", "png", Collisions::Numbered};
    const auto one = PlanFolder(order, {"a.gif", "a.bmp"}, PlainKey);
    const auto other = PlanFolder(order, {"a.bmp", "a.gif"}, PlainKey);
    EXPECT_EQ(TargetsOf(one), (TargetList{"a.png", "a (2).png"}));
    EXPECT_EQ(TargetsOf(other), TargetsOf(one));
    EXPECT_EQ(one[1].source, "a.gif");
}

TEST(ListedNames, StayInTheFolder) {
    const FoundFiles found =
        ListedFiles({"a.bmp", "sub/b.bmp", "sub/../c.bmp", "../d.bmp", "/e.bmp", "sub/../../f.bmp"});
    EXPECT_EQ(found.pictures, (std::vector<paths::path>{"a.bmp", paths::path("sub") / "b.bmp", "c.bmp"}));
    ASSERT_EQ(found.failures.size(), 3u);
    EXPECT_EQ(found.failures[0], "cannot work on ../d.bmp: it does not lie in the source folder");
    EXPECT_NE(found.failures[1].find("/e.bmp"), std::string::npos);
}

TEST(ListedNames, CountOnce) {
    EXPECT_EQ(PlanFolder({"/in", "/out", "png"}, {"a.bmp", "b.bmp", "a.bmp"}, PlainKey).size(), 2u);
}

} // namespace
