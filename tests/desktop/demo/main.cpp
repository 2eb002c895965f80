// Shows the program at work where there is no display: starts private desktops with sample
// programs, presses real shortcuts, drags with a real pointer, prints where every window was and
// is, saves pictures, and fails unless every window is where it should be.
#include "demo/demo.h"

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>

namespace tessellon::desktop {
namespace {

bool showOneMonitor(const std::filesystem::path& pictures) {
    Demo demo("One display of 1920 × 1080, a dock of 25 points at its top", Monitors::one,
              Compositor::none, pictures / "one-display");
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

bool showInterface(const std::filesystem::path& pictures) {
    Demo demo("Dragging, the launcher, and the panel of the status item", Monitors::one,
              Compositor::running, pictures / "interface");
    demo.add({"xclock"}, {1380, 620, 420, 380});
    const std::size_t editor = demo.add({"mousepad"}, {420, 160, 820, 560});
    const std::size_t terminal = demo.add({"xterm"}, {260, 520, 640, 440}, Sizes::wholeCells);
    demo.drag("drag to the right half with Super held", editor, {1600, 560},
              {{editor, {964, 33, 948, 1039}}});
    demo.drag("drag to the bottom left quarter", terminal, {250, 1000},
              {{terminal, {8, 556, 948, 516}}});
    demo.launch("search for half and pick the third one", editor,
                {Key::h, Key::a, Key::l, Key::f, Key::right, Key::right}, Key::enter,
                {{editor, {8, 33, 1904, 516}}});
    demo.launch("one letter for the top right quarter", terminal, {}, Key::i,
                {{terminal, {964, 33, 948, 516}}});
    demo.openPanel("the first tile in the second row", editor, {Key::down, Key::down}, Key::enter,
                   {{editor, {8, 33, 948, 516}}});
    constexpr int settingsPages = 7;
    demo.openSettings(settingsPages);
    return demo.finish();
}

bool showTwoMonitors(const std::filesystem::path& pictures) {
    Demo demo("Two displays of 960 × 1080 beside each other", Monitors::twoSideBySide,
              Compositor::none, pictures / "two-displays");
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
    const bool interface = showInterface(pictures);
    const bool two = showTwoMonitors(pictures);
    std::cout << "\nPictures are in " << pictures.string() << ".\n"
              << (one && interface && two ? "Every window is where it should be.\n"
                                          : "Something is WRONG; see above.\n");
    return one && interface && two ? EXIT_SUCCESS : EXIT_FAILURE;
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
