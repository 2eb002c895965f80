#include "demo/demo.h"

#include "harness/screenshot.h"
#include "harness/wait.h"

#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <utility>

namespace tessellon::desktop {
namespace {

std::string text(const Frame& frame) {
    std::ostringstream out;
    out << frame;
    return out.str();
}

}  // namespace

Demo::Demo(std::string title, Monitors monitors, Compositor compositor,
           std::filesystem::path pictures)
    : pictures_(std::move(pictures)), desktop_(monitors), program_(desktop_) {
    std::cout << "\n" << title << "\n";
    desktop_.startWindowManager("openbox");
    desktop_.x().setBackground(0x5a6b7b);
    if (compositor == Compositor::running) {
        desktop_.startCompositor();
    }
    desktop_.addDock(demoDockHeight);
    program_.start();
}

std::size_t Demo::add(const std::vector<std::string>& command, const Frame& frame, Sizes sizes) {
    const std::string name = std::filesystem::path(command.front()).filename();
    const xcb_window_t window = desktop_.startWithWindow(command);
    desktop_.windows().place(window, frame);
    samples_.push_back({name, window, sizes});
    return samples_.size() - 1;
}

void Demo::press(const std::string& what, std::size_t sample, Held held, Key key,
                 const std::vector<Expectation>& expected) {
    announce(what, sample);
    desktop_.windows().activate(samples_[sample].window);
    const std::vector<Frame> before = frames();
    desktop_.keyboard().combination(held, key);
    compare(before, expected);
    takePicture(what);
}

void Demo::drag(const std::string& what, std::size_t sample, Position to,
                const std::vector<Expectation>& expected) {
    announce(what, sample);
    const std::vector<Frame> before = frames();
    const Frame& from = before[sample];
    auto& pointer = desktop_.pointer();
    pointer.jumpTo({from.x + from.width / 2, from.y + 10});
    desktop_.keyboard().press(Key::leftSuper);
    // A hand is not as quick as this program: everybody sees how it begins.
    pointer.press();
    program_.waitUntilIdle();
    pointer.moveTo({from.x + from.width / 2 + 40, from.y + 40});
    waitUntil([&] { return frameOf(sample) != from; });
    pointer.moveTo(to);
    require(waitUntil([&] {
                return desktop_.windows().unmanagedOf(program_.process().pid()).size() > 1;
            }),
            "grid and preview do not appear");
    program_.waitUntilIdle();
    takePicture(what + ", before the drop");
    pointer.release();
    desktop_.keyboard().release(Key::leftSuper);
    compare(before, expected);
    takePicture(what);
}

void Demo::launch(const std::string& what, std::size_t sample, const std::vector<Key>& typed,
                  Key last, const std::vector<Expectation>& expected) {
    announce(what, sample);
    desktop_.windows().activate(samples_[sample].window);
    const std::vector<Frame> before = frames();
    auto& keyboard = desktop_.keyboard();
    keyboard.press(Key::rightSuper);
    keyboard.tap(Key::slash);
    keyboard.release(Key::rightSuper);
    typeInto("the launcher", what, typed, last, before, expected);
}

void Demo::openPanel(const std::string& what, std::size_t sample, const std::vector<Key>& typed,
                     Key last, const std::vector<Expectation>& expected) {
    announce(what, sample);
    desktop_.windows().activate(samples_[sample].window);
    const std::vector<Frame> before = frames();
    startAgain();
    typeInto("the panel", what, typed, last, before, expected);
}

/// Has the program that runs open its panel.
void Demo::startAgain() {
    Program second(desktop_);
    second.launch();
    require(second.process().waitForEnd(patience) ==
                ProcessEnd{.exitCode = EXIT_SUCCESS, .signal = std::nullopt},
            "the program that runs does not answer");
}

void Demo::openSettings(int pages) {
    std::cout << "\n  the settings\n";
    startAgain();
    program_.waitUntilIdle();
    desktop_.keyboard().combination({Key::leftSuper}, Key::comma);
    const auto window =
        desktop_.windows().waitForTitled(program_.process().pid(), "Tessellon Settings");
    require(window.has_value(), "the settings do not appear");
    for (int page = 1; window && page <= pages; ++page) {
        program_.waitUntilIdle();
        takePicture("the settings, page " + std::to_string(page));
        desktop_.keyboard().combination({Key::leftControl}, Key::pageDown);
    }
    desktop_.keyboard().tap(Key::escape);
    require(waitUntil([&] { return !window || !desktop_.windows().isShown(*window); }),
            "the settings do not close");
}

void Demo::typeInto(const std::string& shown, const std::string& what,
                    const std::vector<Key>& typed, Key last, const std::vector<Frame>& before,
                    const std::vector<Expectation>& expected) {
    auto& keyboard = desktop_.keyboard();
    for (const Key key : typed) {
        keyboard.tap(key);
    }
    require(waitUntil(
                [&] { return !desktop_.windows().unmanagedOf(program_.process().pid()).empty(); }),
            shown + " does not appear");
    program_.waitUntilIdle();
    takePicture(what + ", in " + shown);
    keyboard.tap(last);
    compare(before, expected);
    takePicture(what);
}

void Demo::switchTilingOn() {
    program_.change({{"tilingEnabled", true}});
    constexpr std::uint16_t controlAltSuper =
        XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;
    const bool active = waitUntil([&] {
        return desktop_.x().combinationIsHeld(static_cast<std::uint8_t>(Key::t), controlAltSuper);
    });
    std::cout << "\n  Tiling switched on in the settings file: "
              << (active ? "its shortcut is active" : "WRONG, its shortcut is not active") << "\n";
    right_ = right_ && active;
}

Frame Demo::frameOf(std::size_t sample) {
    return desktop_.windows().visibleFrame(samples_[sample].window).value_or(Frame{});
}

bool Demo::finish() {
    const bool endedWell =
        program_.stop() == ProcessEnd{.exitCode = EXIT_SUCCESS, .signal = std::nullopt};
    const std::string complaint = program_.standardError();
    if (!endedWell || !complaint.empty()) {
        std::cout << "  WRONG: the program did not end well. " << complaint << "\n";
    }
    return right_ && endedWell && complaint.empty();
}

std::vector<Frame> Demo::frames() {
    std::vector<Frame> result;
    for (std::size_t i = 0; i < samples_.size(); ++i) {
        result.push_back(frameOf(i));
    }
    return result;
}

void Demo::announce(const std::string& what, std::size_t sample) {
    std::cout << "\n  " << what << " (" << samples_[sample].name << ")\n";
}

/// Waits for the frames that are expected, and reports on every window.
void Demo::compare(const std::vector<Frame>& before, const std::vector<Expectation>& expected) {
    for (const Expectation& one : expected) {
        const Sample& moved = samples_[one.sample];
        if (moved.sizes == Sizes::wholeCells) {
            desktop_.windows().settleWithinIncrements(moved.window, one.frame);
        } else {
            desktop_.windows().settle(moved.window, one.frame);
        }
    }
    program_.waitUntilIdle();
    const std::vector<Frame> after = frames();
    for (std::size_t i = 0; i < samples_.size(); ++i) {
        Frame wanted = before[i];
        for (const Expectation& one : expected) {
            wanted = one.sample == i ? one.frame : wanted;
        }
        report(samples_[i], before[i], after[i], wanted);
    }
}

void Demo::report(const Sample& sample, const Frame& before, const Frame& after,
                  const Frame& wanted) {
    const bool right =
        sample.sizes == Sizes::wholeCells
            ? desktop_.windows().settleWithinIncrements(sample.window, wanted) == wanted
            : after == wanted;
    std::cout << "    " << std::left << std::setw(12) << sample.name << std::setw(24)
              << text(before) << "-> " << std::setw(24) << text(after)
              << (right ? "right" : "WRONG, should be " + text(wanted)) << "\n";
    right_ = right_ && right;
}

void Demo::require(bool met, const std::string& otherwise) {
    if (!met) {
        std::cout << "    WRONG: " << otherwise << "\n";
        right_ = false;
    }
}

void Demo::takePicture(const std::string& what) {
    std::ostringstream name;
    name << std::setw(2) << std::setfill('0') << ++pictureNumber_ << ' ' << what << ".png";
    std::string file = name.str();
    for (char& letter : file) {
        letter = letter == ' ' || letter == ',' ? '-' : letter;
    }
    if (!saveScreenshot(desktop_.x(), pictures_ / file)) {
        std::cout << "    WRONG: no picture " << file << "\n";
        right_ = false;
    }
}

}  // namespace tessellon::desktop
