// What the tests of taps, keyboard and pointer share: a desktop with a log of the keys in front,
// and the program's own adapters in this process.
#pragma once

#include "desktop_fixture.h"
#include "harness/key_log.h"
#include "ports/real_desktop.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace tessellon::desktop {

inline constexpr auto slashCode = static_cast<std::uint8_t>(Key::slash);

class InputTest : public WindowManagerTest {
  protected:
    /// A desktop with the log in front and this process in the program's place.
    void begin() {
        useDesktop();
        programMayBeGone();
        log = std::make_unique<KeyLog>(desktop().display());
        EXPECT_TRUE(waitUntil([&] { return managesLog(); }));
        desktop().windows().activate(log->window());
        EXPECT_TRUE(waitUntil([&] { return log->isFocused(); }));
        real = std::make_unique<RealDesktop>(desktop().display());
        real->listen();
    }
    void TearDown() override {
        real.reset();
        log.reset();
        WindowManagerTest::TearDown();
    }

    bool comes(const std::function<bool()>& state) {
        return waitUntil([&] {
            real->serve();
            return state();
        });
    }
    /// Lets everything that was typed so far reach its program: one more key goes the same way.
    void settle(Key marker = Key::g) {
        const auto before = log->story(static_cast<std::uint8_t>(marker));
        desktop().keyboard().tap(marker);
        EXPECT_TRUE(comes([&] {
            return log->story(static_cast<std::uint8_t>(marker)) == before + "+-";
        })) << "the keyboard is stuck";
    }

    std::unique_ptr<KeyLog> log;
    std::unique_ptr<RealDesktop> real;

  private:
    bool managesLog() {
        const auto managed = desktop().windows().managed();
        return std::find(managed.begin(), managed.end(), log->window()) != managed.end();
    }
};

}  // namespace tessellon::desktop
