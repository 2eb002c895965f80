// The painted controls: measures, colours and shapes, probed pixel by pixel.
#include "ui/chip.h"
#include "ui/fonts.h"
#include "ui/glyph.h"
#include "ui/key_chips.h"
#include "ui/layer.h"
#include "ui/mini_screen.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/symbols.h"
#include "ui_fixture.h"

#include <QAccessible>
#include <QFontDatabase>
#include <QRawFont>
#include <algorithm>
#include <cstdlib>
#include <functional>
#include <set>

namespace tessellon {
namespace {

using Painting = UiTest;

QImage miniScreen(SnapAction action) {
    return painted({46, 30}, [&](QPainter& painter) {
        paintMiniScreen(painter, QRectF(0, 0, 46, 30), action);
    });
}

TEST_F(Painting, ThePaletteIsFixed) {
    EXPECT_EQ(palette::teal, QColor(34, 199, 184));
    EXPECT_EQ(palette::amber, QColor(255, 200, 61));
    EXPECT_EQ(palette::coral, QColor(255, 111, 94));
    EXPECT_EQ(palette::pink, QColor(255, 158, 196));
    EXPECT_EQ(palette::lavender, QColor(155, 140, 255));
    EXPECT_EQ(palette::ink, QColor(43, 29, 20));
    EXPECT_EQ(palette::muted, QColor(122, 103, 88));
    EXPECT_EQ(palette::line, QColor(235, 220, 198));
    EXPECT_EQ(palette::cream, QColor(255, 244, 226));
    EXPECT_EQ(palette::paper, QColor(255, 252, 247));
    EXPECT_EQ(palette::background, QColor(250, 235, 213));
}

TEST_F(Painting, EachSectionOfActionsHasItsColor) {
    EXPECT_EQ(palette::groupColor(SnapAction::bottomHalf), palette::teal);
    EXPECT_EQ(palette::groupColor(SnapAction::topRight), palette::amber);
    EXPECT_EQ(palette::groupColor(SnapAction::rightTwoThirds), palette::pink);
    EXPECT_EQ(palette::groupColor(SnapAction::previousDisplay), palette::lavender);
    const QColor half = palette::withOpacity(palette::withOpacity(palette::teal, 0.5), 0.5);
    EXPECT_NEAR(half.alphaF(), 0.25, 0.01);
    EXPECT_EQ(half.green(), 199);
}

TEST_F(Painting, MiniScreenPicturesWhatTheActionDoes) {
    for (const SnapAction action : allSnapActions) {
        if (const auto unit = unitRect(action)) {
            const QRectF zone = miniScreenZone(action).value_or(QRectF());
            EXPECT_EQ(zone, QRectF(unit->x, unit->y, unit->width, unit->height)) << title(action);
        }
    }
    EXPECT_EQ(miniScreenZone(SnapAction::almostMaximize), QRectF(0.12, 0.12, 0.76, 0.76));
    EXPECT_EQ(miniScreenZone(SnapAction::center), QRectF(0.3, 0.3, 0.4, 0.4));
    EXPECT_EQ(miniScreenZone(SnapAction::restore), QRectF(0.15, 0.35, 0.35, 0.35));
}

TEST_F(Painting, MiniScreenFillsTheZoneOfTheAction) {
    for (const SnapAction action : allSnapActions) {
        const auto zone = miniScreenZone(action);
        if (!zone) {
            continue;
        }
        const QImage image = miniScreen(action);
        const QColor color = palette::groupColor(action);
        const QRectF place(zone->x() * 46, zone->y() * 30, zone->width() * 46, zone->height() * 30);
        // Just inside the zone's outline on every side, and cream just outside it.
        const QPointF middle = place.center();
        EXPECT_TRUE(shows(image, middle.x(), middle.y(), color)) << title(action);
        EXPECT_TRUE(shows(image, place.left() + 3, middle.y(), color)) << title(action);
        EXPECT_TRUE(shows(image, place.right() - 3, middle.y(), color)) << title(action);
        EXPECT_TRUE(shows(image, middle.x(), place.top() + 3, color)) << title(action);
        EXPECT_TRUE(shows(image, middle.x(), place.bottom() - 3, color)) << title(action);
        if (place.left() > 4) {
            EXPECT_TRUE(shows(image, place.left() - 2, middle.y(), palette::cream))
                << title(action);
        }
        if (place.right() < 42) {
            EXPECT_TRUE(shows(image, place.right() + 1.5, middle.y(), palette::cream))
                << title(action);
        }
        // The outline of the picture lies wholly within its edge.
        EXPECT_TRUE(shows(image, 23, 0, palette::ink)) << title(action);
        EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << title(action);
    }
}

TEST_F(Painting, MiniScreenShowsAMoveTowardsTheFilledScreen) {
    EXPECT_FALSE(miniScreenZone(SnapAction::nextDisplay));
    const QImage next = miniScreen(SnapAction::nextDisplay);
    EXPECT_TRUE(shows(next, 5, 15, palette::cream));
    EXPECT_TRUE(shows(next, 40, 15, palette::lavender));
    EXPECT_GT(next.pixelColor(23, 15).alpha(), 150) << "no arrow between the screens";
    const QImage previous = miniScreen(SnapAction::previousDisplay);
    EXPECT_TRUE(shows(previous, 5, 15, palette::lavender));
    EXPECT_TRUE(shows(previous, 40, 15, palette::cream));
}

TEST_F(Painting, KeyCapsAreSquareForOneCharacterAndPaddedForMore) {
    const double gap = keyChipsSize({"A", "B"}, 20).width() - 2 * 20;
    EXPECT_GT(gap, 0);
    EXPECT_EQ(keyChipsSize({u"⌃"_qs, u"⌥"_qs, u"←"_qs}, 20), QSizeF(60 + 2 * gap, 20));
    const QString space = "Space";
    EXPECT_DOUBLE_EQ(keyChipsSize({space}, 20).width(),
                     textWidth(interfaceFont(11, QFont::DemiBold), space) + 2 * 6);
    // Two code units may be one character.
    EXPECT_EQ(keyChipsSize({QString::fromUtf8("𝔸")}, 20), QSizeF(20, 20));
    EXPECT_EQ(keyChipsSize({}, 20), QSizeF(0, 0));
    EXPECT_EQ(onePerCharacter(u"⌃⌥𝔸"_qs), QStringList({u"⌃"_qs, u"⌥"_qs, u"𝔸"_qs}));

    KeyChips chips({u"⌃"_qs, u"←"_qs}, 20);
    chips.resize(chips.sizeHint());
    const QImage image = drawn(chips);
    EXPECT_TRUE(shows(image, 10, 0, palette::ink));
    EXPECT_TRUE(shows(image, 3, 16, palette::paper));
    EXPECT_EQ(image.pixelColor(20, 10).alpha(), 0) << "the caps touch";
    EXPECT_TRUE(shows(image, 20 + gap, 10, palette::ink));
    auto* const spoken = QAccessible::queryAccessibleInterface(&chips);
    EXPECT_EQ(spoken->text(QAccessible::Name), "Control Left Arrow");
    EXPECT_EQ(spoken->role(), QAccessible::StaticText);
}

TEST_F(Painting, ChipPadsItsTextAndStartsWithItsDot) {
    const double text = textWidth(interfaceFont(11, QFont::DemiBold), "Beta");
    const QSizeF plain = chipSize("Beta");
    EXPECT_DOUBLE_EQ(plain.width(), text + 18);
    EXPECT_GE(plain.height(), lineHeight(interfaceFont(11, QFont::DemiBold)) + 6);
    EXPECT_DOUBLE_EQ(chipSize("Beta", ChipDot::leading).width(), plain.width() + 12);

    QWidget control;
    Chip chip("Beta", palette::coral, ChipDot::leading, &control);
    chip.resize(chip.sizeHint());
    const int middle = chip.height() / 2;
    QImage image = drawn(chip);
    EXPECT_TRUE(shows(image, 12, middle, palette::coral));
    EXPECT_NEAR(image.pixelColor(7, middle).alphaF(), 0.18, 0.02);
    EXPECT_TRUE(shows(image, chip.width() / 2.0, 0, palette::ink));
    control.setEnabled(false);
    image = drawn(chip);
    EXPECT_NEAR(image.pixelColor(12, middle).alphaF(), 0.45, 0.02) << "dimmed with its control";
    EXPECT_NEAR(image.pixelColor(7, middle).alphaF(), 0.18 * 0.45, 0.02);
    control.setEnabled(true);
    chip.setLayoutDirection(Qt::RightToLeft);
    image = drawn(chip);
    EXPECT_TRUE(shows(image, chip.width() - 14, middle, palette::coral));
    EXPECT_FALSE(shows(image, 12, middle, palette::coral));
}

TEST_F(Painting, GlyphShowsItsThreeColorsAtEverySize) {
    for (const int size : {16, 22, 64}) {
        Glyph glyph(size);
        glyph.resize(glyph.sizeHint());
        const QImage image = drawn(glyph);
        EXPECT_TRUE(shows(image, size * 0.23, size * 0.5, palette::teal)) << size;
        EXPECT_TRUE(shows(image, size * 0.77, size * 0.23, palette::amber)) << size;
        EXPECT_TRUE(shows(image, size * 0.77, size * 0.77, palette::coral)) << size;
        EXPECT_LT(image.pixelColor(0, 0).alpha(), 60) << size << ": no rounded corner";
    }
}

TEST_F(Painting, PicturesHaveNamesForAssistiveTechnology) {
    Glyph glyph(16);
    MiniScreen picture(SnapAction::leftTwoThirds, {46, 30});
    auto* const mark = QAccessible::queryAccessibleInterface(&glyph);
    auto* const screen = QAccessible::queryAccessibleInterface(&picture);
    EXPECT_EQ(mark->role(), QAccessible::Graphic);
    EXPECT_EQ(mark->text(QAccessible::Name), "Tessellon");
    EXPECT_EQ(screen->role(), QAccessible::Graphic);
    EXPECT_EQ(screen->text(QAccessible::Name), "Left Two Thirds");
}

TEST_F(Painting, ContinuousCornersMeetTheArcOnTheDiagonalAndStartBeforeIt) {
    const QRectF rect(0, 0, 200, 100);
    const double radius = 20;
    const QPainterPath smooth = continuousRoundedRect(rect, radius);
    QPainterPath round;
    round.addRoundedRect(rect, radius, radius);
    const double diagonal = radius * (1 - std::sqrt(0.5));
    EXPECT_TRUE(smooth.contains(QPointF(diagonal + 0.3, diagonal + 0.3)));
    EXPECT_FALSE(smooth.contains(QPointF(diagonal - 0.3, diagonal - 0.3)));
    // Beyond the arc's start the edge is already bent.
    EXPECT_TRUE(round.contains(QPointF(radius + 1, 0.05)));
    EXPECT_FALSE(smooth.contains(QPointF(radius + 1, 0.05)));
    EXPECT_TRUE(smooth.contains(QPointF(radius * 1.5 + 1, 0.05)));

    // With no room to bend it is the capsule.
    const QPainterPath full = continuousRoundedRect(rect, 500);
    const QPainterPath ends = capsule(rect);
    for (int y = 2; y < 100; y += 7) {
        for (int x = 1; x < 50; x += 3) {
            const QPointF point(x, y);
            const double edge = std::abs(std::hypot(50 - x, 50 - y) - 50);
            EXPECT_TRUE(edge < 0.2 || full.contains(point) == ends.contains(point))
                << x << "," << y;
        }
    }
    EXPECT_TRUE(continuousRoundedRect(rect, 0).contains(QPointF(0.1, 0.1)));
}

TEST_F(Painting, BordersStayInsideTheEdge) {
    const QImage image = painted({40, 40}, [](QPainter& painter) {
        paintRoundedRect(painter, QRectF(10, 10, 20, 20), 5, palette::cream, {palette::ink, 2});
    });
    EXPECT_EQ(image.pixelColor(20, 9).alpha(), 0);
    EXPECT_TRUE(shows(image, 20, 10, palette::ink));
    EXPECT_TRUE(shows(image, 20, 11, palette::ink));
    EXPECT_TRUE(shows(image, 20, 12, palette::cream));
}

/// The largest difference of a channel between two pictures of the same shape, as they are seen on
/// white.
int largestDifference(const QImage& one, const QImage& other) {
    int largest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            largest = std::max({largest, std::abs(qAlpha(a) - qAlpha(b)),
                                std::abs(qRed(a) * qAlpha(a) - qRed(b) * qAlpha(b)) / 255,
                                std::abs(qGreen(a) * qAlpha(a) - qGreen(b) * qAlpha(b)) / 255,
                                std::abs(qBlue(a) * qAlpha(a) - qBlue(b) * qAlpha(b)) / 255});
        }
    }
    return largest;
}

