// A panel of ours as it is drawn, typed into and clicked, on a desktop in memory and on Qt's
// platform without a display.
#pragma once

#include "arrangements/arrangement_store.h"
#include "engine/engine_fixture.h"
#include "fakes/toolkit.h"
#include "platform/memory/memory_beep.h"
#include "platform/memory/memory_compositing.h"
#include "platform/memory/memory_keyboard_focus.h"

#include <QApplication>
#include <QCursor>
#include <cstdint>
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

    Element window_;
    MemoryBeep beep;
    MemoryCompositing compositing;
    NotificationCenter notifications;
    ArrangementStore store{defaults_, notifications};
    MemoryKeyboardFocus keyboard;
};

}  // namespace tessellon
