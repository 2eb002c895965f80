#include "menu/menu_switches_view.h"

#include "ui/chip.h"
#include "ui/fonts.h"
#include "ui/palette.h"
#include "ui/text.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QTextBoundaryFinder>
#include <algorithm>
#include <cmath>
#include <limits>

namespace tessellon {
namespace {

// For a subtitle of one line and of two.
constexpr int rowHeight = 40;
constexpr int tallRowHeight = 48;
constexpr int rowSpacing = 2;
constexpr int spacing = 9;
constexpr int controlSpacing = 8;

constexpr double symbolSize = 20;
constexpr double titleSize = 13;
constexpr double subtitleSize = 10.5;
constexpr double chipSpacing = 6;
constexpr double lineSpacing = 1;

/// The sentence in one line of `width` logical pixels, or in two of about the same length; what
/// does not fit into them is cut. It may begin with a name, which is isolated in each line.
QStringList wrapped(const QString& name, const QString& rest, double width) {
    const QString text = name + rest;
    const QFont font = interfaceFont(subtitleSize);
    const auto widthOf = [&font](const QString& line) { return textWidth(font, line); };
    if (widthOf(text) <= width) {
        return {(isolated(name) + rest).trimmed()};
    }
    qsizetype best = 0;
    double bestWidth = std::numeric_limits<double>::infinity();
    QTextBoundaryFinder finder(QTextBoundaryFinder::Line, text);
    for (auto at = finder.toNextBoundary(); at > 0; at = finder.toNextBoundary()) {
        const double first = widthOf(text.left(at).trimmed());
        const double longest = std::max(first, widthOf(text.mid(at).trimmed()));
        if (first <= width && longest < bestWidth) {
            best = at;
            bestWidth = longest;
        }
    }
    const auto inName = std::min(best, name.size());
    const auto first = isolated(name.left(inName).trimmed()) + text.mid(inName, best - inName);
    // The second line takes what is left.
    const auto second =
        isolated(name.mid(inName).trimmed()) + text.mid(std::max(best, name.size()));
    QStringList lines;
    for (const auto& line : {first.trimmed(), second.trimmed()}) {
        if (!line.isEmpty()) {
            lines.append(fitText(line, width, subtitleSize, QFont::Medium, 1).text);
        }
    }
    return lines;
}

}  // namespace

MenuSwitchText::MenuSwitchText(const Look& look, QWidget* parent) : QWidget(parent), look_(look) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void MenuSwitchText::setSubtitle(const QString& name, const QString& rest) {
    name_ = name;
    rest_ = rest;
    breakLines();
}

double MenuSwitchText::textLeft() const {
    return symbolSize + spacing;
}

void MenuSwitchText::breakLines() {
    const double room = width() - textLeft();
    // What is said of the name has to be read, so the name has one line at most.
    const auto name = fitText(name_, room, subtitleSize, QFont::Medium, 1).text;
    lines_ = name == name_ ? wrapped(name, rest_, room) : QStringList{name, rest_.trimmed()};
    update();
}

void MenuSwitchText::resizeEvent(QResizeEvent* /*event*/) {
    breakLines();
}

void MenuSwitchText::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    drawSymbol(painter, look_.symbol,
               QRectF(0, (height() - symbolSize) / 2, symbolSize, symbolSize), look_.color);

    const QFont titleFont = interfaceFont(titleSize, QFont::DemiBold);
    const QFont subtitleFont = interfaceFont(subtitleSize);
    const double titleHeight = std::round(lineHeight(titleFont));
    const double subtitleHeight = std::round(lineHeight(subtitleFont));
    const double all =
        titleHeight + lineSpacing + static_cast<double>(lines_.size()) * subtitleHeight;
    double top = std::round((height() - all) / 2);

    const QRectF title(textLeft(), top, width() - textLeft(), titleHeight);
    painter.setFont(titleFont);
    painter.setPen(palette::ink);
    drawLine(painter, title, look_.title, Qt::AlignLeft);
    if (!look_.chip.isEmpty()) {
        const double left =
            std::ceil(title.left() + textWidth(titleFont, look_.title) + chipSpacing);
        const double chipTop = std::floor(title.center().y() - chipSize(look_.chip).height() / 2);
        paintChip(painter, QPointF(left, chipTop), look_.chip, palette::lavender);
    }
    top += titleHeight + lineSpacing;

    painter.setFont(subtitleFont);
    painter.setPen(palette::muted);
    for (const QString& line : lines_) {
        drawLine(painter, QRectF(textLeft(), top, title.width(), subtitleHeight), line,
                 Qt::AlignLeft);
        top += subtitleHeight;
    }
}

