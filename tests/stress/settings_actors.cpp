// The settings file under the hands of others: edited, broken, taken away, made unwritable.
#include "stress/scene.h"

#include <array>
#include <filesystem>
#include <fstream>

namespace tessellon::stress {
namespace {

namespace fs = std::filesystem;
using desktop::waitUntil;

std::vector<fs::path> filesKeptAside(Scene& scene) {
    const fs::path file = scene.program().settingsFile();
    std::vector<fs::path> found;
    for (const auto& entry : fs::directory_iterator(file.parent_path())) {
        const std::string name = entry.path().filename();
        if (name != file.filename() && name.find("unreadable") != std::string::npos) {
            found.push_back(entry.path());
        }
    }
    return found;
}

void replaceFile(const fs::path& file, const std::string& bytes) {
    const fs::path temporary = file.string() + ".stress";
    std::ofstream(temporary, std::ios::binary) << bytes;
    fs::rename(temporary, file);
}

std::string broken(Random& random, const std::string& whole) {
    const std::array<std::string, 5> texts{
        whole.substr(0, whole.size() / 2), std::string(), std::string("\0\1\2 nothing", 11),
        "<plist version=\"1.0\"><array/></plist>", "bplist00" + whole.substr(0, 40)};
    return random.pick(texts);
}

/// Waits until the broken bytes are kept in a file beside, and removes that.
void requireKeptAside(Scene& scene, const std::string& bytes) {
    requireSoon(
        [&] {
            for (const fs::path& kept : filesKeptAside(scene)) {
                if (desktop::fileContents(kept) == bytes) {
                    return true;
                }
            }
            return false;
        },
        "a settings file that cannot be read is kept aside", "it is not");
    for (const fs::path& kept : filesKeptAside(scene)) {
        fs::remove_all(kept);
    }
}

void requireWhole(Scene& scene) {
    requireSoon([&] { return scene.program().settings().has_value(); },
                "the settings file is written again", "it is not");
}

}  // namespace

void editSettings(Scene& scene) {
    auto& random = scene.random;
    const auto number = [&](int most) { return static_cast<double>(random.between(0, most)); };
    const std::array<desktop::StoredValues, 7> edits{{
        {{"gap", number(30)}},
        {{"padding", number(30)}},
        {{"cycle", random.chance(50)}},
        {{"showPreview", random.chance(50)}},
        {{"restoreOnDrag", random.chance(50)}},
        {{"maxTiles", number(8)}, {"masterRatio", 50.0}},
        {{"arrangements", desktop::StoredData{"[]"}}},
    }};
    scene.stage.editSettings(random.pick(edits));
}

void breakSettings(Scene& scene) {
    const fs::path file = scene.program().settingsFile();
    const std::string bytes = broken(scene.random, desktop::fileContents(file));
    scene.stage.mayBeSaid("cannot be read");
    replaceFile(file, bytes);
    requireKeptAside(scene, bytes);
    requireWhole(scene);
}

void breakSettingsBeforeStart(Scene& scene) {
    const fs::path file = scene.program().settingsFile();
    scene.stage.killProgram();
    const std::string whole = desktop::fileContents(file);
    const std::string bytes = broken(scene.random, whole);
    replaceFile(file, bytes);
    scene.stage.mayBeSaid("cannot be read");
    scene.program().launch();
    requireKeptAside(scene, bytes);
    require(scene.program().waitUntilRunning(), "the program starts without its settings",
            "it does not come up");
    requireWhole(scene);
    scene.program().process().kill();
    replaceFile(file, whole);
}

void removeSettings(Scene& scene) {
    scene.stage.mayBeSaid("is gone; it is written again");
    fs::remove(scene.program().settingsFile());
    if (scene.random.chance(50)) {
        pressSomeShortcut(scene);
    }
    requireWhole(scene);
}

void makeSettingsUnwritable(Scene& scene) {
    // A link to where nobody can make a file, since some are allowed to write everything.
    const fs::path file = scene.program().settingsFile();
    const fs::path link = file.string() + ".stress";
    fs::create_symlink("/proc/nowhere/defaults.plist", link);
    scene.stage.mayBeSaid("is gone; it is written again");
    scene.stage.mayBeSaid("cannot be written");
    fs::rename(link, file);
    constexpr int most = 3;
    for (int presses = scene.random.between(1, most); presses > 0; --presses) {
        pressSomeShortcut(scene);
        scene.stage.waitUntilQuiet();
    }
    fs::remove(file);
    requireWhole(scene);
}

}  // namespace tessellon::stress
