// Push buttons, labels and fields: their measures, and what assistive technology reads.
#include "ui/palette.h"
#include "ui/pill_button.h"
#include "ui/text_field.h"
#include "ui/text_label.h"
#include "ui_fixture.h"

#include <QAccessible>
#include <QTest>
#include <QVBoxLayout>

namespace tessellon {
namespace {

using TextAndButtons = UiTest;

/// The columns of the picture that show ink, of `height` rows around its middle.
std::pair<int, int> inkRange(const QImage& image) {
    std::pair range{image.width(), -1};
    for (int x = 8; x < image.width() - 8; ++x) {
        for (int y = 6; y < image.height() - 6; ++y) {
            if (image.pixelColor(x, y).lightness() < 90 && image.pixelColor(x, y).alpha() > 200) {
                range = {std::min(range.first, x), std::max(range.second, x)};
            }
        }
    }
    return range;
}

TEST_F(TextAndButtons, AButtonMakesRoomForItsSymbolOnEitherSide) {
    for (const auto size : {PillButtonSize::regular, PillButtonSize::small}) {
        PillButton button("Reset to defaults", PillButtonStyle::quiet, size);
        EXPECT_EQ(button.sizeHint().height(), size == PillButtonSize::small ? 26 : 34);
        const int bare = button.sizeHint().width();
        for (const auto side : {SymbolSide::leading, SymbolSide::trailing}) {
            for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
                button.setSymbol(Symbol::eye, side);
                button.setLayoutDirection(direction);
                EXPECT_GT(button.sizeHint().width(), bare + 12);
                button.resize(button.sizeHint());
                const auto [first, last] = inkRange(drawn(button));
                EXPECT_NEAR(first, button.width() - 1 - last, 3) << "is not in the middle";
            }
        }
    }
}

TEST_F(TextAndButtons, PlainButtonsAreTheirTextAndDarkenBelowThePointer) {
    PillButton button("Skip", PillButtonStyle::plain, PillButtonSize::small);
    button.resize(button.sizeHint());
    const auto darkest = [&] {
        int least = 255;
        const QImage image = drawn(button);
        EXPECT_EQ(image.pixelColor(image.width() / 2, 0).alpha(), 0) << "has an outline";
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, image.height() / 2);
            least = pixel.alpha() > 250 ? std::min(least, pixel.lightness()) : least;
        }
        return least;
    };
    EXPECT_NEAR(darkest(), palette::muted.lightness(), 3);
    button.setDown(true);
    EXPECT_NEAR(darkest(), palette::ink.lightness(), 3);
}

TEST_F(TextAndButtons, ADisabledPrimaryButtonIsHalfThere) {
    PillButton button("Continue", PillButtonStyle::primary);
    button.resize(button.sizeHint());
    EXPECT_TRUE(shows(drawn(button), 12, 17, palette::amber));
    button.setEnabled(false);
    EXPECT_NEAR(drawn(button).pixelColor(12, 17).alphaF(), 0.5, 0.01);
}

TEST_F(TextAndButtons, ALabelKeepsAllItsLinesWhereItIsNarrow) {
    QWidget page;
    auto* const column = new QVBoxLayout(&page);
    auto* const label = new TextLabel(
        "A soft teal outline shows where the window will land, in lines enough for all of it.",
        12.5, QFont::Medium, palette::muted);
    label->setFixedWidth(150);
    column->addWidget(label);
    page.resize(600, page.heightForWidth(600));
    column->activate();
    EXPECT_GE(label->height(), label->heightForWidth(150));

    TextLabel odd("<b>Files</b> & more", 13, QFont::Bold, palette::ink, TextWrap::none);
    const auto* const read = QAccessible::queryAccessibleInterface(&odd);
    EXPECT_EQ(read->text(QAccessible::Name), "<b>Files</b> & more");
    EXPECT_EQ(read->role(), QAccessible::StaticText);
    EXPECT_GE(odd.sizeHint().width(), QFontMetrics(odd.font()).horizontalAdvance(odd.text()));
}

TEST_F(TextAndButtons, AFieldTellsWhatBelongsIntoIt) {
    TextField field("Name of the arrangement", "Untitled");
    auto* const read = QAccessible::queryAccessibleInterface(&field);
    EXPECT_EQ(read->role(), QAccessible::EditableText);
    EXPECT_EQ(read->text(QAccessible::Name), "Name of the arrangement");
    QTest::keyClicks(&field, "Work");
    EXPECT_EQ(read->text(QAccessible::Value), "Work");
    field.resize(field.sizeHint());
    const QImage image = drawn(field);
    EXPECT_TRUE(shows(image, 100, 0, palette::ink));
    EXPECT_TRUE(shows(image, 100, 5, palette::paper));
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << "has square corners";
}

}  // namespace
}  // namespace tessellon
