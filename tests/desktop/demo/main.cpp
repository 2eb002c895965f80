// Shows the program at work where there is no display: starts private desktops with sample
// programs, presses real shortcuts, prints where every window was and is, saves pictures, and fails
// unless every window is where it should be.
#include "harness/private_desktop.h"
#include "harness/program.h"
#include "harness/screenshot.h"
#include "harness/wait.h"

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace tessellon::desktop {
namespace {

constexpr std::uint16_t dockHeight = 25;

enum class Sizes { any, wholeCells };

struct Sample {
    std::string name;
    xcb_window_t window = XCB_WINDOW_NONE;
    Sizes sizes = Sizes::any;
};

struct Expectation {
    std::size_t sample;
    Frame frame;
};

class Demo {
  public:
    Demo(std::string title, Monitors monitors, std::filesystem::path pictures)
        : pictures_(std::move(pictures)), desktop_(monitors), program_(desktop_) {
        std::cout << "\n" << title << "\n";
        desktop_.startWindowManager("openbox");
        desktop_.run({"xsetroot", "-solid", "#5a6b7b"});
        desktop_.addDock(dockHeight);
        program_.start();
    }

    std::size_t add(const std::vector<std::string>& command, const Frame& frame,
                    Sizes sizes = Sizes::any) {
        const std::string name = std::filesystem::path(command.front()).filename();
        const xcb_window_t window = desktop_.startWithWindow(command);
        desktop_.windows().place(window, frame);
        samples_.push_back({name, window, sizes});
        return samples_.size() - 1;
    }

    /// Presses a combination with a sample's window in front, and compares the frames of all
    /// windows named with those they should have; all others should have stayed.
    void press(const std::string& what, std::size_t sample, Held held, Key key,
               std::vector<Expectation> expected) {
        std::cout << "\n  " << what << " (" << samples_[sample].name << ")\n";
        desktop_.windows().activate(samples_[sample].window);
        const std::vector<Frame> before = frames();
        desktop_.keyboard().combination(held, key);
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
        takePicture(what);
    }

    void switchTilingOn() {
        program_.change({{"tilingEnabled", true}});
        constexpr std::uint16_t controlAltSuper =
            XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;
        const bool active = waitUntil([&] {
            return desktop_.x().combinationIsHeld(static_cast<std::uint8_t>(Key::t),
                                                  controlAltSuper);
        });
        std::cout << "\n  Tiling switched on in the settings file: "
                  << (active ? "its shortcut is active" : "WRONG, its shortcut is not active")
                  << "\n";
        right_ = right_ && active;
    }

    Frame frameOf(std::size_t sample) {
        return desktop_.windows().visibleFrame(samples_[sample].window).value_or(Frame{});
    }

    /// Ends the program; true when everything was as it should be.
    bool finish() {
        const bool endedWell =
            program_.stop() == ProcessEnd{.exitCode = EXIT_SUCCESS, .signal = std::nullopt};
        const std::string complaint = program_.standardError();
        if (!endedWell || !complaint.empty()) {
            std::cout << "  WRONG: the program did not end well. " << complaint << "\n";
        }
        return right_ && endedWell && complaint.empty();
    }

  private:
    std::vector<Frame> frames() {
        std::vector<Frame> result;
        for (std::size_t i = 0; i < samples_.size(); ++i) {
            result.push_back(frameOf(i));
        }
        return result;
    }

    void report(const Sample& sample, const Frame& before, const Frame& after,
                const Frame& wanted) {
        const bool right =
            sample.sizes == Sizes::wholeCells
                ? desktop_.windows().settleWithinIncrements(sample.window, wanted) == wanted
                : after == wanted;
        const auto text = [](const Frame& frame) {
            std::ostringstream out;
            out << frame;
            return out.str();
        };
        std::cout << "    " << std::left << std::setw(12) << sample.name << std::setw(24)
                  << text(before) << "-> " << std::setw(24) << text(after)
                  << (right ? "right" : "WRONG, should be " + text(wanted)) << "\n";
        right_ = right_ && right;
    }

    void takePicture(const std::string& what) {
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

    std::filesystem::path pictures_;
    PrivateDesktop desktop_;
    Program program_;
    std::vector<Sample> samples_;
    int pictureNumber_ = 0;
    bool right_ = true;
};

bool showOneMonitor(const std::filesystem::path& pictures) {
    Demo demo("One display of 1920 × 1080, a dock of 25 points at its top", Monitors::one,
              pictures / "one-display");
    const std::size_t editor = demo.add({"mousepad"}, {420, 160, 820, 560});
    const std::size_t terminal = demo.add({"xterm"}, {700, 420, 640, 440}, Sizes::wholeCells);
    const std::size_t gallery = demo.add({"gtk3-demo"}, {980, 240, 760, 600});
    const Frame terminalAtFirst = demo.frameOf(terminal);
    demo.press("left half", editor, Held::controlAlt, Key::left, {{editor, {8, 33, 948, 1039}}});
    demo.press("right half", terminal, Held::controlAlt, Key::right,
               {{terminal, {964, 33, 948, 1039}}});
    demo.press("right half again, the right third", terminal, Held::controlAlt, Key::right,
               {{terminal, {1281, 33, 631, 1039}}});
    demo.press("top right quarter", gallery, Held::controlAlt, Key::i,
               {{gallery, {964, 33, 948, 516}}});
    demo.switchTilingOn();
    demo.press("tile", editor, Held::controlAltSuper, Key::t,
               {{editor, {8, 33, 1139, 1039}},
                {gallery, {1154, 33, 758, 516}},
                {terminal, {1154, 556, 758, 516}}});
    demo.press("restore", terminal, Held::controlAlt, Key::backspace,
               {{terminal, terminalAtFirst}});
    return demo.finish();
}

bool showTwoMonitors(const std::filesystem::path& pictures) {
    Demo demo("Two displays of 960 × 1080 beside each other", Monitors::twoSideBySide,
              pictures / "two-displays");
    const std::size_t editor = demo.add({"mousepad"}, {120, 160, 620, 560});
    demo.add({"xclock"}, {560, 620, 300, 300});
    demo.press("left half", editor, Held::controlAlt, Key::left, {{editor, {8, 33, 468, 1039}}});
    demo.press("next display", editor, Held::controlAltSuper, Key::right,
               {{editor, {968, 33, 468, 1039}}});
    demo.press("next display, back to the first", editor, Held::controlAltSuper, Key::right,
               {{editor, {8, 33, 468, 1039}}});
    return demo.finish();
}

int show(const std::filesystem::path& pictures) {
    std::filesystem::remove_all(pictures);
    const bool one = showOneMonitor(pictures);
    const bool two = showTwoMonitors(pictures);
    std::cout << "\nPictures are in " << pictures.string() << ".\n"
              << (one && two ? "Every window is where it should be.\n"
                             : "Something is WRONG; see above.\n");
    return one && two ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace
}  // namespace tessellon::desktop

int main(int argc, char** argv) {
    try {
        return tessellon::desktop::show(argc > 1 ? argv[1] : "build/demo");
    } catch (const std::exception& problem) {
        std::cerr << "The demo could not be shown: " << problem.what() << "\n";
        return EXIT_FAILURE;
    }
}