TEST_F(Painting, AShapeThatIsSetLooksLikeOneThatIsBlended) {
    const QColor fill = palette::withOpacity(palette::teal, 0.3);
    for (const double ratio : {1.0, 1.5, 2.0}) {
        for (const double width : {0.0, 1.0, 1.4, 2.0}) {
            // The last one is all corners.
            for (const QRectF& rect :
                 {QRectF(2, 4, 120, 60), QRectF(0, 0, 44, 100), QRectF(10, 10, 40, 30)}) {
                const Border border{palette::withOpacity(palette::ink, 0.8), width};
                const auto draw = [&](const std::function<void(QPainter&)>& paint) {
                    QImage image(QSize(130, 110) * ratio, QImage::Format_ARGB32_Premultiplied);
                    image.setDevicePixelRatio(ratio);
                    image.fill(Qt::transparent);
                    QPainter painter(&image);
                    paint(painter);
                    return image;
                };
                const QImage set = draw(
                    [&](QPainter& painter) { setRoundedRect(painter, rect, 14, fill, border); });
                const QImage blended = draw([&](QPainter& painter) {
                    paintRoundedRect(painter, rect, 14, fill);
                    strokeBorder(painter, rect, 14, border);
                });
                EXPECT_LE(largestDifference(set, blended), 3)
                    << ratio << ' ' << width << ' ' << rect.width();
            }
        }
    }
}

