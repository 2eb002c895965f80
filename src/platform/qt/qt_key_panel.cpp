#include "platform/qt/qt_key_panel.h"

#include "platform/qt/qt_key_event.h"

#include <QApplication>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QWidget>
#include <QWindow>
#include <utility>

namespace tessellon {
namespace {

/// Gives the key to the widget with the focus. The panel may be gone afterwards.
void deliver(const TypedKey& key, PanelWindow& window) {
    auto* const focused = window.focusWidget();
    auto event = toQtKeyEvent(key);
    QCoreApplication::sendEvent(focused != nullptr ? focused : &window, &event);
}

}  // namespace

QtKeyPanel::QtKeyPanel(PanelWindowPointer<> window, KeyboardFocus& keyboard)
    : QtPanel(std::move(window)), keyboard_(keyboard) {}

QtKeyPanel::~QtKeyPanel() {
    releaseKeyboard();
}

void QtKeyPanel::makeKeyAndOrderFront() {
    if (!focus_) {
        // Before anything is drawn: what is typed meanwhile is for the panel already.
        focus_ = keyboard_.take(
            frame(), {.key = [this](const TypedKey& key) { deliver(key, this->window()); },
                      .lost =
                          [this] {
                              releaseKeyboard();
                              resignedKey_.emit();
                          }});
    }
    window().orderFront();
    QApplication::setActiveWindow(&window());
}

void QtKeyPanel::orderOut() {
    releaseKeyboard();
    QtPanel::orderOut();
}

void QtKeyPanel::releaseKeyboard() {
    focus_.reset();
    if (QApplication::activeWindow() == &window()) {
        // The window of ours that has had the focus all the while, if there is one.
        const auto* const focused = QGuiApplication::focusWindow();
        QApplication::setActiveWindow(focused != nullptr ? QWidget::find(focused->winId())
                                                         : nullptr);
    }
}

}  // namespace tessellon
