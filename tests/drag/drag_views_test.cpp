#include "drag/hints_view.h"
#include "drag/overlay_view.h"
#include "drag/qt_drag_views.h"
#include "drag/zone_hints.h"
#include "platform/memory/memory_compositing.h"
#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_user_defaults.h"
#include "shortcuts/key_bindings.h"
#include "ui/palette.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <QVariantAnimation>
#include <cmath>
#include <functional>
#include <memory>
#include <tuple>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

using enum SnapAction;

/// One application for all cases of the process: two screens side by side, no display.
void startApplication() {
    if (QCoreApplication::instance() != nullptr) {
        return;
    }
    static const QTemporaryDir folder;
    QFile screens(folder.filePath("screens.json"));
    ASSERT_TRUE(screens.open(QIODevice::WriteOnly));
    screens.write(R"({"synchronousWindowSystemEvents":true,"windowFrameMargins":false,"screens":[
        {"name":"L","x":0,"y":0,"width":1000,"height":800,"logicalDpi":96,"logicalBaseDpi":96,"dpr":1},
        {"name":"R","x":1000,"y":0,"width":1280,"height":1024,"logicalDpi":96,"logicalBaseDpi":96,"dpr":1}
    ]})");
    screens.close();
    qputenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + screens.fileName()).toUtf8());
    static int argc = 1;
    static char name[] = "drag_views_test";
    static char* argv[] = {name, nullptr};
    new QApplication(argc, argv);  // lives as long as the process
}

bool waitUntil(const std::function<bool()>& done) {
    return QTest::qWaitFor(done, 20000);
}

/// Counts what a widget is asked to paint.
class PaintWatch final : public QObject {
  public:
    explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            ++paints;
            painted += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }
    int paints = 0;
    QRegion painted;
};

QImage drawn(QWidget& widget) {
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    widget.render(&painter, QPoint(), QRegion(), QWidget::IgnoreMask);
    return image;
}

/// `above` drawn over `below`, each at its own opacity.
QColor over(const QColor& above, const QColor& below) {
    QImage pixel(1, 1, QImage::Format_ARGB32_Premultiplied);
    pixel.fill(below);
    QPainter painter(&pixel);
    painter.fillRect(0, 0, 1, 1, above);
    painter.end();
    return pixel.pixelColor(0, 0);
}

/// Whether two colours of whatever opacity look the same, on light and on dark.
bool near(const QColor& actual, const QColor& expected) {
    const auto close = [](int a, int b) { return std::abs(a - b) <= 4; };
    const auto looksSame = [&](const QColor& below) {
        const auto a = over(actual, below);
        const auto b = over(expected, below);
        return close(a.red(), b.red()) && close(a.green(), b.green()) && close(a.blue(), b.blue());
    };
    return looksSame(Qt::white) && looksSame(Qt::black);
}

#define EXPECT_PIXEL(image, x, y, expected)                                               \
    EXPECT_TRUE(near((image).pixelColor(x, y), expected))                                 \
        << (image).pixelColor(x, y).name(QColor::HexArgb).toStdString() << " instead of " \
        << QColor(expected).name(QColor::HexArgb).toStdString()

const Screen leftScreen{1, {0, 0, 1000, 800}, {0, 0, 1000, 800}, std::nullopt, "L"};

class HintsViewTest : public testing::Test {
  protected:
    HintsViewTest() {
        startApplication();
        view_ = std::make_unique<HintsView>(compositing_);
        view_->setScreenFrame(leftScreen.visibleFrame);
        view_->setHints(ZoneHints::layout(leftScreen));
    }

    void show() {
        view_->orderFront();
        ASSERT_TRUE(waitUntil([&] { return view_->isVisible(); }));
        QCoreApplication::processEvents();
    }
    /// The animation has ended and everything is painted.
    bool isSettled() {
        const auto* const animation = view_->findChild<QVariantAnimation*>();
        return waitUntil([&] { return animation->state() == QAbstractAnimation::Stopped; }) &&
               (QCoreApplication::processEvents(), true);
    }

