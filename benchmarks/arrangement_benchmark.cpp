// What capturing and applying an arrangement cost the domain itself, on a desktop in memory.
#include "app/preferences.h"
#include "arrangements/apply.h"
#include "arrangements/capture.h"
#include "platform/memory/memory_accessibility.h"
#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_event_monitors.h"
#include "platform/memory/memory_user_defaults.h"
#include "sample_values.h"

#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>

namespace tessellon {
namespace {

/// Some applications with as many windows as the benchmark wants.
class Crowd {
  public:
    explicit Crowd(benchmark::State& state) {
        constexpr int applications = 5;
        registerPreferenceDefaults(defaults_);
        for (int i = 0; i < applications; ++i) {
            desktop_.launch({firstPid + i, sampleBundleIdentifier + std::to_string(i),
                             "Application", ActivationPolicy::regular, /*hidden=*/false});
        }
        for (int i = 0; i < state.range(0); ++i) {
            MemoryWindow window;
            window.pid = firstPid + i % applications;
            window.frame = {i * 3.0, i * 2.0, 800, 600};
            window.title = "Window " + std::to_string(i);
            desktop_.open(std::move(window));
        }
    }

    EngineServices services() {
        return {desktop_.accessibility(), desktop_.applications(),  desktop_.displays(),
                desktop_.windowList(),    desktop_.eventMonitors(), defaults_};
    }

  private:
    static constexpr Pid firstPid = 100;

    MemoryDesktop desktop_;
    MemoryUserDefaults defaults_;
};

Arrangement captured(WindowEngine& engine, std::size_t expected) {
    auto arrangement = captureArrangement(engine, "all");
    if (!arrangement || arrangement->placements.size() != expected) {
        throw std::runtime_error("the windows are not all captured");
    }
    return *std::move(arrangement);
}

void captureWindows(benchmark::State& state) {
    Crowd crowd(state);
    WindowEngine engine(crowd.services());
    captured(engine, static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(captureArrangement(engine, "again"));
    }
}
BENCHMARK(captureWindows)->Arg(10)->Arg(30)->Arg(100)->Arg(300)->Unit(benchmark::kMicrosecond);

// Two arrangements in turn, so that every window moves.
void applyWindows(benchmark::State& state) {
    Crowd crowd(state);
    WindowEngine engine(crowd.services());
    std::array<Arrangement, 2> arrangements;
    arrangements.fill(captured(engine, static_cast<std::size_t>(state.range(0))));
    for (auto& placement : arrangements.back().placements) {
        placement.unit.width /= 2;
    }
    std::size_t next = 0;
    for (auto _ : state) {
        applyArrangement(engine, arrangements.at(next));
        next = 1 - next;
    }
}
BENCHMARK(applyWindows)->Arg(10)->Arg(30)->Arg(100)->Arg(300)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tessellon
