// What the tests share that work the program's own windows as assistive technology does: the
// accessibility bus, the settings opened from the panel, and controls found by role and name.
#pragma once

#include "harness/accessibility_bus.h"
#include "menu_fixture.h"

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tessellon::desktop {

/// A test of the settings or the tour, on a desktop with assistive technology turned on.
class AssistanceTesting : public MenuTesting<WindowManagerTest> {
  protected:
    static constexpr std::string_view settingsTitle = "Tessellon Settings";
    static constexpr std::string_view tourTitle = "Welcome to Tessellon";

    /// A desktop under the window manager of the test, with assistive technology.
    void begin(Monitors monitors = Monitors::one,
               WindowManagerKeys keys = WindowManagerKeys::released) {
        useDesktop(monitors, keys);
        startAssistance();
    }
    void startAssistance() { bus_ = std::make_unique<AccessibilityBus>(desktop()); }
    void TearDown() override {
        MenuTesting<WindowManagerTest>::TearDown();
        bus_.reset();
    }

    AccessibilityBus& bus() { return *bus_; }
    pid_t self() { return program().process().pid(); }

    /// Starts the program and opens its settings at a page. Throws when they do not come.
    void startWithSettings(std::string_view page) {
        program().start();
        click(openedAt({1600, 40}).settings());
        const auto window = desktop().windows().waitForTitled(self(), settingsTitle);
        settings_ = window.value();
        EXPECT_TRUE(waitUntilClosed());
        EXPECT_TRUE(waitUntil([&] { return desktop().windows().active() == settings_; }));
        showPage(page);
    }
    void showPage(std::string_view page) {
        const auto item = control("radio button", page);
        if (!item.is(AccessibleState::checked)) {
            EXPECT_TRUE(bus().act(item, "Toggle"));
        }
        EXPECT_TRUE(waitUntilIs(item, AccessibleState::checked));
    }
    xcb_window_t settingsWindow() const { return settings_; }

    /// Waits for what is shown under this name. Throws when it does not come.
    Accessible control(std::string_view role, std::string_view name) {
        const auto found = bus().waitFor(self(), role, name);
        if (!found) {
            throw std::runtime_error("no " + std::string(role) + " “" + std::string(name) +
                                     "” in\n" + describe(bus().tree(self())));
        }
        return *found;
    }
    bool isShown(std::string_view role, std::string_view name) {
        return bus().find(self(), role, name).has_value();
    }
    bool waitUntilIs(const Accessible& object, AccessibleState state) {
        return waitUntil([&] {
            const auto now = bus().again(object);
            return now && now->is(state);
        });
    }
    void press(std::string_view name) {
        EXPECT_TRUE(bus().act(control("push button", name), "Press")) << name;
    }
    void toggle(std::string_view name) {
        EXPECT_TRUE(bus().act(control("check box", name), "Toggle")) << name;
    }
    /// Gives it the keyboard, its window being the active one.
    Accessible focused(std::string_view role, std::string_view name) {
        desktop().windows().activate(settings_);
        auto found = control(role, name);
        EXPECT_TRUE(bus().act(found, "SetFocus")) << name;
        EXPECT_TRUE(waitUntilIs(found, AccessibleState::focused)) << name;
        return found;
    }
    void type(const std::vector<Key>& keys) {
        for (const auto key : keys) {
            desktop().keyboard().tap(key);
        }
    }

    /// What the settings file holds; nothing when it holds nothing of that type under the key.
    template <typename T>
    std::optional<T> stored(std::string_view key) {
        const auto values = program().settings().value_or(StoredValues{});
        const auto found = values.find(key);
        const auto* const value = found != values.end() ? std::get_if<T>(&found->second) : nullptr;
        return value != nullptr ? std::optional(*value) : std::nullopt;
    }
    template <typename T>
    bool waitUntilStored(std::string_view key, const T& value) {
        return waitUntil([&] { return stored<T>(key) == value; });
    }

  private:
    std::unique_ptr<AccessibilityBus> bus_;
    xcb_window_t settings_ = XCB_WINDOW_NONE;
};

}  // namespace tessellon::desktop
