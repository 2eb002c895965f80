// What it costs to store the settings and to find out which shortcut does what.
#include "app/preferences.h"
#include "arrangements/arrangement_store.h"
#include "base/notification_center.h"
#include "engine/restore_memory_json.h"
#include "platform/linux/defaults_file.h"
#include "platform/memory/manual_run_loop.h"
#include "platform/memory/memory_user_defaults.h"
#include "sample_values.h"
#include "shortcuts/default_shortcuts.h"
#include "shortcuts/key_bindings.h"

#include <filesystem>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>
#include <stdlib.h>

namespace tessellon {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t fullMemory = 200;

void encodeRestoreMemory(benchmark::State& state) {
    const auto records = sampleRecords(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(encodeMemories(records));
    }
}
BENCHMARK(encodeRestoreMemory)->Arg(10)->Arg(fullMemory)->Unit(benchmark::kMicrosecond);

void decodeRestoreMemory(benchmark::State& state) {
    const auto json = *encodeMemories(sampleRecords(static_cast<std::size_t>(state.range(0))));
    for (auto _ : state) {
        benchmark::DoNotOptimize(decodeMemories(json));
    }
}
BENCHMARK(decodeRestoreMemory)->Arg(10)->Arg(fullMemory)->Unit(benchmark::kMicrosecond);

/// Every action on a key of the user's own.
Keymap changedKeymap() {
    Keymap keymap;
    for (const auto& row : defaultShortcuts) {
        keymap.emplace(HotkeyTarget{HotkeyTarget::Snap{row.action}}.targetID(),
                       KeyCombo{row.keyCode, row.mods | modifier_flag::shift, "X"});
    }
    return keymap;
}

void decodeKeymapOfAllActions(benchmark::State& state) {
    const auto json = *encodeKeymap(changedKeymap());
    for (auto _ : state) {
        benchmark::DoNotOptimize(decodeKeymap(json));
    }
}
BENCHMARK(decodeKeymapOfAllActions)->Unit(benchmark::kMicrosecond);

void bindingsOfAllActions(benchmark::State& state) {
    MemoryUserDefaults defaults;
    NotificationCenter notifications;
    registerPreferenceDefaults(defaults);
    defaults.setObject(preference::keymap, *encodeKeymap(changedKeymap()));
    ArrangementStore arrangements(defaults, notifications);
    const KeyBindings bindings(defaults, arrangements);
    for (auto _ : state) {
        benchmark::DoNotOptimize(bindings.bindings());
    }
}
BENCHMARK(bindingsOfAllActions)->Unit(benchmark::kMicrosecond);

/// A folder of its own, gone with this object.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string name = (fs::temp_directory_path() / "tessellon-benchmark-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        path_ = name;
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const fs::path& path() const { return path_; }

  private:
    fs::path path_;
};

// One turn of the run loop after a snap: the whole file is written and renamed into place. The wait
// for the disk comes later and is not in it.
void writeSettingsFile(benchmark::State& state) {
    const TemporaryFolder folder;
    ManualRunLoop loop;
    DefaultsFile defaults(loop, folder.path() / "tessellon/defaults.plist");
    defaults.setDouble(preference::gap, 12);
    defaults.setString(preference::ignored, "org.example.Player\norg.example.Terminal");
    defaults.setObject(preference::keymap, *encodeKeymap(changedKeymap()));
    auto records = sampleRecords(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        records.back().snapped.x += 1;
        auto json = *encodeMemories(records);
        state.ResumeTiming();
        defaults.setObject(preference::restoreMemory, std::move(json));
        loop.runTurn();
    }
}
BENCHMARK(writeSettingsFile)->Arg(10)->Arg(fullMemory)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tessellon
