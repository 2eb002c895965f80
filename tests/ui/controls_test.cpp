// The toggle and the slider: by pointer, by keyboard and by assistive technology.
#include "ui/focus_ring.h"
#include "ui/palette.h"
#include "ui/pill_slider.h"
#include "ui/pill_toggle.h"
#include "ui_fixture.h"

#include <QAccessible>
#include <QTest>
#include <limits>
#include <vector>

namespace tessellon {
namespace {

constexpr double knob = 22;

class Controls : public UiTest {
  protected:
    /// A slider whose knob has `usable` pixels to move on; what it writes is in `written`.
    PillSlider& slider(PillSlider::Range range, double step, int usable = 100) {
        slider_ = std::make_unique<PillSlider>("Size", range, step, palette::teal);
        slider_->resize(usable + static_cast<int>(knob), static_cast<int>(knob));
        written.clear();
        token_ =
            slider_->valueChanged().subscribe([this](double value) { written.push_back(value); });
        return *slider_;
    }

    std::vector<double> written;

  private:
    std::unique_ptr<PillSlider> slider_;
    Token token_;
};

void press(QWidget& widget, int x) {
    QTest::mousePress(&widget, Qt::LeftButton, {}, QPoint(x, 11));
}

TEST_F(Controls, ToggleFlipsByClickAnywhereAndBySpace) {
    PillToggle toggle("Pause");
    EXPECT_EQ(toggle.size(), QSize(40, 24));
    for (const QPoint& corner : {QPoint(0, 0), QPoint(39, 23)}) {
        const bool before = toggle.isChecked();
        QTest::mouseClick(&toggle, Qt::LeftButton, {}, corner);
        EXPECT_NE(toggle.isChecked(), before);
    }
    QTest::keyClick(&toggle, Qt::Key_Space);
    EXPECT_TRUE(toggle.isChecked());
    toggle.setEnabled(false);
    QTest::mouseClick(&toggle, Qt::LeftButton);
    EXPECT_TRUE(toggle.isChecked());
}

TEST_F(Controls, ToggleShowsItsStateByColorAndByTheEndOfItsKnob) {
    PillToggle toggle("Pause");
    const auto knobAt = [](const QImage& image, double x) {
        return shows(image, x, 12, palette::white) && shows(image, x, 5, palette::white) &&
               shows(image, x, 18, palette::white);
    };
    QImage image = drawn(toggle);
    EXPECT_TRUE(knobAt(image, 12));
    EXPECT_TRUE(shows(image, 28, 12, palette::line));
    EXPECT_TRUE(shows(image, 20, 0, palette::ink));
    toggle.setChecked(true);
    image = drawn(toggle);
    EXPECT_TRUE(knobAt(image, 28));
    EXPECT_TRUE(shows(image, 12, 12, palette::teal));
    toggle.setLayoutDirection(Qt::RightToLeft);
    image = drawn(toggle);
    EXPECT_TRUE(knobAt(image, 12));
    EXPECT_TRUE(shows(image, 28, 12, palette::teal));
    toggle.setEnabled(false);
    EXPECT_LT(drawn(toggle).pixelColor(28, 12).alpha(), 140);
}

TEST_F(Controls, DraggingTheSliderWritesMultiplesOfTheStep) {
    PillSlider& size = slider({30, 80}, 5);
    press(size, 11 + 43);
    EXPECT_EQ(written, std::vector<double>{50});
    QTest::mouseMove(&size, QPoint(500, 11));
    EXPECT_EQ(written.back(), 80);
    QTest::mouseMove(&size, QPoint(-500, 11));
    EXPECT_EQ(written.back(), 30);
    QTest::mouseRelease(&size, Qt::LeftButton, {}, QPoint(-500, 11));
    const auto count = written.size();
    QTest::mouseMove(&size, QPoint(60, 11));
    QTest::mousePress(&size, Qt::RightButton, {}, QPoint(60, 11));
    EXPECT_EQ(written.size(), count) << "moved without a drag";

    PillSlider& whole = slider({2, 8}, 1, 137);
    press(whole, 0);
    for (int x = 0; x < 160; ++x) {
        QTest::mouseMove(&whole, QPoint(x, 11));
        EXPECT_EQ(whole.value(), std::round(whole.value()));
    }
    EXPECT_EQ(written, (std::vector<double>{3, 4, 5, 6, 7, 8}));
}

TEST_F(Controls, HalvesRoundAwayFromZero) {
    PillSlider& around = slider({-10, 10}, 5);
    around.choose(2.5);
    around.choose(-2.5);
    EXPECT_EQ(written, (std::vector<double>{5, -5}));
}

TEST_F(Controls, SliderWithoutRangeOrRoomStaysWhole) {
    PillSlider& flat = slider({7, 7}, 5);
    EXPECT_TRUE(shows(drawn(flat), 11, 11, palette::white));
    press(flat, 90);
    EXPECT_EQ(written, std::vector<double>{5}) << "the lower end rounded to the step";
    EXPECT_TRUE(shows(drawn(flat), 11, 11, palette::white));

    PillSlider& narrow = slider({0, 10}, 1, 1);
    press(narrow, 12);
    EXPECT_EQ(written, std::vector<double>{10});
    PillSlider& thin = slider({0, 10}, 1, -4);
    press(thin, 0);
    EXPECT_TRUE(written.empty());
    drawn(thin);

    PillSlider& odd = slider({0, 10}, 0);
    odd.setValue(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(shows(drawn(odd), 11, 11, palette::white));
    press(odd, 11 + 33);
    EXPECT_NEAR(odd.value(), 3.3, 1e-9);
}

TEST_F(Controls, SliderIsFilledFromItsStartToTheKnob) {
    PillSlider& size = slider({0, 100}, 1);
    size.setValue(40);
    EXPECT_TRUE(written.empty()) << "only the user writes";
    QImage image = drawn(size);
    EXPECT_TRUE(shows(image, 40 + 11, 3, palette::white));
    EXPECT_TRUE(shows(image, 40 + 11, 18, palette::white));
    EXPECT_TRUE(shows(image, 20, 11, palette::teal));
    EXPECT_TRUE(shows(image, 100, 11, palette::line));
    EXPECT_EQ(image.pixelColor(100, 6).alpha(), 0) << "the track is 8 pixels high";
    EXPECT_TRUE(shows(image, 100, 7, palette::ink));
    size.setLayoutDirection(Qt::RightToLeft);
    image = drawn(size);
    EXPECT_TRUE(shows(image, 60 + 11, 3, palette::white));
    EXPECT_TRUE(shows(image, 100, 11, palette::teal));
    press(size, 11);
    EXPECT_EQ(written, std::vector<double>{100});
    size.setEnabled(false);
    EXPECT_LT(drawn(size).pixelColor(40, 11).alpha(), 140);
}

TEST_F(Controls, KeysMoveTheSliderByStepPageAndEnd) {
    PillSlider& size = slider({0, 80}, 5);
    for (const auto& [key, value] : std::vector<std::pair<Qt::Key, double>>{
             {Qt::Key_Right, 5},
             {Qt::Key_Up, 10},
             {Qt::Key_Left, 5},
             {Qt::Key_PageUp, 25},
             {Qt::Key_PageDown, 5},
             {Qt::Key_End, 80},
             {Qt::Key_Right, 80},
             {Qt::Key_Down, 75},
             {Qt::Key_Home, 0},
             {Qt::Key_Left, 0},
         }) {
        QTest::keyClick(&size, key);
        EXPECT_EQ(size.value(), value) << key;
    }
    EXPECT_EQ(written.size(), 8U) << "an unchanged value is not written";
    size.setLayoutDirection(Qt::RightToLeft);
    QTest::keyClick(&size, Qt::Key_Left);
    EXPECT_EQ(size.value(), 5);
}

TEST_F(Controls, AssistiveTechnologySeesAndSetsThem) {
    PillToggle toggle("Pause snapping");
    QAccessibleInterface* check = QAccessible::queryAccessibleInterface(&toggle);
    ASSERT_NE(check, nullptr);
    EXPECT_EQ(check->role(), QAccessible::CheckBox);
    EXPECT_EQ(check->text(QAccessible::Name), "Pause snapping");
    EXPECT_FALSE(check->state().checked);
    check->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(toggle.isChecked());
    EXPECT_TRUE(check->state().checked);

    PillSlider& size = slider({30, 80}, 5);
    QAccessibleInterface* value = QAccessible::queryAccessibleInterface(&size);
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->role(), QAccessible::Slider);
    EXPECT_EQ(value->text(QAccessible::Name), "Size");
    ASSERT_NE(value->valueInterface(), nullptr);
    EXPECT_EQ(value->valueInterface()->minimumValue().toDouble(), 30);
    EXPECT_EQ(value->valueInterface()->maximumValue().toDouble(), 80);
    EXPECT_EQ(value->valueInterface()->minimumStepSize().toDouble(), 5);
    value->valueInterface()->setCurrentValue(51.5);
    EXPECT_EQ(value->valueInterface()->currentValue().toDouble(), 50);
    value->valueInterface()->setCurrentValue("much");
    value->valueInterface()->setCurrentValue(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(written, std::vector<double>{50});
}

TEST_F(Controls, TheFocusRingFollowsTheKeyboard) {
    QWidget page;
    page.setStyleSheet("background: white");
    page.resize(200, 80);
    PillToggle first("First", &page);
    PillToggle second("Second", &page);
    first.move(20, 20);
    second.move(100, 20);
    page.show();
    page.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&page));
    const auto ringed = [&](const PillToggle& toggle) {
        const QPoint above(toggle.x() + toggle.width() / 2, toggle.y() - FocusRing::reach);
        return shows(page.grab().toImage(), above.x(), above.y(), palette::ink);
    };
    first.setFocus(Qt::OtherFocusReason);
    QTest::keyClick(&page, Qt::Key_Tab);
    ASSERT_TRUE(second.hasFocus());
    EXPECT_TRUE(ringed(second));
    EXPECT_FALSE(ringed(first));
    EXPECT_TRUE(shows(page.grab().toImage(), 100 + 12, 20 + 12, palette::white));
    EXPECT_TRUE(shows(page.grab().toImage(), 100 + 28, 20 + 12, palette::line))
        << "the ring hides its control";
    second.move(100, 40);
    EXPECT_TRUE(ringed(second)) << "the ring stays with its control";

    QTest::mouseClick(&first, Qt::LeftButton);
    ASSERT_TRUE(first.hasFocus());
    EXPECT_FALSE(ringed(first)) << "a click needs no ring";
    EXPECT_FALSE(ringed(second));
    QTest::keyClick(&first, Qt::Key_Space);
    EXPECT_TRUE(ringed(first));
    first.hide();
    EXPECT_FALSE(ringed(first));
}

}  // namespace
}  // namespace tessellon