TEST_F(Painting, ALayerIsDimmedAsAWhole) {
    const QImage image = painted({40, 20}, [](QPainter& painter) {
        painter.scale(2, 2);
        paintLayer(painter, {20, 10}, 0.5, [](QPainter& layer) {
            layer.fillRect(0, 0, 20, 10, Qt::red);
            layer.fillRect(0, 0, 20, 10, Qt::blue);
        });
    });
    EXPECT_NEAR(image.pixelColor(38, 18).alpha(), 128, 2);
    EXPECT_EQ(image.pixelColor(38, 18).red(), 0);
}

TEST_F(Painting, SymbolsStayWithinTheirPlaceAndTakeTheColor) {
    std::set<QByteArray> pictures;
    constexpr int last = static_cast<int>(Symbol::battery75);
    for (int index = 0; index <= last; ++index) {
        SCOPED_TRACE(index);
        const auto symbol = static_cast<Symbol>(index);
        EXPECT_TRUE(QRectF(1, 1, 22, 22).contains(symbolPath(symbol).boundingRect()));
        const QImage image = painted({30, 30}, [&](QPainter& painter) {
            drawSymbol(painter, symbol, QRectF(5, 5, 20, 20), palette::coral);
        });
        int inside = 0;
        for (int y = 0; y < 30; ++y) {
            for (int x = 0; x < 30; ++x) {
                const int alpha = image.pixelColor(x, y).alpha();
                inside += alpha > 127 ? 1 : 0;
                EXPECT_TRUE(alpha == 0 || QRect(5, 5, 20, 20).contains(x, y));
                EXPECT_TRUE(alpha < 255 || shows(image, x, y, palette::coral));
            }
        }
        EXPECT_GT(inside, 15);
        const auto* const bytes = reinterpret_cast<const char*>(image.constBits());
        EXPECT_TRUE(pictures.insert(QByteArray(bytes, image.sizeInBytes())).second)
            << "looks like another one";
    }
    const auto isFilledAt = [](Symbol symbol, const QPoint& point) {
        const QImage image = painted({24, 24}, [&](QPainter& painter) {
            drawSymbol(painter, symbol, QRectF(0, 0, 24, 24), palette::coral);
        });
        return shows(image, point.x(), point.y(), palette::coral);
    };
    EXPECT_TRUE(isFilledAt(Symbol::pauseFill, {7, 12}));
    EXPECT_TRUE(isFilledAt(Symbol::pawprintFill, {12, 16}));
    EXPECT_FALSE(isFilledAt(Symbol::pawprint, {12, 16}));
    EXPECT_TRUE(isFilledAt(Symbol::checkmarkCircleFill, {12, 5}));
    EXPECT_FALSE(isFilledAt(Symbol::checkmarkCircleFill, {10, 15})) << "the mark is not cut out";
}