PillToggle* MenuSwitches::addSwitch(const MenuSwitchText::Look& look, MenuSwitchText*& text) {
    auto* const toggle = new PillToggle(look.title, this);
    // As with all of the panel's controls, a click leaves the keyboard's place alone.
    toggle->setFocusPolicy(Qt::TabFocus);
    toggle->move(origin().x() + contentWidth - toggle->width(), 0);
    text = new MenuSwitchText(look, this);
    text->setGeometry(origin().x(), 0, toggle->x() - controlSpacing - origin().x(), rowHeight);
    return toggle;
}

void MenuSwitches::placeRow(MenuSwitchText& text, const std::vector<QWidget*>& controls,
                            int height) {
    const int top = origin().y() + (contentHeight() > 0 ? contentHeight() + rowSpacing : 0);
    text.setGeometry(text.x(), top, text.width(), height);
    for (auto* const control : controls) {
        control->move(control->x(), top + (height - control->height()) / 2);
    }
    setContentHeight(top + height - origin().y());
}

MenuSwitches::MenuSwitches(const std::optional<std::string>& appName, const Callbacks& callbacks,
                           QWidget* parent)
    : MenuSection(parent) {
    pause_ =
        addSwitch({Symbol::pauseFill, palette::amber, QStringLiteral("Pause snapping"), QString()},
                  pauseText_);
    addRow({pause_});
    const auto pauseSubtitle = QStringLiteral("Drags and shortcuts take a nap");
    pauseText_->setSubtitle(QString(), pauseSubtitle);
    pause_->setAccessibleDescription(pauseSubtitle);
    placeRow(*pauseText_, {pause_}, rowHeight);

    ignore_ = addSwitch(
        {Symbol::eyeSlash, palette::lavender, QStringLiteral("Ignore this app"), QString()},
        ignoreText_);
    addRow({ignore_});
    const auto name = appName ? singleLine(*appName) : QString();
    const auto ignoreSubtitle = appName ? QStringLiteral(" never snaps while this is on")
                                        : QStringLiteral("No app in front");
    ignoreText_->setSubtitle(name, ignoreSubtitle);
    ignore_->setAccessibleDescription(name + ignoreSubtitle);
    placeRow(*ignoreText_, {ignore_}, ignoreText_->lines().size() > 1 ? tallRowHeight : rowHeight);

    // The keyboard comes to it before it comes to the switch.
    tile_ = new MenuCapsuleButton(QStringLiteral("Tile now"), this);
    tiling_ = addSwitch({Symbol::squareGrid2x2, palette::pink, QStringLiteral("Tile this display"),
                         QStringLiteral("Beta")},
                        tilingText_);
    tile_->move(tiling_->x() - controlSpacing - tile_->width(), 0);
    tile_->setAccessibleDescription(QStringLiteral("Tiles the windows of this display"));
    addRow({tile_, tiling_});
    // Beside the button the subtitle takes two lines. The room for them is always there: turning
    // tiling on leaves the panel as high as it is.
    placeRow(*tilingText_, {tile_, tiling_}, tallRowHeight);

    connect(pause_, &QAbstractButton::toggled, this, callbacks.pause);
    connect(ignore_, &QAbstractButton::toggled, this, callbacks.toggleIgnored);
    connect(tiling_, &QAbstractButton::toggled, this, callbacks.tiling);
    connect(tile_, &QAbstractButton::clicked, this, callbacks.tile);
    setTiling(false);
}

void MenuSwitches::setPaused(bool paused) {
    const QSignalBlocker blocker(pause_);
    pause_->setChecked(paused);
}

void MenuSwitches::setIgnored(bool ignored) {
    const QSignalBlocker blocker(ignore_);
    ignore_->setChecked(ignored);
}

void MenuSwitches::setTiling(bool tiling) {
    const QSignalBlocker blocker(tiling_);
    tiling_->setChecked(tiling);
    tile_->setVisible(tiling);
    const QWidget* const control = tiling ? static_cast<QWidget*>(tile_) : tiling_;
    tilingText_->resize(control->x() - controlSpacing - tilingText_->x(), tilingText_->height());
    const auto subtitle = tiling ? QStringLiteral("Master on the left, the rest stacked")
                                 : QStringLiteral("Turn on to tile on demand");
    tilingText_->setSubtitle(QString(), subtitle);
    tiling_->setAccessibleDescription(QStringLiteral("Beta. ") + subtitle);
}

}  // namespace tessellon
