// The icon in a tray of the X server: the System Tray Protocol of freedesktop.org, by which a
// client that owns a selection takes in the windows of others.
#pragma once

#include "base/token.h"
#include "platform/run_loop.h"
#include "platform/tray_icon.h"
#include "platform/x11/connection.h"
#include "platform/x11/selection_watch.h"
#include "platform/x11/tray_plug.h"
#include "platform/x11/x11_displays.h"

#include <memory>
#include <optional>
#include <string>

namespace tessellon::x11 {

/// Trays announce themselves in messages to those who listen to the structure of the root window;
/// on this connection the window mirror does.
class X11TrayIcon final : public TrayIcon {
  public:
    /// `name` is what trays and assistive technology call the icon. The first three must outlive
    /// this object.
    X11TrayIcon(Connection& connection, const X11Displays& displays, RunLoop& runLoop,
                std::string name, IconPainter painter);

    bool isAvailable() const override { return tray_ != XCB_WINDOW_NONE; }
    void setShown(bool shown) override;
    /// One round trip: trays move their icons without a word.
    std::optional<Rect> frame() const override;
    void setHighlighted(bool highlighted) override;

  private:
    /// What a tray says about how icons shall look.
    struct Wishes {
        xcb_visualid_t visual = XCB_NONE;
        std::optional<IconColor> color;
    };

    Wishes readWishes() const;

    void onEvent(const xcb_generic_event_t& event);
    void onPlugEvent(const xcb_generic_event_t& event);
    void onReparented(xcb_window_t parent);
    void selectionChanged();
    void announced();
    void adopt(xcb_window_t tray);
    void wishesChanged();

    void dock(xcb_visualid_t wanted, TrayPlug::Ground ground);
    void dockAsWished();
    void stir();
    void settle();
    void lookAgain();
    void draw();

    Connection& connection_;
    const X11Displays& displays_;
    RunLoop& runLoop_;
    std::string name_;
    IconPainter painter_;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    SelectionWatch watch_;
    Token ownerChanged_;
    xcb_window_t tray_ = XCB_WINDOW_NONE;
    Wishes wishes_;
    bool isShown_ = false;
    bool isHighlighted_ = false;
    bool isStirred_ = false;
    std::unique_ptr<TrayPlug> plug_;
    Token soon_;
    Token later_;
    Token listener_;
    Token idle_;
};

}  // namespace tessellon::x11
