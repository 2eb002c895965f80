// The control that records a shortcut, as it is drawn, clicked and typed into; on Qt's platform
// without a display.
#include "shortcuts/shortcut_recorder_view.h"

#include "platform/key_event.h"
#include "shortcuts/recorder_fixture.h"
#include "ui/chip.h"
#include "ui/fonts.h"
#include "ui/key_chips.h"
#include "ui/palette.h"
#include "ui/ui_fixture.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QTest>
#include <QVBoxLayout>
#include <memory>

namespace tessellon {
namespace {

constexpr std::uint32_t h = 4;
constexpr double size = 24;

class ShortcutRecorderTest : public RecorderFixture {
  protected:
    /// A control in a window that is active.
    ShortcutRecorder& control(const HotkeyTarget& target) {
        auto* const made = new ShortcutRecorder(*recorder, target, size);
        rows->addWidget(made);
        if (!page.isVisible()) {
            page.show();
            page.activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(&page));
        }
        settle();
        return *made;
    }
    static void settle() { QApplication::processEvents(); }

    static void click(QWidget& widget) {
        QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(12, widget.height() / 2));
        settle();
    }

    static Chip* shownChip(const ShortcutRecorder& widget) {
        auto* const chip = dynamic_cast<Chip*>(widget.findChild<QLabel*>());
        return chip != nullptr && !chip->isHidden() ? chip : nullptr;
    }

    static int widthOf(const QString& text) {
        return static_cast<int>(
            std::ceil(textWidth(interfaceFont(11.5, QFont::DemiBold), text) + 20));
    }

    /// How often the control is painted.
    class PaintCounter : public QObject {
      public:
        bool eventFilter(QObject* /*watched*/, QEvent* event) override {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
        int count = 0;
    };

    QApplication& toolkit = testApplication();
    QWidget page;
    QVBoxLayout* rows = new QVBoxLayout(&page);
};

TEST_F(ShortcutRecorderTest, ShowsKeysThenTheRequestThenRecord) {
    auto& view = control(left);
    const QStringList keys{"⌃", "⌥", "←"};
    EXPECT_EQ(QSizeF(view.size()), keyChipsSize(keys, size));
    const QImage expected = painted(view.size(), [&](QPainter& painter) {
        paintKeyChips(painter, {0, 0}, keys, size);
    });
    EXPECT_EQ(drawn(view), expected);
    EXPECT_EQ(view.toolTip(), "Click to change");

    click(view);
    EXPECT_TRUE(isRecording(left));
    EXPECT_EQ(view.size(), QSize(widthOf("Press new keys…"), 24));
    EXPECT_EQ(view.toolTip(), "Esc cancels · ⌫ clears");
    QImage image = drawn(view);
    EXPECT_TRUE(shows(image, 6, 12, palette::amber));
    EXPECT_TRUE(shows(image, view.width() / 2.0, 1, palette::amber)) << "no outline";
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << "round ends";

    type(virtual_key::deleteBackward);
    settle();
    EXPECT_EQ(view.size(), QSize(widthOf("Record"), 24));
    EXPECT_EQ(view.toolTip(), "Click to change");
    image = drawn(view);
    EXPECT_EQ(image.pixelColor(6, 12).alpha(), 0) << "nothing but outline and text";
    int on = 0;
    int changes = 0;
    bool wasOn = false;
    for (int x = 12; x < view.width() - 12; ++x) {
        const bool isOn = image.pixelColor(x, 0).alpha() > 127;
        on += isOn ? 1 : 0;
        changes += isOn != wasOn ? 1 : 0;
        wasOn = isOn;
    }
    const int length = view.width() - 24;
    EXPECT_NEAR(on, length * 3.0 / 5, 3);
    EXPECT_NEAR(changes, length * 2.0 / 5, 3);
}

TEST_F(ShortcutRecorderTest, OneControlRecordsAtATime) {
    auto& first = control(left);
    auto& second = control(right);
    click(first);
    click(second);
    EXPECT_TRUE(isRecording(right));
    EXPECT_EQ(first.toolTip(), "Click to change");
    click(second);
    EXPECT_TRUE(isIdle());

    click(second);
    type(virtual_key::leftArrow, controlOption);
    settle();
    EXPECT_EQ(first.width(), widthOf("Record")) << "moved to the other one";
    EXPECT_EQ(second.width(), 3 * 24 + 2 * 4);
}

TEST_F(ShortcutRecorderTest, ATakenShortcutHasAChipThatIsNoButton) {
    center.holdByOthers(h, controlOptionKeys);
    auto& view = control(left);
    EXPECT_EQ(shownChip(view), nullptr);
    click(view);
    type(h, controlOption, "h");
    settle();
    auto* const chip = shownChip(view);
    ASSERT_NE(chip, nullptr);
    EXPECT_EQ(chip->text(), "Taken");
    EXPECT_EQ(chip->toolTip(), "Another app already uses this shortcut.");
    EXPECT_EQ(chip->x(), 3 * 24 + 2 * 4 + 6);
    EXPECT_LE(std::abs(chip->geometry().center().y() - view.rect().center().y()), 1);
    EXPECT_EQ(view.width(), chip->geometry().right() + 1);
    const QImage expected = painted(chip->size(), [](QPainter& painter) {
        paintChip(painter, {0, 0}, "Taken", palette::coral);
    });
    EXPECT_EQ(drawn(*chip), expected);

    QTest::mouseClick(chip, Qt::LeftButton);
    QTest::mouseClick(&view, Qt::LeftButton, {}, QPoint(chip->x() - 2, 12));
    EXPECT_TRUE(isIdle());
    click(view);
    EXPECT_TRUE(isRecording(left));
    EXPECT_EQ(shownChip(view), nullptr);
    click(view);
    EXPECT_NE(shownChip(view), nullptr);
    center.releaseByOthers(h, controlOptionKeys);
    hotkeys.registerHotkeys();
    EXPECT_EQ(shownChip(view), nullptr);

    view.setLayoutDirection(Qt::RightToLeft);
    center.holdByOthers(h, controlOptionKeys);
    hotkeys.registerHotkeys();
    settle();
    ASSERT_NE(shownChip(view), nullptr);
    EXPECT_EQ(shownChip(view)->x(), 0);
    EXPECT_EQ(view.buttonRect().right(), view.width());
}

TEST_F(ShortcutRecorderTest, TellsWhichOtherTargetHasTheKeys) {
    const auto first = addArrangementNamed("<b>Desk</b>", KeyCombo{8, controlOption, "C"});
    hotkeys.registerHotkeys();
    auto& view = control(first);
    ASSERT_NE(shownChip(view), nullptr);
    EXPECT_EQ(shownChip(view)->toolTip(), "Center uses this shortcut.");
    EXPECT_EQ(view.accessibleDescription(), "Center uses this shortcut. Click to change");
    // Now neither has them.
    center.holdByOthers(8, controlOptionKeys);
    hotkeys.registerHotkeys();
    EXPECT_EQ(shownChip(view)->toolTip(), "Another app already uses this shortcut.");

    bindings.setCombo(KeyCombo{h, controlOption, "h"}, first);
    const auto second = addArrangementNamed("Home", KeyCombo{h, controlOption, "h"});
    hotkeys.registerHotkeys();
    EXPECT_EQ(shownChip(view), nullptr);
    auto& other = control(second);
    ASSERT_NE(shownChip(other), nullptr);
    EXPECT_EQ(shownChip(other)->toolTip(), "<p>&lt;b&gt;Desk&lt;/b&gt; uses this shortcut.</p>");
}

TEST_F(ShortcutRecorderTest, SpaceStartsItAndIsOneOfTheKeysThen) {
    auto& first = control(left);
    auto& second = control(right);
    first.setFocus();
    QTest::keyClick(&page, Qt::Key_Tab);
    EXPECT_TRUE(second.hasFocus());
    QTest::keyClick(&second, Qt::Key_Space);
    EXPECT_TRUE(isRecording(right));
    for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Tab}) {
        QTest::keyClick(&second, key);
        EXPECT_TRUE(isRecording(right)) << key;
        EXPECT_TRUE(second.hasFocus());
    }
    type(49, controlOption, " ");
    EXPECT_EQ(shortcut(SnapAction::rightHalf), "⌃⌥Space");
}

