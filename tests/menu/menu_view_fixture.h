// The status item's panel with the whole status menu behind it, on a desktop in memory and on Qt's
// platform without a display, and ways to use it and to look at it.
#pragma once

#include "base/modifier_flag.h"
#include "engine/engine_fixture.h"
#include "menu/menu_view.h"
#include "menu/qt_menu_views.h"
#include "menu/status_menu.h"
#include "platform/memory/manual_run_loop.h"
#include "platform/memory/memory_beep.h"
#include "platform/memory/memory_compositing.h"
#include "platform/memory/memory_own_application.h"
#include "platform/memory/memory_status_item.h"
#include "platform/memory/memory_updater.h"
#include "ui/palette.h"

#include <QApplication>
#include <QCursor>
#include <QEnterEvent>
#include <QImage>
#include <QMouseEvent>
#include <QTemporaryFile>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessellon {

namespace symbol {
constexpr std::uint32_t tab = 0xFF09;
constexpr std::uint32_t backtab = 0xFE20;
constexpr std::uint32_t enter = 0xFF0D;
constexpr std::uint32_t left = 0xFF51;
constexpr std::uint32_t up = 0xFF52;
constexpr std::uint32_t right = 0xFF53;
constexpr std::uint32_t down = 0xFF54;
}  // namespace symbol

/// The keyboard as the desktop in memory has it: what no monitor uses goes to whoever took it.
class FakeKeyboard final : public KeyboardFocus {
  public:
    explicit FakeKeyboard(MemoryEventMonitors& monitors) : monitors_(monitors) {}

    Token take(const Rect& /*panelFrame*/, Receiver receiver) override {
        receiver_ = std::make_shared<Receiver>(std::move(receiver));
        return Token([this] { receiver_.reset(); });
    }

    void press(const TypedKey& key) {
        const auto receiver = receiver_;
        if (monitors_.type(key.event) == KeyVerdict::notUsed && receiver) {
            receiver->key(key);
        }
        if (const auto current = receiver_) {
            auto released = key;
            released.transition = KeyTransition::released;
            current->key(released);
        }
    }

  private:
    MemoryEventMonitors& monitors_;
    std::shared_ptr<Receiver> receiver_;
};

/// One application for all tests of this program.
class Toolkit : public testing::Environment {
  public:
    void SetUp() override {
        // The screen that the desktop in memory has.
        if (!screens_.open()) {
            throw std::runtime_error("no temporary file");
        }
        screens_.write(R"({"synchronousWindowSystemEvents": true, "windowFrameMargins": false,
            "screens": [{"name": "One", "x": 0, "y": 0, "width": 1920, "height": 1080,
                         "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
        screens_.close();
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens_.fileName().toUtf8());
        static int count = 1;
        static char name[] = "menu_view_test";
        static char* arguments[] = {name, nullptr};
        application_ = std::make_unique<QApplication>(count, arguments);
    }
    void TearDown() override { application_.reset(); }

  private:
    QTemporaryFile screens_;
    std::unique_ptr<QApplication> application_;
};
inline const auto* const toolkit = testing::AddGlobalTestEnvironment(new Toolkit);

class MenuViewTest : public EngineTest {
  protected:
    MenuViewTest() {
        defaults_.setDouble(preference::gap, 0);
        defaults_.setDouble(preference::padding, 0);
        QCursor::setPos(1, 1);
        item.setFrame(Rect{900, 1056, 20, 24});
        window_ = openFocused({100, 100, 800, 600});
    }
    void TearDown() override {
        menu.close();
        settle();
    }

    static void settle() {
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void openMenu() {
        menu.close();
        settle();
        menu.show();
        settle();
    }
    MenuView& view() const {
        for (auto* const widget : QApplication::topLevelWidgets()) {
            auto* const found = dynamic_cast<MenuView*>(widget);
            if (found != nullptr && found->isVisible()) {
                return *found;
            }
        }
        throw std::runtime_error("the panel is not shown");
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
        keyboard.press(typed);
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

    Element window_;
    MemoryStatusItem item;
    MemoryUpdater updater;
    MemoryOwnApplication application;
    MemoryBeep beep;
    MemoryCompositing compositing;
    ManualRunLoop loop;
    NotificationCenter notifications;
    ArrangementStore store{defaults_, notifications};
    FakeKeyboard keyboard{desktop_.eventMonitors()};
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
