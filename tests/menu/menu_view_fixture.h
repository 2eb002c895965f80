// The status item's panel with the whole status menu behind it, on a desktop in memory and on Qt's
// platform without a display, and ways to use it and to look at it.
#pragma once

#include "base/modifier_flag.h"
#include "fakes/panel_view_fixture.h"
#include "menu/menu_view.h"
#include "menu/qt_menu_views.h"
#include "menu/status_menu.h"
#include "platform/memory/manual_run_loop.h"
#include "platform/memory/memory_own_application.h"
#include "platform/memory/memory_status_item.h"
#include "platform/memory/memory_updater.h"
#include "ui/palette.h"

#include <QApplication>
#include <QEnterEvent>
#include <QImage>
#include <QMouseEvent>
#include <cmath>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessellon {

class MenuViewTest : public PanelViewTest<MenuView> {
  protected:
    MenuViewTest() { item.setFrame(Rect{900, 1056, 20, 24}); }
    void TearDown() override {
        menu.close();
        settle();
    }

    void openMenu() {
        menu.close();
        settle();
        menu.show();
        settle();
    }
    /// The widgets of one kind. (The toolkit's own search knows only its own classes.)
    template <typename Widget>
    static std::vector<Widget*> all(const QWidget& within) {
        std::vector<Widget*> found;
        for (auto* const widget : within.findChildren<QWidget*>()) {
            if (auto* const typed = dynamic_cast<Widget*>(widget)) {
                found.push_back(typed);
            }
        }
        return found;
    }
    /// The control of that name, among those of one kind.
    template <typename Control = QAbstractButton>
    Control& control(const std::string& name) const {
        for (auto* const found : all<Control>(view())) {
            if (found->accessibleName().toStdString() == name) {
                return *found;
            }
        }
        throw std::runtime_error("no control " + name);
    }
    SnapTile& tile(SnapAction action) const {
        return control<SnapTile>(std::string(title(action)));
    }
    std::string focused() const {
        const auto* const widget = view().focusWidget();
        return widget != nullptr && widget != &view() ? widget->accessibleName().toStdString() : "";
    }
    std::string state() const { return all<Chip>(view()).front()->text().toStdString(); }

    void key(std::uint32_t keySymbol, std::uint64_t modifiers = 0) {
        TypedKey typed;
        typed.symbol = keySymbol;
        typed.event.modifiers = modifiers;
        press(typed);
    }
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
    static void enter(QWidget& widget, const QPointF& at) {
        QEnterEvent event(at, at, widget.mapToGlobal(at));
        QApplication::sendEvent(&widget, &event);
    }
    static void moveTo(QWidget& widget, const QPointF& at) {
        QMouseEvent event(QEvent::MouseMove, at, widget.mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                          Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }
    static void leave(QWidget& widget) {
        QEvent event(QEvent::Leave);
        QApplication::sendEvent(&widget, &event);
    }

    QImage picture() const {
        view().finishAnimations();
        return view().grab().toImage();
    }
    /// The place of a tile in the panel, without what it reaches beyond.
    QRect placeOf(SnapAction action) const {
        auto& found = tile(action);
        const QRect geometry = found.tileGeometry();
        return {found.parentWidget()->mapTo(&view(), geometry.topLeft()), geometry.size()};
    }
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

    Arrangement arrangement(const std::string& name) const {
        Arrangement result;
        result.id = Uuid::random();
        result.name = name;
        result.placements = {{"com.editor", "Document", 0, {0, 0, 0.5, 1}}};
        return result;
    }

    static constexpr Rect leftHalfFrame{0, 25, 960, 1055};

    MemoryStatusItem item;
    MemoryUpdater updater;
    MemoryOwnApplication application;
    ManualRunLoop loop;
    QtMenuViews views{keyboard, defaults_, compositing};
    int settingsOpened = 0;
    StatusMenu menu{{.engine = engine(),
                     .arrangements = store,
                     .item = item,
                     .views = views,
                     .updater = updater,
                     .application = application,
                     .beep = beep,
                     .runLoop = loop},
                    [this] { ++settingsOpened; }};
};

}  // namespace tessellon
