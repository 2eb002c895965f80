// A panel of ours that is typed into while another program's window stays the active one.
#pragma once

#include "base/token.h"
#include "platform/keyboard_focus.h"
#include "platform/panel.h"
#include "platform/qt/panel_window.h"
#include "platform/qt/qt_panel.h"

#include <utility>

namespace tessellon {

/// While it has the keyboard the toolkit takes its window for the active one, so that focus, caret
/// and Tab work in it as in any window. Its frame has to be set before it gets the keyboard. Any
/// callback of it or of its widgets may destroy it.
class QtKeyPanel : public QtPanel<KeyPanel> {
  public:
    /// The window takes clicks; `keyboard` must outlive the panel.
    QtKeyPanel(PanelWindowPointer<> window, KeyboardFocus& keyboard);
    ~QtKeyPanel() override;
    QtKeyPanel(const QtKeyPanel&) = delete;
    QtKeyPanel& operator=(const QtKeyPanel&) = delete;

    void makeKeyAndOrderFront() override;
    void orderOut() override;

  private:
    void releaseKeyboard();

    KeyboardFocus& keyboard_;
    Token focus_;
};

/// A panel whose View, a PanelWindow, shows a model that is gone once the panel is.
template <typename View>
class QtModelPanel final : public QtKeyPanel {
  public:
    QtModelPanel(PanelWindowPointer<View> view, KeyboardFocus& keyboard)
        : QtKeyPanel(std::move(view), keyboard) {}
    // The view goes only after the event that closed it, the model at once.
    ~QtModelPanel() override { static_cast<View&>(window()).detach(); }
    QtModelPanel(const QtModelPanel&) = delete;
    QtModelPanel& operator=(const QtModelPanel&) = delete;
};

}  // namespace tessellon
