// Shortcuts: one, many at once, on windows that die meanwhile, and compared with what comes of
// them.
#include "stress/scene.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <sstream>
#include <vector>

namespace tessellon::stress {
namespace {

using desktop::Frame;
using desktop::Held;
using desktop::Key;
using desktop::waitUntil;

struct Shortcut {
    Held held;
    Key key;
};

constexpr std::chrono::milliseconds windowManagersTime{2000};

constexpr Shortcut restore{Held::controlAlt, Key::backspace};

constexpr std::array shortcuts{Shortcut{Held::controlAlt, Key::left},
                               Shortcut{Held::controlAlt, Key::right},
                               Shortcut{Held::controlAlt, Key::up},
                               Shortcut{Held::controlAlt, Key::down},
                               Shortcut{Held::controlAlt, Key::u},
                               Shortcut{Held::controlAlt, Key::i},
                               Shortcut{Held::controlAlt, Key::j},
                               Shortcut{Held::controlAlt, Key::k},
                               Shortcut{Held::controlAlt, Key::d},
                               Shortcut{Held::controlAlt, Key::f},
                               Shortcut{Held::controlAlt, Key::g},
                               Shortcut{Held::controlAlt, Key::e},
                               Shortcut{Held::controlAlt, Key::t},
                               Shortcut{Held::controlAlt, Key::enter},
                               Shortcut{Held::controlAltShift, Key::enter},
                               Shortcut{Held::controlAlt, Key::c},
                               restore,
                               Shortcut{Held::controlAltSuper, Key::right},
                               Shortcut{Held::controlAltSuper, Key::left},
                               Shortcut{Held::controlAltSuper, Key::t}};

struct Quarter {
    Key key;
    bool isRight;
    bool isBottom;
};
constexpr std::array quarters{Quarter{Key::u, false, false}, Quarter{Key::i, true, false},
                              Quarter{Key::j, false, true}, Quarter{Key::k, true, true}};

// The display that has the middle of a frame, or the first.
Frame displayOf(Stage& stage, const Frame& frame) {
    const int x = frame.x + frame.width / 2;
    const int y = frame.y + frame.height / 2;
    for (const Frame& display : stage.displays()) {
        if (x >= display.x && x < display.x + display.width && y >= display.y &&
            y < display.y + display.height) {
            return display;
        }
    }
    return stage.displays().front();
}

// Of two displays above each other the bar at the bottom of the upper one reserves all of the lower
// one.
bool hasDisplaysAboveEachOther(Stage& stage) {
    constexpr std::size_t mostBesideEachOther = 2;
    return stage.displays().size() > mostBesideEachOther;
}

std::optional<Record> recordAt(Stage& stage, const Client& client, const Frame& frame) {
    // A window manager may think better of a place that it has reserved.
    const int slack = hasDisplaysAboveEachOther(stage) ? 2 : 0;
    const auto isThere = [&](const Frame& snapped) {
        return std::abs(snapped.x - frame.x) <= slack && std::abs(snapped.y - frame.y) <= slack &&
               snapped.width == frame.width && snapped.height == frame.height;
    };
    std::optional<Record> found;
    for (const Record& record : readRecords(stage)) {
        // Some grow to a size that suits them some time after they were given another.
        const bool grewItself = !client.takesSmallSizes && (record.snapped.width < frame.width ||
                                                            record.snapped.height < frame.height);
        if (record.client == client.name && (isThere(record.snapped) || grewItself)) {
            found = record;
        }
    }
    return found;
}

std::vector<Record> recordsOf(Stage& stage, const Client& client) {
    auto records = readRecords(stage);
    std::erase_if(records, [&](const Record& record) { return record.client != client.name; });
    return records;
}

std::string listed(const std::vector<Record>& records) {
    std::ostringstream out;
    for (const Record& record : records) {
        out << record.id << " snapped " << record.snapped << " from " << record.original << ' ';
    }
    return out.str();
}

/// Snaps a client into a quarter of its display that it is not in, and waits until it is there and
/// its record says so. Nothing when the window manager does not let it come to the front.
std::optional<Record> snapIntoQuarter(Scene& scene, Client& client) {
    Stage& stage = scene.stage;
    auto& windows = scene.desktop().windows();
    const Quarter& quarter = scene.random.pick(quarters);
    if (!stage.activate(client)) {
        return std::nullopt;
    }
    stage.waitUntilQuiet();
    waitUntil([&] { return scene.desktop().x().windowManagerServes(); }, windowManagersTime);
    const auto before = windows.visibleFrame(client.window);
    if (!before || stage.activeClient() != &client) {
        return std::nullopt;
    }
    const bool isFirstSnap = recordsOf(stage, client).empty();
    scene.desktop().keyboard().combination(Held::controlAlt, quarter.key);
    std::optional<Record> record;
    const bool came = waitUntil([&] {
        const auto now = windows.visibleFrame(client.window);
        record = now ? recordAt(stage, client, *now) : std::nullopt;
        if (!record) {
            return false;
        }
        const Frame display = displayOf(stage, *now);
        const bool isRight = now->x + now->width / 2 > display.x + display.width / 2;
        const bool isBottom = now->y + now->height / 2 > display.y + display.height / 2;
        // Some programs are larger than a quarter of a small display.
        return !client.takesSmallSizes || hasDisplaysAboveEachOther(stage) ||
               (isRight == quarter.isRight && isBottom == quarter.isBottom);
    });
    if (!came) {
        if (stage.activeClient() != &client) {
            scene.count("window managers that activated another window");
            return std::nullopt;
        }
        const auto now = windows.visibleFrame(client.window);
        // A key that was lost is another fault than a program that does not snap.
        scene.desktop().keyboard().combination(Held::controlAlt, quarter.key);
        stage.waitUntilQuiet();
        const auto later = windows.visibleFrame(client.window);
        throw Failure("'" + client.name + "' is snapped into a quarter and its record says so",
                      "it was at " + text(*before) + " and is at " +
                          (now ? text(*now) : "no clear place") + ", wanted at the " +
                          (quarter.isBottom ? "bottom " : "top ") +
                          (quarter.isRight ? "right" : "left") + "; pressed once more, it is at " +
                          (later ? text(*later) : "no clear place") +
                          "; its records: " + listed(recordsOf(stage, client)));
    }
    // Those that choose their size may have been about to take another one.
    if (isFirstSnap && client.takesSmallSizes) {
        scene.count("first frames compared");
        require(record->original == *before,
                "the record of '" + client.name + "' says where it came from, " + text(*before),
                text(record->original));
    }
    return record;
}

}  // namespace

void pressSomeShortcut(Scene& scene) {
    const Shortcut& shortcut = scene.random.pick(shortcuts);
    if (shortcut.key == restore.key) {
        scene.stage.mayRestoreActive();
        const Client* const active = scene.stage.activeClient();
        scene.note("restore " + (active != nullptr ? active->name : "nothing"));
    }
    scene.desktop().keyboard().combination(shortcut.held, shortcut.key);
}

void press(Scene& scene) {
    if (Client* const client = someClient(scene)) {
        scene.stage.activate(*client);
        scene.note(client->name);
    }
    pressSomeShortcut(scene);
}

void burst(Scene& scene) {
    if (Client* const client = someClient(scene)) {
        scene.stage.activate(*client);
    }
    constexpr int most = 12;
    for (int left = scene.random.between(2, most); left > 0; --left) {
        pressSomeShortcut(scene);
    }
    maybeInterrupt(scene, scene.stage.activeClient());
}

void snapAndCompare(Scene& scene) {
    if (Client* const client = someClient(scene)) {
        scene.note(client->name);
        if (snapIntoQuarter(scene, *client)) {
            scene.count("snaps compared");
        }
    }
}

// Whether neither place nor size is farther from what is wanted than with the other frame.
bool isAsNear(const desktop::Frame& wanted, const desktop::Frame& frame,
              const desktop::Frame& other) {
    const auto isNoFarther = [&](int desktop::Frame::*number) {
        return std::abs(frame.*number - wanted.*number) <= std::abs(other.*number - wanted.*number);
    };
    return isNoFarther(&desktop::Frame::x) && isNoFarther(&desktop::Frame::y) &&
           isNoFarther(&desktop::Frame::width) && isNoFarther(&desktop::Frame::height);
}

void restoreAndCompare(Scene& scene) {
    Client* const client = someClient(scene);
    if (client == nullptr) {
        return;
    }
    scene.note(client->name);
    // Those that choose their own size have no frame to compare with.
    if (!snapIntoQuarter(scene, *client) || !client->takesSmallSizes) {
        return;
    }
    scene.stage.waitUntilQuiet();
    auto& windows = scene.desktop().windows();
    const auto before = recordsOf(scene.stage, *client);
    scene.stage.ledger().mayForget(client->name);
    scene.desktop().keyboard().combination(restore.held, restore.key);
    // It may have older records from frames that the program met it at after a start.
    std::optional<Record> record;
    const bool dropped = waitUntil([&] {
        const auto now = recordsOf(scene.stage, *client);
        for (const Record& each : before) {
            if (std::none_of(now.begin(), now.end(),
                             [&](const Record& left) { return left.id == each.id; })) {
                record = each;
            }
        }
        return record.has_value();
    });
    if (!dropped && scene.stage.activeClient() != client) {
        scene.count("window managers that activated another window");
        return;
    }
    require(dropped, "restoring '" + client->name + "' drops its record",
            "its records: " + listed(before));
    if (waitUntil([&] { return windows.visibleFrame(client->window) == record->original; },
                  windowManagersTime)) {
        scene.count("windows restored exactly");
        return;
    }
    // Another window manager than then, or other displays than then, may not allow that frame: then
    // nobody else gets nearer to it.
    const auto restored = windows.visibleFrame(client->window);
    requestFrame(scene, *client, record->original);
    waitUntil([&] { return windows.visibleFrame(client->window) == record->original; },
              windowManagersTime);
    const auto allowed = windows.visibleFrame(client->window);
    require(restored && allowed && isAsNear(record->original, *restored, *allowed),
            "restoring '" + client->name + "' gives it " + text(record->original) +
                ", of which the window manager allows " + (allowed ? text(*allowed) : "none"),
            "it is at " + (restored ? text(*restored) : "no clear place"));
    scene.count("windows restored as far as the window manager allows");
}

void snapWhileClientDies(Scene& scene) {
    Client* const client = someClient(scene);
    if (client == nullptr) {
        return;
    }
    scene.stage.activate(*client);
    pressSomeShortcut(scene);
    scene.count("killed: a client, while it is snapped");
    scene.stage.clients().kill(*client);
    pressSomeShortcut(scene);
    scene.stage.activeMayHaveChanged();
}

}  // namespace tessellon::stress
