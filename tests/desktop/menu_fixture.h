// What the tests of the status item's panel share: opening it, and finding it on the screen.
#pragma once

#include "desktop_fixture.h"
#include "menu_panel.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon::desktop {

/// Base is a fixture with a desktop and the program on it.
template <typename Base>
class MenuTesting : public Base {
  protected:
    using Base::desktop;
    using Base::program;

    /// The panel while it is shown.
    std::optional<MenuPanel> panel() {
        const auto shown = this->pictureOfWidth(MenuPanel::width);
        return shown ? std::optional(MenuPanel(*shown)) : std::nullopt;
    }
    bool waitUntilOpen() {
        return waitUntil([&] { return panel().has_value(); });
    }
    bool waitUntilClosed() {
        const bool closed = waitUntil([&] { return !panel(); });
        closedAt_ = Clock::now();
        return closed;
    }
    /// Whether it is closed, and remains so after all that was on its way to the program.
    bool staysClosed() {
        program().waitUntilIdle();
        return !panel();
    }

    /// Starts the program a second time, which opens the panel of the one that runs.
    void startAgain() {
        const auto options = desktop().processOptions("second");
        Process second({programPath()}, options);
        EXPECT_EQ(second.waitForEnd(patience), (ProcessEnd{.exitCode = 0, .signal = std::nullopt}));
        EXPECT_EQ(fileContents(*options.standardOutput), "");
        EXPECT_EQ(fileContents(*options.standardError), "");
    }
    /// Opens the panel and gives it once it can be clicked.
    MenuPanel opened() {
        startAgain();
        EXPECT_TRUE(waitUntilOpen());
        program().waitUntilIdle();
        return panel().value_or(MenuPanel({}));
    }
    /// The same with the pointer there. Below it is the panel.
    MenuPanel openedAt(Position place) {
        desktop().pointer().moveTo(place);
        return opened();
    }

    void click(Position place) {
        desktop().pointer().moveTo(place);
        desktop().pointer().click();
    }

    /// A click of the item right after the panel closed opens nothing. This is later.
    void letTheLastClosePass() {
        waitUntil([&] { return Clock::now() - closedAt_ > std::chrono::milliseconds{400}; });
    }
    /// Longer than a click that may follow the last close lasts.
    void holdForLong() {
        const auto start = Clock::now();
        waitUntil([&] { return Clock::now() - start > std::chrono::milliseconds{600}; });
    }

  private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point closedAt_;
};

}  // namespace tessellon::desktop
