// The program itself on the toolkit: its key window, what a grab of the keyboard means to it, and
// its end.
#include "platform/memory/memory_compositing.h"
#include "platform/qt/panel_window.h"
#include "platform/qt/qt_own_application.h"
#include "ui/ui_fixture.h"

#include <QAbstractEventDispatcher>
#include <QTest>
#include <QWidget>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace tessellon {
namespace {

class OwnApplicationTest : public UiTest {
  protected:
    static void activate(QWidget& window) {
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    using Event = std::array<std::uint8_t, 80>;

    /// Whether an event of the X server is kept from the toolkit.
    static bool isKept(Event event) {
        qintptr result = 0;
        return QAbstractEventDispatcher::instance()->filterNativeEvent("xcb_generic_event_t",
                                                                       event.data(), &result);
    }
    static bool isKept(std::uint8_t type, std::uint8_t mode) {
        Event event{};
        event[0] = type;
        event[8] = mode;
        return isKept(event);
    }
    /// The same for one of the pointer, by the core protocol and by the extension for input.
    static bool isKeptFrom(const QWidget& window, std::uint8_t type) {
        const auto id = static_cast<std::uint32_t>(window.internalWinId());
        Event core{};
        core[0] = type;
        std::memcpy(&core[12], &id, sizeof id);
        Event extended{};
        extended[0] = 35;
        extended[8] = type;
        std::memcpy(&extended[24], &id, sizeof id);
        EXPECT_EQ(isKept(core), isKept(extended));
        return isKept(core);
    }

    QtRunLoop loop;
};

TEST_F(OwnApplicationTest, TheKeyWindowIsTheActiveOneThatIsNoPanel) {
    const QtOwnApplication application(loop);
    EXPECT_EQ(application.keyWindowFrame(), std::nullopt);
    QWidget window;
    window.setGeometry(100, 120, 400, 300);
    activate(window);
    const QRect outer = window.frameGeometry();
    const double height = QGuiApplication::primaryScreen()->geometry().height();
    EXPECT_EQ(application.keyWindowFrame(),
              (Rect{double(outer.x()), height - outer.y() - outer.height(), double(outer.width()),
                    double(outer.height())}));

    MemoryCompositing compositing;
    PanelWindow panel(PanelLevel::modal, PanelInput::takesClicks, compositing);
    panel.setScreenFrame({10, 10, 100, 100});
    activate(panel);
    EXPECT_EQ(application.keyWindowFrame(), std::nullopt);
    activate(window);
    EXPECT_NE(application.keyWindowFrame(), std::nullopt);
    window.hide();
    panel.hide();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !application.keyWindowFrame(); }));
}

TEST_F(OwnApplicationTest, AGrabOfTheKeyboardMovesNoFocus) {
    constexpr std::uint8_t keyPress = 2;
    constexpr std::uint8_t focusIn = 9;
    constexpr std::uint8_t focusOut = 10;
    constexpr std::uint8_t normal = 0;
    constexpr std::uint8_t grab = 1;
    constexpr std::uint8_t ungrab = 2;
    constexpr std::uint8_t whileGrabbed = 3;
    {
        const QtOwnApplication application(loop);
        EXPECT_TRUE(isKept(focusOut, grab));
        EXPECT_TRUE(isKept(focusIn, ungrab));
        for (const auto mode : {normal, whileGrabbed}) {
            EXPECT_FALSE(isKept(focusOut, mode));
            EXPECT_FALSE(isKept(focusIn, mode));
        }
        EXPECT_FALSE(isKept(keyPress, grab));
    }
    EXPECT_FALSE(isKept(focusOut, grab)) << "it is gone";
}

TEST_F(OwnApplicationTest, AHiddenWindowIsNotPressed) {
    constexpr std::uint8_t press = 4;
    constexpr std::uint8_t release = 5;
    constexpr std::uint8_t motion = 6;
    const QtOwnApplication application(loop);
    QWidget window;
    activate(window);
    for (const auto type : {press, release, motion}) {
        EXPECT_FALSE(isKeptFrom(window, type));
    }
    window.hide();
    EXPECT_TRUE(isKeptFrom(window, press));
    EXPECT_TRUE(isKeptFrom(window, motion));
    EXPECT_FALSE(isKeptFrom(window, release)) << "the toolkit would think that it is still held";
}

TEST_F(OwnApplicationTest, TheEndComesAfterTheTurn) {
    QtOwnApplication application(loop);
    application.terminate();  // before the loop runs
    EXPECT_EQ(loop.run(), EXIT_SUCCESS);

    bool turnEnded = false;
    const auto turn = loop.after(Seconds{0}, [&] {
        application.terminate();
        application.terminate();
        turnEnded = true;
    });
    EXPECT_EQ(loop.run(), EXIT_SUCCESS);
    EXPECT_TRUE(turnEnded);
}

}  // namespace
}  // namespace tessellon