TEST_F(ShortcutRecorderTest, ItGoesOnWithTheNextControlForTheTarget) {
    auto& view = control(left);
    click(view);
    view.hide();
    delete &view;
    EXPECT_TRUE(isRecording(left));
    auto& next = control(left);
    EXPECT_EQ(next.toolTip(), "Esc cancels · ⌫ clears");
    click(next);
    EXPECT_TRUE(isIdle());
}

TEST_F(ShortcutRecorderTest, AssistiveTechnologyHearsTheTargetAndItsKeys) {
    center.holdByOthers(h, controlOptionKeys);
    auto& view = control(left);
    auto* const button = QAccessible::queryAccessibleInterface(&view);
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->role(), QAccessible::Button);
    EXPECT_EQ(button->text(QAccessible::Name), "Left half, Control Alt Left Arrow");
    EXPECT_EQ(button->text(QAccessible::Description), "Click to change");
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([&] { return isRecording(left); })) << "it is held for a moment";
    EXPECT_EQ(button->text(QAccessible::Name), "Left half, Press new keys…");
    type(virtual_key::deleteForward);
    EXPECT_EQ(button->text(QAccessible::Name), "Left half, no shortcut");
    view.click();
    type(h, controlOption, "h");
    EXPECT_EQ(button->text(QAccessible::Description),
              "Another app already uses this shortcut. Click to change");
}

TEST_F(ShortcutRecorderTest, OnlyWhatChangesIsPaintedAnew) {
    auto& view = control(left);
    auto& other = control(right);
    settle();
    PaintCounter paints;
    other.installEventFilter(&paints);
    // A change of the size would move the row below.
    hotkeys.registerHotkeys();
    settle();
    EXPECT_EQ(paints.count, 0);
    view.click();
    type(h, 0, "h");
    type(h, controlOption, "h");
    settle();
    EXPECT_EQ(paints.count, 0);
    other.click();
    settle();
    EXPECT_EQ(paints.count, 1);
}

}  // namespace
}  // namespace tessellon
