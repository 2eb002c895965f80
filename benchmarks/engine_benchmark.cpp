// What the engine's own work costs, on a desktop in memory that answers at once.
#include "app/preferences.h"
#include "engine/placement.h"
#include "engine/restore_memory_json.h"
#include "engine/window_engine.h"
#include "platform/memory/memory_accessibility.h"
#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_event_monitors.h"
#include "platform/memory/memory_user_defaults.h"
#include "sample_values.h"

#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

namespace tessellon {
namespace {

constexpr Pid editor = 100;
constexpr Pid browser = 200;
constexpr Rect startFrame{100, 100, 900, 700};

/// Two applications and an engine on them, started with some restore records of the editor.
class Desk {
  public:
    explicit Desk(std::size_t records = 0) {
        registerPreferenceDefaults(defaults_);
        launch(editor, sampleBundleIdentifier);
        launch(browser, "com.browser");
        if (records > 0) {
            defaults_.setObject(preference::restoreMemory, *encodeMemories(sampleRecords(records)));
        }
    }

    Element open(Pid pid, const Rect& frame, std::string title) {
        MemoryWindow window;
        window.pid = pid;
        window.frame = frame;
        window.title = std::move(title);
        return desktop_.open(std::move(window));
    }

    Element openFocused() {
        const auto window = open(editor, startFrame, "focused");
        desktop_.focus(window);
        return window;
    }

    EngineServices services() {
        return {desktop_.accessibility(), desktop_.applications(),  desktop_.displays(),
                desktop_.windowList(),    desktop_.eventMonitors(), defaults_};
    }

  private:
    void launch(Pid pid, std::string identifier) {
        desktop_.launch({pid, std::move(identifier), "Application", ActivationPolicy::regular,
                         /*hidden=*/false});
    }

    MemoryDesktop desktop_;
    MemoryUserDefaults defaults_;
};

void placeUnitInArea(benchmark::State& state) {
    Rect unit{1.0 / 3, 0, 1.0 / 3, 1};
    const Rect area{8, 33, 1904, 1039};
    for (auto _ : state) {
        benchmark::DoNotOptimize(unit);
        benchmark::DoNotOptimize(placeUnit(unit, area, 8));
    }
}
BENCHMARK(placeUnitInArea);

void targetFrame(benchmark::State& state) {
    Desk desk;
    const auto window = desk.openFocused();
    WindowEngine engine(desk.services());
    for (auto _ : state) {
        benchmark::DoNotOptimize(engine.targetFrame(SnapAction::leftHalf, window, startFrame));
    }
}
BENCHMARK(targetFrame);

// Two actions in turn, so that every snap moves the window. The argument is the number of restore
// records there are; all of them are encoded after every snap.
void snapFocusedWindow(benchmark::State& state) {
    Desk desk(static_cast<std::size_t>(state.range(0)));
    desk.openFocused();
    WindowEngine engine(desk.services());
    bool left = false;
    for (auto _ : state) {
        left = !left;
        engine.snap(left ? SnapAction::topLeft : SnapAction::bottomRight);
    }
}
BENCHMARK(snapFocusedWindow)->Arg(0)->Arg(199)->Unit(benchmark::kMicrosecond);

// A window of an earlier run is looked for among all records: the oldest one is its own.
void recogniseWindow(benchmark::State& state) {
    Desk desk(static_cast<std::size_t>(state.range(0)));
    const auto records = sampleRecords(1);
    const auto window = desk.open(editor, records.front().snapped, records.front().title);
    for (auto _ : state) {
        state.PauseTiming();
        WindowEngine engine(desk.services());
        state.ResumeTiming();
        benchmark::DoNotOptimize(engine.memory().findMemory(window));
    }
}
BENCHMARK(recogniseWindow)->Arg(200)->Unit(benchmark::kMicrosecond);

void listVisibleWindows(benchmark::State& state) {
    Desk desk;
    for (int i = 0; i < state.range(0); ++i) {
        desk.open(i % 2 == 0 ? editor : browser, {i * 4.0, i * 2.0, 800, 600}, "window");
    }
    WindowEngine engine(desk.services());
    for (auto _ : state) {
        benchmark::DoNotOptimize(engine.windows().orderedVisibleWindows());
    }
}
BENCHMARK(listVisibleWindows)->Arg(10)->Arg(100)->Arg(300)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tessellon
