// A panel of ours as it is drawn, typed into and clicked, on a desktop in memory and on Qt's
// platform without a display.
#pragma once

#include "arrangements/arrangement_store.h"
#include "engine/engine_fixture.h"
#include "fakes/toolkit.h"
#include "platform/memory/memory_beep.h"
#include "platform/memory/memory_compositing.h"
#include "platform/memory/memory_keyboard_focus.h"
#include "ui/palette.h"

#include <QApplication>
#include <QColor>
#include <QCursor>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include <gtest/gtest.h>

namespace tessellon {

/// Keys, as X11 numbers their symbols.
namespace symbol {
constexpr std::uint32_t cyrillicEf = 0x6C6;
constexpr std::uint32_t backtab = 0xFE20;
constexpr std::uint32_t backspace = 0xFF08;
constexpr std::uint32_t tab = 0xFF09;
constexpr std::uint32_t enter = 0xFF0D;
constexpr std::uint32_t home = 0xFF50;
constexpr std::uint32_t left = 0xFF51;
constexpr std::uint32_t up = 0xFF52;
constexpr std::uint32_t right = 0xFF53;
constexpr std::uint32_t down = 0xFF54;
constexpr std::uint32_t keypadFour = 0xFFB4;
}  // namespace symbol

/// `View` is the panel's widget.
template <typename View>
class PanelViewTest : public EngineTest {
  protected:
    void SetUp() override {
        defaults_.setDouble(preference::gap, 0);
        defaults_.setDouble(preference::padding, 0);
        QCursor::setPos(1, 1);
        window_ = openFocused({100, 100, 800, 600});
    }

    static void settle() {
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    /// The panel that is shown; throws when there is none.
    static View& view() {
        for (auto* const widget : QApplication::topLevelWidgets()) {
            auto* const found = dynamic_cast<View*>(widget);
            if (found != nullptr && found->isVisible()) {
                return *found;
            }
        }
        throw std::runtime_error("the panel is not shown");
    }

    void press(const TypedKey& key) { keyboard.press(desktop_.eventMonitors(), key); }

    /// What the toolkit tells a widget of the left button.
    static void sendMouse(QWidget& widget, QEvent::Type type, const QPointF& at) {
        const bool isDown = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, at, widget.mapToGlobal(at), Qt::LeftButton,
                          isDown ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }
    static void click(QWidget& widget, const QPointF& at) {
        sendMouse(widget, QEvent::MouseButtonPress, at);
        sendMouse(widget, QEvent::MouseButtonRelease, at);
    }
    static void click(QWidget& widget) { click(widget, widget.rect().center()); }
    /// A motion without a button.
    static void moveTo(QWidget& widget, const QPointF& at) {
        QMouseEvent event(QEvent::MouseMove, at, widget.mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                          Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }
    static void turnWheel(QWidget& widget, int eighthsOfADegree) {
        const QPointF at(widget.rect().center());
        QWheelEvent event(at, widget.mapToGlobal(at), {}, {0, eighthsOfADegree}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, /*inverted=*/false);
        // The toolkit passes on what the user does, not what is sent.
        event.ignore();
        for (auto* w = &widget; w != nullptr && !event.isAccepted(); w = w->parentWidget()) {
            QApplication::sendEvent(w, &event);
        }
    }
    static bool isWholeInView(const QWidget& widget) {
        return widget.visibleRegion().boundingRect() == widget.rect();
    }

    /// Whether a pixel is that of one colour at some opacity above another.
    static ::testing::AssertionResult isBlend(const QColor& seen, const QColor& top, double opacity,
                                              const QColor& below = palette::paper) {
        const auto off = [opacity](int value, int a, int b) {
            return std::abs(value - static_cast<int>(std::lround(a * opacity + b * (1 - opacity))));
        };
        if (off(seen.red(), top.red(), below.red()) <= 3 &&
            off(seen.green(), top.green(), below.green()) <= 3 &&
            off(seen.blue(), top.blue(), below.blue()) <= 3) {
            return ::testing::AssertionSuccess();
        }
        return ::testing::AssertionFailure() << seen.name().toStdString();
    }

    Element window_;
    MemoryBeep beep;
    MemoryCompositing compositing;
    NotificationCenter notifications;
    ArrangementStore store{defaults_, notifications};
    MemoryKeyboardFocus keyboard;
};

}  // namespace tessellon