    MemoryCompositing compositing_;
    std::unique_ptr<HintsView> view_;
};

const QColor quietFill = palette::withOpacity(palette::teal, 0.08);
const QColor activeFill = palette::withOpacity(palette::teal, 0.3);

TEST_F(HintsViewTest, DrawsZonesWithTheirBordersInside) {
    view_->setActive(leftHalf);
    show();
    const auto image = drawn(*view_);
    // The zone "center" is at 304…696, 180…620.
    EXPECT_PIXEL(image, 302, 300, Qt::transparent);
    EXPECT_PIXEL(image, 304, 300, over(palette::withOpacity(palette::ink, 0.22), quietFill));
    EXPECT_PIXEL(image, 305, 300, quietFill);
    EXPECT_PIXEL(image, 695, 300, over(palette::withOpacity(palette::ink, 0.22), quietFill));
    EXPECT_PIXEL(image, 696, 300, Qt::transparent);
    EXPECT_PIXEL(image, 305, 181, Qt::transparent) << "the corner is round";
    // "leftHalf", active, is at 84…296.
    for (const int x : {84, 85, 294, 295}) {
        EXPECT_PIXEL(image, x, 300, over(palette::withOpacity(palette::ink, 0.8), activeFill));
    }
    EXPECT_PIXEL(image, 86, 300, activeFill);
    EXPECT_PIXEL(image, 296, 300, Qt::transparent);
}

TEST_F(HintsViewTest, DrawsLabelsInTheMiddleOfTheirZones) {
    view_->setActive(center);
    show();
    const auto image = drawn(*view_);
    // Between the card's left edge and the picture there is nothing but paper.
    const auto cardOf = [&](int centerX) { return centerX - 13 - 3; };
    EXPECT_PIXEL(image, cardOf(500), 395, palette::paper);
    const QColor quietCard = over(palette::withOpacity(palette::paper, 0.85 * 0.8), quietFill);
    EXPECT_PIXEL(image, cardOf(190), 395, quietCard);
    int inked = 0;
    for (int y = 400; y < 425; ++y) {
        for (int x = 460; x < 540; ++x) {
            inked += image.pixelColor(x, y).lightness() < 128 ? 1 : 0;
        }
    }
    EXPECT_GT(inked, 20) << "the name";
}

TEST_F(HintsViewTest, AChangePaintsTheOldAndTheNewZoneOnlyAndComesToAnEnd) {
    show();
    PaintWatch watch(*view_);
    view_->setActive(center);
    ASSERT_TRUE(isSettled());
    EXPECT_GT(watch.paints, 0);
    EXPECT_EQ(watch.painted.boundingRect(), QRect(304, 180, 392, 440));
    EXPECT_PIXEL(drawn(*view_), 306, 300, activeFill);

    watch.painted = {};
    view_->setActive(leftThird);
    ASSERT_TRUE(isSettled());
    EXPECT_EQ(watch.painted, QRegion(4, 180, 72, 440) + QRegion(304, 180, 392, 440));
    EXPECT_PIXEL(drawn(*view_), 306, 300, quietFill);

    const int paints = watch.paints;
    view_->setActive(leftThird);
    view_->setActive(maximize);  // no zone of the grid
    view_->setActive(leftThird);
    view_->setActive(leftThird);
    ASSERT_TRUE(isSettled());
    watch.painted = {};
    const int after = watch.paints;
    view_->setActive(leftThird);
    QCoreApplication::processEvents();
    EXPECT_EQ(watch.paints, after) << "no change, no paint";
    EXPECT_GE(after, paints);
}

TEST_F(HintsViewTest, NothingMovesWhileItIsHiddenAndNothingOldIsShownAgain) {
    show();
    view_->setActive(center);  // and hidden in the middle of it
    view_->orderOut();
    PaintWatch watch(*view_);
    view_->setActive(leftHalf);
    QCoreApplication::processEvents();
    EXPECT_EQ(watch.paints, 0);
    view_->setHints(ZoneHints::layout(leftScreen));
    view_->orderFront();
    EXPECT_TRUE(waitUntil([&] { return watch.paints > 0; }));
    const auto image = drawn(*view_);
    EXPECT_PIXEL(image, 306, 300, quietFill);
    EXPECT_PIXEL(image, 87, 300, quietFill);
}

