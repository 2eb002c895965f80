// Settings as somebody may have edited them: values of every type under every key. Each reader
// gives something that can be used, and windows are put on their screen whatever the settings are.
#include "app/preferences.h"
#include "base/notification_center.h"
#include "engine/snap_action.h"
#include "engine/window_engine.h"
#include "fuzz/expect.h"
#include "platform/memory/memory_accessibility.h"
#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_event_monitors.h"
#include "platform/memory/memory_user_defaults.h"
#include "shortcuts/key_bindings.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include <fuzzer/FuzzedDataProvider.h>

namespace {

using namespace tessellon;

constexpr std::array keys{
    preference::paused,      preference::gap,           preference::padding,
    preference::cycle,       preference::restoreOnDrag, preference::dragEnabled,
    preference::ignored,     preference::almostPadding, preference::showPreview,
    preference::ignoreSmall, preference::onboarded,     preference::tilingEnabled,
    preference::maxTiles,    preference::masterRatio,   preference::displayPadding,
    preference::keymap,      preference::arrangements,  preference::restoreMemory};

/// Eight tiled windows still have some height on the screen of this test.
constexpr double largestGapWithRoom = 100;

constexpr const char* display = "37D8832A-2D66-02CA-B9F7-8F30A301B230";

PropertyValue value(FuzzedDataProvider& input, int levels) {
    switch (input.ConsumeIntegralInRange(0, levels > 0 ? 6 : 4)) {
        case 0:
            return input.ConsumeBool();
        case 1:
            return input.ConsumeIntegral<std::int64_t>();
        case 2:
            return input.ConsumeFloatingPoint<double>();
        case 3:
            return input.ConsumeRandomLengthString();
        case 4: {
            const auto text = input.ConsumeRandomLengthString();
            return PropertyData(text.begin(), text.end());
        }
        case 5: {
            PropertyArray array;
            while (input.ConsumeBool() && input.remaining_bytes() > 0) {
                array.push_back(value(input, levels - 1));
            }
            return array;
        }
        default: {
            PropertyDictionary dictionary;
            while (input.ConsumeBool() && input.remaining_bytes() > 0) {
                auto key = input.ConsumeBool() ? display : input.ConsumeRandomLengthString();
                dictionary.insert_or_assign(std::move(key), value(input, levels - 1));
            }
            return dictionary;
        }
    }
}

void readAll(UserDefaults& defaults) {
    for (const auto key : keys) {
        expect(std::isfinite(defaults.doubleForKey(key)));
        static_cast<void>(defaults.boolForKey(key));
        static_cast<void>(defaults.stringForKey(key));
    }
    for (const double distance :
         {effectiveGap(defaults), effectivePadding(defaults), effectiveAlmostPadding(defaults)}) {
        expect(std::isfinite(distance) && distance >= 0);
    }
    expect(effectiveMaxTiles(defaults) >= 2 && effectiveMaxTiles(defaults) <= 8);
    expect(effectiveMasterShare(defaults) >= 0.3 && effectiveMasterShare(defaults) <= 0.8);
    for (const auto& [id, padding] : displayPaddingOverrides(defaults)) {
        expect(std::isfinite(padding) && padding >= 0);
    }
    for (const auto& application : ignoredApplications(defaults)) {
        expect(!application.empty() && application.find('\n') == std::string::npos);
        expect(isIgnored(defaults, application));
    }
}

void readShortcuts(UserDefaults& defaults) {
    NotificationCenter notifications;
    ArrangementStore arrangements(defaults, notifications);
    KeyBindings bindings(defaults, arrangements);
    for (const auto& binding : bindings.bindings()) {
        expect(bindings.exists(binding.target));
        expect(bindings.comboFor(binding.target) == binding.combo);
    }
    const auto target = HotkeyTarget::tile();
    bindings.assignCombo(4, 786432, "H", target);
    expect(bindings.comboFor(target).has_value());
}

bool isWithin(const Rect& inner, const Rect& outer) {
    return inner.minX() >= outer.minX() && inner.maxX() <= outer.maxX() &&
           inner.minY() >= outer.minY() && inner.maxY() <= outer.maxY();
}

void moveWindows(UserDefaults& defaults, FuzzedDataProvider& input) {
    constexpr Rect screen{0, 0, 1920, 1080};
    MemoryDesktop desktop;
    desktop.setScreens({{1, screen, {0, 0, 1920, 1055}, display, "Screen"}});
    desktop.launch({100, "com.editor", "Editor", ActivationPolicy::regular, /*hidden=*/false});
    MemoryWindow window;
    window.pid = 100;
    window.frame = {100, 100, 800, 600};
    const auto first = desktop.open(window);
    const auto second = desktop.open(window);
    desktop.focus(first);
    WindowEngine engine({desktop.accessibility(), desktop.applications(), desktop.displays(),
                         desktop.windowList(), desktop.eventMonitors(), defaults});
    while (input.remaining_bytes() > 0) {
        const auto choice = input.ConsumeIntegralInRange<std::size_t>(0, allSnapActions.size());
        if (choice == allSnapActions.size()) {
            engine.tile();
        } else {
            engine.snap(allSnapActions[choice]);
        }
        // What was stored from before a snap may be anywhere, and gaps that leave windows no room
        // push them out.
        const bool mayBeAnywhere =
            effectiveGap(defaults) > largestGapWithRoom ||
            (choice < allSnapActions.size() && allSnapActions[choice] == SnapAction::restore);
        for (const auto& each : {first, second}) {
            const auto& frame = desktop.window(each)->frame;
            expect(mayBeAnywhere || isWithin(frame, screen));
            expect(frame.width >= 1 && frame.height >= 1);
        }
        if (mayBeAnywhere) {
            desktop.window(first)->frame = window.frame;
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    MemoryUserDefaults defaults;
    registerPreferenceDefaults(defaults);
    for (const auto key : keys) {
        if (input.ConsumeBool()) {
            defaults.edit(key, value(input, 3));
        }
    }
    readAll(defaults);
    moveWindows(defaults, input);
    readShortcuts(defaults);
    return 0;
}
