// The status item's panel with the whole status menu behind it, on a desktop in memory and on Qt's
// platform without a display, and ways to use it and to look at it.
#pragma once

#include "base/modifier_flag.h"
#include "fakes/panel_view_fixture.h"
#include "fakes/widgets.h"
#include "menu/menu_view.h"
#include "menu/qt_menu_views.h"
#include "menu/status_menu.h"
#include "platform/memory/manual_run_loop.h"
#include "platform/memory/memory_own_application.h"
#include "platform/memory/memory_status_item.h"
#include "platform/memory/memory_updater.h"

#include <QApplication>
#include <QEnterEvent>
#include <QImage>
#include <string>

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
    /// The control of that name, among those of one kind, be it visible or not.
    template <typename Control = QAbstractButton>
    Control& control(const std::string& name) const {
        return named(all<Control>(view()), name);
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
    static void enter(QWidget& widget, const QPointF& at) {
        QEnterEvent event(at, at, widget.mapToGlobal(at));
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
