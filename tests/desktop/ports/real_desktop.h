// The program's own way to a real desktop, without the program: the adapters for X11 in this
// process, with settings that no file holds, so that single operations can be looked at and timed.
// Not part of the harness, which must know nothing of what it judges.
#pragma once

#include "engine/engine_services.h"
#include "platform/linux/desktop_entries.h"
#include "platform/memory/manual_run_loop.h"
#include "platform/memory/memory_user_defaults.h"
#include "platform/x11/connection.h"
#include "platform/x11/key_grabs.h"
#include "platform/x11/keyboard.h"
#include "platform/x11/raw_input.h"
#include "platform/x11/window_mirror.h"
#include "platform/x11/x11_accessibility.h"
#include "platform/x11/x11_applications.h"
#include "platform/x11/x11_displays.h"
#include "platform/x11/x11_event_monitors.h"
#include "platform/x11/x11_event_taps.h"
#include "platform/x11/x11_hot_key_center.h"
#include "platform/x11/x11_keyboard_focus.h"
#include "platform/x11/x11_tray_icon.h"
#include "platform/x11/x11_window_list.h"

#include <cstdint>
#include <memory>
#include <string>

namespace tessellon::desktop {

class RealDesktop {
  public:
    /// Connects to the named display, or that of DISPLAY. Throws std::runtime_error when it cannot.
    explicit RealDesktop(const std::string& display = {});
    RealDesktop(const RealDesktop&) = delete;
    RealDesktop& operator=(const RealDesktop&) = delete;

    EngineServices services();
    UserDefaults& defaults() { return defaults_; }
    EventMonitors& eventMonitors() { return eventMonitors_; }
    EventTaps& eventTaps() { return eventTaps_; }
    KeyboardFocus& keyboardFocus() { return keyboardFocus_; }
    HotKeyCenter& hotKeyCenter() { return hotKeyCenter_; }

    /// An icon for the tray of the X server, which must not outlive this desktop.
    std::unique_ptr<TrayIcon> makeTrayIcon(IconPainter painter);

    /// Lets events reach their listeners from now on, whenever serve() is called.
    void listen() { connection_->attach(loop_); }
    /// Hands out what has arrived and lets a moment pass.
    void serve() { loop_.advance(Seconds{0.002}); }

    std::uint64_t roundTrips() const { return connection_->roundTrips(); }

  private:
    ManualRunLoop loop_;
    MemoryUserDefaults defaults_;
    DesktopEntries directory_;
    std::unique_ptr<x11::Connection> connection_;
    x11::WindowMirror mirror_;
    x11::X11Applications applications_;
    x11::X11Displays displays_;
    x11::X11WindowList windowList_;
    x11::Keyboard keyboard_;
    x11::RawInput rawInput_;
    x11::X11Accessibility accessibility_;
    x11::X11EventMonitors eventMonitors_;
    x11::KeyGrabs keyGrabs_;
    x11::X11EventTaps eventTaps_;
    x11::X11HotKeyCenter hotKeyCenter_;
    x11::X11KeyboardFocus keyboardFocus_;
};

}  // namespace tessellon::desktop
