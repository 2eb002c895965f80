// A terminal on a private desktop that writes down what is typed into it, clicks included.
#pragma once

#include "harness/private_desktop.h"
#include "harness/wait.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

namespace tessellon::desktop {

class TypingTerminal {
  public:
    /// Starts it with this name and waits until it is in front, near that frame.
    TypingTerminal(PrivateDesktop& desktop, const Frame& frame, const std::string& name = "typed")
        : desktop_(desktop), typed_(desktop.home() / name) {
        // The control sequence asks for the presses of buttons.
        const auto script = "stty raw -echo; printf '\\033[?9h'; : > '" + typed_.string() +
                            "'; cat > '" + typed_.string() + "'";
        window_ = desktop.startWithWindow({"xterm", "-title", name, "-e", "sh", "-c", script});
        EXPECT_TRUE(waitUntil([&] { return std::filesystem::exists(typed_); }));
        desktop.windows().place(window_, frame);
        desktop.windows().activate(window_);
    }

    xcb_window_t window() const { return window_; }

    /// All that it ever got.
    std::string text() const { return fileContents(typed_); }
    /// Types one more key into whatever is in front and gives the same once something has come.
    std::string textAfter(Key key) const {
        const auto before = text().size();
        desktop_.keyboard().tap(key);
        EXPECT_TRUE(waitUntil([&] { return text().size() > before; }));
        return text();
    }

  private:
    PrivateDesktop& desktop_;
    std::filesystem::path typed_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

}  // namespace tessellon::desktop