TEST_F(HintsViewTest, WithoutACompositorItIsHollowAndOpaque) {
    compositing_.setActive(false);
    show();
    EXPECT_FALSE(view_->mask().contains(QPoint(400, 250))) << "the zone is cut out";
    EXPECT_FALSE(view_->mask().contains(QPoint(300, 400))) << "so is the gap";
    EXPECT_TRUE(view_->mask().contains(QPoint(305, 300)));
    EXPECT_FALSE(view_->mask().contains(QPoint(309, 300)));
    EXPECT_TRUE(view_->mask().contains(QPoint(500, 400))) << "the label";
    PaintWatch watch(*view_);
    view_->setActive(center);
    EXPECT_TRUE(view_->mask().contains(QPoint(309, 300))) << "a thicker border";
    EXPECT_TRUE(waitUntil([&] { return watch.paints > 0; }));
    const auto image = drawn(*view_);
    EXPECT_PIXEL(image, 308, 300, palette::teal);
    EXPECT_PIXEL(image, 190 - 16, 395, palette::paper);
    EXPECT_PIXEL(image, 500 - 16, 395, palette::teal);
    for (const QRect& part : view_->mask()) {
        for (int x = part.left(); x <= part.right(); ++x) {
            ASSERT_EQ(image.pixelColor(x, part.top()).alpha(), 255) << x << ' ' << part.top();
        }
    }

    view_->orderOut();
    compositing_.setActive(true);  // started between two drags
    view_->setHints(ZoneHints::layout(leftScreen));
    show();
    EXPECT_TRUE(view_->mask().isEmpty());
    EXPECT_PIXEL(drawn(*view_), 306, 300, quietFill);
}

TEST_F(HintsViewTest, FollowsACompositorThatGoesAndComes) {
    show();
    view_->setActive(center);
    PaintWatch watch(*view_);
    compositing_.setActive(false);
    EXPECT_FALSE(view_->mask().contains(QPoint(400, 250))) << "hollow at once";
    EXPECT_TRUE(view_->mask().contains(QPoint(309, 300)));
    EXPECT_TRUE(watch.painted.contains(QPoint(305, 300))) << "before the next turn";
    EXPECT_PIXEL(drawn(*view_), 190 - 16, 395, palette::paper);
    compositing_.setActive(true);
    EXPECT_TRUE(view_->mask().isEmpty());
    EXPECT_PIXEL(drawn(*view_), 87, 300, quietFill);

    view_->orderOut();
    watch.paints = 0;
    compositing_.setActive(false);
    EXPECT_EQ(watch.paints, 0) << "a hidden one has time until it is shown";
}

class OverlayViewTest : public testing::Test {
  protected:
    OverlayViewTest() {
        startApplication();
        view_ = std::make_unique<OverlayView>(compositing_);
        view_->setAction(leftHalf, QStringLiteral("⌃⌥←"));
    }

    void resize(double width, double height) { view_->setScreenFrame({0, 0, width, height}); }

    MemoryCompositing compositing_;
    std::unique_ptr<OverlayView> view_;
};

TEST_F(OverlayViewTest, FillsTheLandingFrame) {
    resize(600, 500);
    view_->orderFront();
    const auto image = drawn(*view_);
    EXPECT_PIXEL(image, 0, 0, Qt::transparent);
    EXPECT_PIXEL(image, 2, 250, palette::ink);
    EXPECT_PIXEL(image, 597, 250, palette::ink);
    EXPECT_PIXEL(image, 3, 250, palette::withOpacity(palette::teal, 0.28));
    EXPECT_PIXEL(image, 596, 250, palette::withOpacity(palette::teal, 0.28));

    const auto pill = view_->labelRect();
    EXPECT_EQ(pill.bottom(), 500 - 28);
    EXPECT_NEAR(pill.center().x(), 300, 0.5);
    const int x = static_cast<int>(pill.center().x());
    EXPECT_PIXEL(image, x, static_cast<int>(pill.top()), palette::ink);
    EXPECT_PIXEL(image, x, static_cast<int>(pill.top()) + 3, palette::paper);
    EXPECT_PIXEL(image, x, 500 - 28, palette::withOpacity(palette::teal, 0.28));
}

