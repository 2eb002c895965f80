// The search of the launcher and its selection.
#include "launcher/launcher_model.h"

#include "platform/memory/memory_beep.h"

#include <vector>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

class LauncherModelTest : public testing::Test {
  protected:
    std::vector<SnapAction> matching(const char* query) {
        model.setQuery(query);
        return model.matches();
    }

    MemoryBeep beep;
    LauncherModel model{"Editor", beep};
};

using enum SnapAction;

TEST_F(LauncherModelTest, TitlesAreSearchedInAnyCaseAndOrderIsKept) {
    EXPECT_EQ(model.matches(), std::vector(allSnapActions.begin(), allSnapActions.end()));
    EXPECT_EQ(matching("third"),
              (std::vector{leftThird, centerThird, rightThird, leftTwoThirds, rightTwoThirds}));
    EXPECT_EQ(matching(" \tHALF\t "), (std::vector{leftHalf, rightHalf, topHalf, bottomHalf}));
    EXPECT_EQ(matching("x"), (std::vector{maximize, almostMaximize, nextDisplay}));
    EXPECT_EQ(matching("t t"), (std::vector{leftThird, rightThird, leftTwoThirds, rightTwoThirds}));
    EXPECT_EQ(matching(" \t ").size(), allSnapActions.size());
    EXPECT_TRUE(matching("xyz").empty());
}

TEST_F(LauncherModelTest, TheSelectionStopsAtBothEnds) {
    model.setSelection(17);
    model.move(4);
    EXPECT_EQ(model.selection(), 18);
    model.move(1);
    EXPECT_EQ(model.selection(), 18);
    model.setSelection(2);
    model.move(-4);
    EXPECT_EQ(model.selection(), 0);

    model.setQuery("xyz");
    model.move(1);
    EXPECT_EQ(model.selection(), 0) << "there is nothing to select";
}

TEST_F(LauncherModelTest, EveryChangeOfTheQuerySelectsTheFirstMatch) {
    int changes = 0;
    const auto token = model.changed().subscribe([&] { ++changes; });
    for (const auto* query : {"t", "th", "t", ""}) {
        model.setSelection(3);
        model.setQuery(query);
        EXPECT_EQ(model.selection(), 0) << query;
    }
    EXPECT_EQ(changes, 8);
    model.setQuery("");
    model.setSelection(0);
    EXPECT_EQ(changes, 8) << "nothing changed";
}

TEST_F(LauncherModelTest, RunsTheSelectedMatchOrBeeps) {
    model.runSelected();
    EXPECT_EQ(beep.count(), 0) << "nobody to run it is not the user's fault";

    std::vector<SnapAction> ran;
    model.run = [&](SnapAction action) { ran.push_back(action); };
    model.setQuery("third");
    model.move(2);
    model.runSelected();
    EXPECT_EQ(ran, std::vector{rightThird});

    model.setSelection(5);
    model.runSelected();
    model.setSelection(-1);
    model.runSelected();
    EXPECT_EQ(beep.count(), 2);
    EXPECT_EQ(ran.size(), 1U);
}

}  // namespace
}  // namespace tessellon
