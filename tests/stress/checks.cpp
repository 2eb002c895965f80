#include "stress/checks.h"

#include <chrono>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string_view>
#include <variant>

namespace tessellon::stress {
namespace {

using desktop::StoredData;
using desktop::StoredValues;
using desktop::waitUntil;

std::string describe(const desktop::ProcessEnd& end) {
    if (end.signal) {
        return "it was ended by signal " + std::to_string(*end.signal);
    }
    return "it ended with code " + std::to_string(end.exitCode.value_or(-1));
}

/// Without it nobody goes on, and nobody is to blame but it.
void checkServer(Stage& stage) {
    auto& desktop = stage.desktop();
    require(desktop.serverProcess().running(), "the X server runs",
            "it is gone, having said: " +
                desktop::fileContents(desktop.processOptions("Xvfb").standardError.value()));
}

void checkProgram(Stage& stage) {
    checkServer(stage);
    if (!stage.program().running()) {
        const auto end = stage.program().process().waitForEnd(desktop::patience);
        throw Failure("the program runs", describe(end.value_or(desktop::ProcessEnd{})) +
                                              ", having said: " + stage.program().standardError());
    }
}

void checkScreen(Stage& stage) {
    constexpr std::chrono::seconds tillGone{3};
    if (waitUntil([&] { return stage.pictures().empty(); }, tillGone)) {
        return;
    }
    std::ostringstream found;
    for (const auto& frame : stage.pictures()) {
        found << "a window at " << frame << ' ';
    }
    throw Failure("nothing of the program's is left on the screen", found.str());
}

// The server does not tell who holds pointer or keyboard, but they are free once that one is gone.
template <typename Predicate>
std::string findHolder(Stage& stage, Predicate isFree) {
    constexpr std::chrono::milliseconds untilFreed{1000};
    stage.killProgram();
    if (waitUntil(isFree, untilFreed)) {
        return "the program holds it";
    }
    const std::string name = stage.windowManagerName();
    stage.killWindowManager();
    return waitUntil(isFree, untilFreed) ? name + " holds it" : "somebody holds it";
}

void checkInput(Stage& stage) {
    auto& desktop = stage.desktop();
    const auto pointerIsFree = [&] { return desktop.pointer().isFree(); };
    const auto keyboardIsFree = [&] {
        const bool isFree = desktop.keyboard().grab();
        desktop.keyboard().ungrab();
        return isFree;
    };
    // A click or a key may have opened a menu of a client.
    for (int levels = 3; levels > 0 && stage.clients().showMenu(); --levels) {
        desktop.keyboard().tap(desktop::Key::escape);
        stage.waitUntilQuiet();
    }
    // A client that draws its own title bar asks the window manager to move it. Where it is so slow
    // that the button is up by then, the window manager waits for a click to end the move.
    constexpr std::chrono::milliseconds untilFreed{2000};
    if (stage.wasDraggedByItself() && !waitUntil(pointerIsFree, untilFreed)) {
        stage.report().count("moves that a client began too late");
        desktop.pointer().click();
    }
    constexpr std::chrono::seconds tillFree{5};
    if (!waitUntil([&] { return pointerIsFree() && keyboardIsFree(); }, tillFree)) {
        // A menu or a move of the window manager's, that a key or a click met by chance.
        stage.report().count("grabs that Escape ended");
        desktop.keyboard().tap(desktop::Key::escape);
    }
    if (!waitUntil(pointerIsFree, tillFree)) {
        throw Failure("the pointer is free", findHolder(stage, pointerIsFree));
    }
    if (!waitUntil(keyboardIsFree, tillFree)) {
        throw Failure("the keyboard is free", findHolder(stage, keyboardIsFree));
    }
}

template <typename Type>
void checkTypes(const StoredValues& values, std::initializer_list<std::string_view> keys,
                const std::string& type) {
    for (const std::string_view key : keys) {
        const auto found = values.find(key);
        require(found == values.end() || std::holds_alternative<Type>(found->second),
                "the setting '" + std::string(key) + "' is " + type, "it is something else");
    }
}

void checkTypes(const StoredValues& values) {
    checkTypes<bool>(values,
                     {"paused", "cycle", "restoreOnDrag", "dragEnabled", "showPreview",
                      "ignoreSmall", "onboarded", "tilingEnabled", "automaticUpdateChecks"},
                     "true or false");
    checkTypes<double>(
        values, {"gap", "padding", "almostPadding", "maxTiles", "masterRatio", "lastUpdateCheck"},
        "a number");
    checkTypes<std::string>(values, {"ignored", "announcedVersion"}, "a text");
    checkTypes<StoredData>(values, {"keymap", "arrangements", "restoreMemory"}, "data");
}

std::string dataOf(const StoredValues& values, std::string_view key) {
    const auto found = values.find(key);
    return found != values.end() ? std::get<StoredData>(found->second).bytes : "";
}

void checkWords(Stage& stage) {
    const auto words = stage.unexpectedWords();
    require(words.empty(), "the program is silent",
            words.empty() ? "" : "it says: " + words.front());
}

}  // namespace

std::vector<Record> readRecords(Stage& stage) {
    const auto settings = stage.program().settings();
    require(settings.has_value(), "the settings file is whole",
            "it is not there, or no whole property list");
    checkTypes(*settings);
    const std::string arrangements = dataOf(*settings, "arrangements");
    require(arrangements.empty() || nlohmann::json::accept(arrangements),
            "the stored arrangements are JSON", arrangements);
    const std::string records = dataOf(*settings, "restoreMemory");
    if (records.empty()) {
        return {};
    }
    auto decoded = decodeRecords(records);
    require(decoded.has_value(), "the restore records are whole", records);
    return *std::move(decoded);
}

void checkEverything(Stage& stage) {
    checkProgram(stage);
    stage.waitUntilQuiet();
    checkProgram(stage);
    checkScreen(stage);
    checkInput(stage);
    stage.settleForgetting();
    const auto lost = stage.ledger().check(readRecords(stage), [&](const std::string& client) {
        return stage.clients().isAlive(client);
    });
    require(!lost, "every restore record is kept",
            lost.value_or("") + " under " + stage.windowManagerName());
    stage.ledger().nextAction();
    checkWords(stage);
}

}  // namespace tessellon::stress