TEST_F(OverlayViewTest, ShowsALabelOnlyWhereThereIsRoom) {
    for (const auto& [width, height, expected] :
         {std::tuple{261, 121, true}, {260, 121, false}, {261, 120, false}, {1200, 90, false}}) {
        resize(width, height);
        EXPECT_EQ(!view_->labelRect().isEmpty(), expected) << width << " x " << height;
    }
    resize(261, 121);
    view_->setAction(bottomRight, QStringLiteral("⌃⌥⇧⌘K"));
    EXPECT_TRUE(QRectF(view_->rect()).contains(view_->labelRect())) << "cut, not overflowing";
    view_->setAction(bottomRight, QStringLiteral("⌃⌥Keypad Enter"));
    EXPECT_TRUE(QRectF(view_->rect()).contains(view_->labelRect())) << "a key with a long name";
    EXPECT_GT(view_->labelRect().left(), 2) << "inside the border";
    resize(600, 500);
    const double withChips = view_->labelRect().width();
    view_->setAction(bottomRight, QString());
    EXPECT_GT(withChips - view_->labelRect().width(), 5 * 22) << "a cap for every character";
}

TEST_F(OverlayViewTest, WithoutACompositorItIsAFrameAndALabel) {
    compositing_.setActive(false);
    resize(600, 500);
    view_->orderFront();
    const auto pill = view_->labelRect().center().toPoint();
    EXPECT_TRUE(view_->mask().contains(QPoint(1, 250)));
    EXPECT_FALSE(view_->mask().contains(QPoint(300, 250)));
    EXPECT_FALSE(view_->mask().contains(QPoint(0, 0)));
    EXPECT_TRUE(view_->mask().contains(pill));
    resize(400, 300);
    EXPECT_EQ(view_->mask().boundingRect(), QRect(0, 0, 400, 300)) << "follows the frame";
}

TEST(QtDragViews, PanelsAreWhereTheyAreSentUntilTheyAreClosed) {
    startApplication();
    MemoryCompositing compositing;
    MemoryDesktop desktop;
    MemoryUserDefaults defaults;
    NotificationCenter notifications;
    ArrangementStore arrangements(defaults, notifications);
    const KeyBindings bindings(defaults, arrangements);
    QtDragViews views(compositing, bindings);

    QPointer<QWidget> widget;
    {
        const auto preview = views.makeOverlayPanel();
        const auto grid = views.makeHintsPanel();
        preview->setAction(leftHalf);
        preview->setFrame({1100, 100, 400, 300});  // on the second screen, 224 lower at its bottom
        preview->orderFrontRegardless();
        grid->setFrame({0, 0, 1000, 800});
        grid->setHints(ZoneHints::layout(leftScreen));
        grid->orderFrontRegardless();
        EXPECT_TRUE(preview->isVisible());
        EXPECT_EQ(preview->frame(), (Rect{1100, 100, 400, 300}));
        for (auto* const shown : QApplication::topLevelWidgets()) {
            if (dynamic_cast<OverlayView*>(shown) != nullptr) {
                widget = shown;
            }
            EXPECT_TRUE(shown->windowFlags().testFlag(Qt::WindowTransparentForInput));
        }
        ASSERT_TRUE(widget);
        EXPECT_EQ(widget->geometry(), QRect(1100, 400, 400, 300));
        EXPECT_EQ(compositing.prepared().size(), 2U);
        preview->orderOut();
        preview->orderFrontRegardless();
        EXPECT_EQ(compositing.prepared().size(), 2U) << "once for each window";
    }
    EXPECT_TRUE(!widget || !widget->isVisible()) << "closed at once";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(widget);
}

}  // namespace
}  // namespace tessellon
