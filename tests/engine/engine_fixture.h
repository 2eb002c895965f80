// A desktop in memory with an engine on it, and the few words in which the tests of the engine are
// written.
#pragma once

#include "app/preferences.h"
#include "engine/window_engine.h"
#include "platform/memory/memory_accessibility.h"
#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_event_monitors.h"
#include "platform/memory/memory_user_defaults.h"

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {

inline void PrintTo(const Rect& r, std::ostream* out) {
    *out << '(' << r.x << ", " << r.y << ", " << r.width << ", " << r.height << ')';
}

class EngineTest : public testing::Test {
  protected:
    static constexpr Pid editor = 100;
    static constexpr Pid browser = 200;

    EngineTest() {
        registerPreferenceDefaults(defaults_);
        launch(editor, "com.editor");
        launch(browser, "com.browser");
    }

    void launch(Pid pid, std::optional<std::string> bundleIdentifier,
                ActivationPolicy policy = ActivationPolicy::regular) {
        desktop_.launch({pid, std::move(bundleIdentifier), "App " + std::to_string(pid), policy,
                         /*hidden=*/false});
    }

    Element open(Pid pid, const Rect& frame, std::string title = "Document") {
        MemoryWindow window;
        window.pid = pid;
        window.frame = frame;
        window.title = std::move(title);
        return desktop_.open(std::move(window));
    }

    Element openFocused(const Rect& frame) {
        const auto window = open(editor, frame);
        desktop_.focus(window);
        return window;
    }

    MemoryWindow& at(const Element& element) { return *desktop_.window(element); }

    EngineServices services() {
        return {desktop_.accessibility(), desktop_.applications(),  desktop_.displays(),
                desktop_.windowList(),    desktop_.eventMonitors(), defaults_};
    }

    /// Made at the first use, so that a test can prepare what the engine loads.
    WindowEngine& engine() {
        if (!engine_) {
            engine_ = std::make_unique<WindowEngine>(services());
        }
        return *engine_;
    }

    /// Ends the engine; the next one starts with what this one stored.
    void relaunch() { engine_.reset(); }

    static Screen screen(std::uint64_t id, const Rect& frame, const Rect& visible,
                         std::optional<std::string> uuid = std::nullopt) {
        return {id, frame, visible, std::move(uuid), "Screen " + std::to_string(id)};
    }

    MemoryDesktop desktop_;
    MemoryUserDefaults defaults_;
    std::unique_ptr<WindowEngine> engine_;
};

}  // namespace tessellon
