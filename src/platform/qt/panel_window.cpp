#include "platform/qt/panel_window.h"

#include "platform/qt/screen_coordinates.h"

#include <QApplication>
#include <QCursor>
#include <algorithm>
#include <vector>

namespace tessellon {
namespace {

Qt::WindowFlags flagsFor(PanelInput input) {
    auto flags = Qt::Window | Qt::X11BypassWindowManagerHint | Qt::FramelessWindowHint |
                 Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus |
                 Qt::NoDropShadowWindowHint;
    if (input == PanelInput::clickThrough) {
        flags |= Qt::WindowTransparentForInput;
    }
    return flags;
}

}  // namespace

PanelWindow::PanelWindow(PanelLevel level, PanelInput input, Compositing& compositing)
    : QWidget(nullptr, flagsFor(input)), level_(level), compositing_(compositing) {
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    // A hidden panel is no reason to keep the program running, nor a closed one to end it.
    setAttribute(Qt::WA_QuitOnClose, false);
    compositingChanged_ = compositing_.changed().subscribe([this] { onCompositingChanged(); });
}

PanelWindow::Backdrop PanelWindow::currentBackdrop() const {
    return compositing_.isActive() ? Backdrop::translucent : Backdrop::opaque;
}

/// What was drawn for a compositor is nearly black without one.
void PanelWindow::onCompositingChanged() {
    if (!isVisible()) {
        return;
    }
    const auto backdrop = currentBackdrop();
    if (backdrop != backdrop_) {
        backdrop_ = backdrop;
        updateShape();
        repaint();
    }
}

void PanelWindow::setScreenFrame(const Rect& frame) {
    frame_ = frame;
    const auto previous = geometry();
    setGeometry(toQtGeometry(frame, qtScreens()));
    if (isVisible() && geometry() != previous) {
        updateShape();
        // Not with the next turn: until then the old picture would be seen at the new place.
        repaint();
    }
}

void PanelWindow::orderFront() {
    if (!isVisible()) {
        backdrop_ = currentBackdrop();
        prepareNativeWindow();
        // The screens may have changed their scale since the frame was set.
        setGeometry(toQtGeometry(frame_, qtScreens()));
        updateShape();
        show();
    }
    raiseInLevel();
}

void PanelWindow::prepareNativeWindow() {
    const WId id = winId();
    if (id == prepared_) {
        return;
    }
    prepared_ = id;
    // Others talk to the server over connections of their own. Asking for the pointer waits for an
    // answer, and then the server has seen everything we asked of it before, the window included.
    static_cast<void>(QCursor::pos());
    compositing_.preparePanel(static_cast<NativeWindow>(id));
}

void PanelWindow::raiseInLevel() {
    raise();
    std::vector<PanelWindow*> higher;
    for (auto* const widget : QApplication::topLevelWidgets()) {
        auto* const panel = dynamic_cast<PanelWindow*>(widget);
        if (panel != nullptr && panel->isVisible() && panel->level_ > level_) {
            higher.push_back(panel);
        }
    }
    std::stable_sort(higher.begin(), higher.end(), [](const PanelWindow* a, const PanelWindow* b) {
        return a->level_ < b->level_;
    });
    for (auto* const panel : higher) {
        panel->raise();
    }
}

}  // namespace tessellon
