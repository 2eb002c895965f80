// The harness itself: what it measures and places must be right before anything is judged by it.
#include "desktop_fixture.h"
#include "harness/screenshot.h"

namespace tessellon::desktop {
namespace {

using HarnessTest = WindowManagerTest;

TEST_P(HarnessTest, placesAndMeasuresWindowsOfSeveralToolkits) {
    programMayBeGone();
    useDesktop();
    const Frame wanted{120, 140, 900, 650};
    const std::vector<std::vector<std::string>> clients{{"xclock", "-xrm", "XClock.input: True"},
                                                        {"xterm"},
                                                        {"mousepad"},
                                                        {"/usr/lib/qt6/bin/linguist"},
                                                        {"gtk3-demo"}};
    for (const auto& client : clients) {
        const xcb_window_t window = desktop().startWithWindow(client);
        const Frame taken = desktop().windows().place(window, wanted);
        EXPECT_EQ(desktop().windows().settleWithinIncrements(window, wanted), wanted)
            << client.front() << " took " << taken;
        desktop().windows().activate(window);
    }
    const std::filesystem::path picture = desktop().home() / "picture.png";
    EXPECT_TRUE(saveScreenshot(desktop().x(), picture));
    EXPECT_GT(file_size(picture), 1000U);
}

INSTANTIATE_TEST_SUITE_P(On, HarnessTest, testedWindowManagers(), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
