// A private desktop on which the program is shown at work: real keys and a real pointer, the frame
// of every window before and after, and pictures.
#pragma once

#include "harness/private_desktop.h"
#include "harness/program.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace tessellon::desktop {

/// Height of the bar at the top of the demo's desktops, in pixels.
inline constexpr std::uint16_t demoDockHeight = 25;

enum class Sizes { any, wholeCells };

enum class Compositor { none, running };

/// Where a sample's window should be.
struct Expectation {
    std::size_t sample;
    Frame frame;
};

class Demo {
  public:
    /// Starts a desktop and the program on it. Pictures go to a folder of their own.
    Demo(std::string title, Monitors monitors, Compositor compositor,
         std::filesystem::path pictures);

    /// Starts a program, puts its window somewhere, and gives the sample's number.
    std::size_t add(const std::vector<std::string>& command, const Frame& frame,
                    Sizes sizes = Sizes::any);

    /// Presses a combination with a sample's window in front, and compares the frames of all
    /// windows named with those they should have; all others should have stayed.
    void press(const std::string& what, std::size_t sample, Held held, Key key,
               const std::vector<Expectation>& expected);

    /// Drags a sample's window by its title bar with Super held and drops it at a place, with a
    /// picture just before.
    void drag(const std::string& what, std::size_t sample, Position to,
              const std::vector<Expectation>& expected);

    /// Opens the launcher with a sample's window in front, types, takes a picture, and presses the
    /// last key.
    void launch(const std::string& what, std::size_t sample, const std::vector<Key>& typed,
                Key last, const std::vector<Expectation>& expected);

    /// Opens the panel of the status item by starting the program again, with a sample's window in
    /// front, types, takes a picture, and presses the last key.
    void openPanel(const std::string& what, std::size_t sample, const std::vector<Key>& typed,
                   Key last, const std::vector<Expectation>& expected);

    /// Opens the settings from the panel, takes pictures of the first pages, and closes them.
    void openSettings(int pages);

    void switchTilingOn();

    Frame frameOf(std::size_t sample);

    /// Ends the program; true when everything was as it should be.
    bool finish();

  private:
    struct Sample {
        std::string name;
        xcb_window_t window = XCB_WINDOW_NONE;
        Sizes sizes = Sizes::any;
    };

    std::vector<Frame> frames();
    void announce(const std::string& what, std::size_t sample);
    void compare(const std::vector<Frame>& before, const std::vector<Expectation>& expected);
    void report(const Sample& sample, const Frame& before, const Frame& after, const Frame& wanted);
    /// Types into what the program shows, and looks at it and at what the last key does.
    void typeInto(const std::string& shown, const std::string& what, const std::vector<Key>& typed,
                  Key last, const std::vector<Frame>& before,
                  const std::vector<Expectation>& expected);
    void startAgain();
    void require(bool met, const std::string& otherwise);
    void takePicture(const std::string& what);

    std::filesystem::path pictures_;
    PrivateDesktop desktop_;
    Program program_;
    std::vector<Sample> samples_;
    int pictureNumber_ = 0;
    bool right_ = true;
};

}  // namespace tessellon::desktop
