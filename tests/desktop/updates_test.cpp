// A check for newer versions by the whole program, which was built for a feed that is a file: with
// the fetcher that belongs to it, with one that hangs, and without.
#include "menu_fixture.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <variant>

namespace tessellon::desktop {
namespace {

namespace fs = std::filesystem;

class UpdatesTest : public MenuTesting<DesktopTest> {
  protected:
    /// Starts the program in a folder of its own, where a test may have put a fetcher beside it.
    void begin() {
        useDesktop();
        fs::create_directories(folder());
        fs::copy_file(PROGRAM_WITH_FEED_PATH, folder() / "tessellon");
        setenv("TESSELLON_PROGRAM", (folder() / "tessellon").c_str(), 1);
        program().start();
    }
    void TearDown() override {
        MenuTesting<DesktopTest>::TearDown();
        unsetenv("TESSELLON_PROGRAM");
    }

    fs::path folder() { return desktop().home() / "built"; }
    fs::path fetcher() { return folder() / "tessellon-fetch-feed"; }

    /// Presses Updates, and waits for the window.
    bool check() {
        click(openedAt({1600, 40}).updates());
        return waitUntil([this] { return windowIsShown(); });
    }
    bool windowIsShown() {
        const auto windows = desktop().windows().managed();
        return std::any_of(windows.begin(), windows.end(), [this](xcb_window_t each) {
            return desktop().windows().title(each) == "Tessellon Updates";
        });
    }
    std::string announced() {
        const auto settings = program().settings().value_or(StoredValues{});
        const auto found = settings.find("announcedVersion");
        return found != settings.end() ? std::get<std::string>(found->second) : "";
    }
};

TEST_F(UpdatesTest, aNewerVersionIsToldAndTheNetworkStaysOutside) {
    begin();
    // Put there only now, as an upgrade would.
    fs::create_symlink(FEED_FETCHER_PATH, fetcher());
    std::ofstream(FEED_PATH) << R"({"version": "99.1", "page": "https://example.org/new"})";
    ASSERT_TRUE(check());
    EXPECT_TRUE(waitUntil([this] { return announced() == "99.1"; })) << announced();
    const auto loaded =
        fileContents("/proc/" + std::to_string(program().process().pid()) + "/maps");
    EXPECT_NE(loaded.find("libQt6Widgets"), std::string::npos);
    EXPECT_EQ(loaded.find("libQt6Network"), std::string::npos);
    fs::remove(FEED_PATH);
}

TEST_F(UpdatesTest, theProgramEndsDuringACheck) {
    begin();
    const auto pidFile = desktop().home() / "pid";
    std::ofstream(fetcher()) << "#!/bin/sh\necho $$ > '" << pidFile.string()
                             << "'\nexec sleep 1000\n";
    fs::permissions(fetcher(), fs::perms::owner_all);
    ASSERT_TRUE(check());
    ASSERT_TRUE(waitUntil([&] { return fileContents(pidFile).ends_with('\n'); }));
    const auto fetch = "/proc/" + std::to_string(std::stoi(fileContents(pidFile)));
    EXPECT_TRUE(fs::exists(fetch));
    EXPECT_EQ(program().stop(), (ProcessEnd{.exitCode = 0, .signal = std::nullopt}));
    programMayBeGone();
    EXPECT_TRUE(waitUntil([&] {
        const auto state = fileContents(fetch + "/stat");
        return state.empty() || state.find(") Z ") != std::string::npos;
    })) << "the fetch goes on";
}

TEST_F(UpdatesTest, aMissingFetcherIsAFailureThatIsShown) {
    begin();
    programMaySpeak();
    ASSERT_TRUE(check());
    EXPECT_TRUE(waitUntil([this] {
        return program().standardError().find("tessellon-fetch-feed' cannot be started") !=
               std::string::npos;
    })) << program().standardError();
    program().waitUntilIdle();
    EXPECT_TRUE(windowIsShown());
    EXPECT_EQ(announced(), "");
}

}  // namespace
}  // namespace tessellon::desktop