TEST_F(Painting, TheInterfaceFontIsQuicksandInExactSizes) {
    if (!QFontDatabase::families().contains("Quicksand")) {
        GTEST_SKIP() << "Quicksand is not installed";
    }
    std::set<double> widths;
    for (const QFont::Weight weight : {QFont::Medium, QFont::DemiBold}) {
        const QFont font = interfaceFont(16, weight);
        EXPECT_TRUE(QRawFont::fromFont(font).familyName().startsWith("Quicksand"));
        widths.insert(textWidth(font, "Snap a window"));
    }
    EXPECT_EQ(widths.size(), 2U) << "medium and semibold are the same face";
    EXPECT_EQ(textWidth(interfaceFont(16, QFont::DemiBold), "Snap"),
              textWidth(interfaceFont(16, QFont::Bold), "Snap"));
    const double ten = textWidth(interfaceFont(10, QFont::DemiBold), "Bottom right");
    for (const double size : {10.5, 11.5, 12.35}) {
        EXPECT_NEAR(textWidth(interfaceFont(size, QFont::DemiBold), "Bottom right"),
                    ten * size / 10, 0.6)
            << size;
    }
}

TEST_F(Painting, ALineIsDrawnAsWideAsItMeasuresAndCentered) {
    for (const double size : {10.5, 20.0}) {
        const QFont font = interfaceFont(size, QFont::Bold);
        const QImage image = painted({200, 40}, [&](QPainter& painter) {
            painter.setFont(font);
            drawLine(painter, QRectF(0, 0, 200, 40), "HHHHHHHH");
        });
        QRect ink;
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 200; ++x) {
                if (image.pixelColor(x, y).alpha() > 60) {
                    ink |= QRect(x, y, 1, 1);
                }
            }
        }
        EXPECT_NEAR(ink.width(), textWidth(font, "HHHHHHHH"), size * 0.3);
        EXPECT_NEAR(ink.x() + ink.width() / 2.0, 100, 1);
        EXPECT_NEAR(ink.y() + ink.height() / 2.0, 20, 1);
    }
}

TEST_F(Painting, TextShrinksToItsRoomBeforeItIsCut) {
    const QString text = "Right two thirds";
    const double wide = textWidth(interfaceFont(11, QFont::DemiBold), text);
    const auto fit = [&](double width) { return fitText(text, width, 11, QFont::DemiBold, 0.8); };
    EXPECT_DOUBLE_EQ(textWidth(fit(wide + 1).font, text), wide);
    EXPECT_EQ(fit(wide * 0.85).text, text);
    EXPECT_NEAR(textWidth(fit(wide * 0.85).font, text), wide * 0.85, 0.8);
    const FittedText cut = fit(wide * 0.6);
    EXPECT_TRUE(cut.text.endsWith(QChar(u'…')));
    EXPECT_LE(textWidth(cut.font, cut.text), wide * 0.6);
    EXPECT_NEAR(textWidth(cut.font, text), wide * 0.8, 0.8);
}

}  // namespace
}  // namespace tessellon
