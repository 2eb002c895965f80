#include "menu/menu_switches_view.h"

#include "menu/menu_label_view.h"
#include "ui/chip.h"
#include "ui/fonts.h"
#include "ui/palette.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QTextBoundaryFinder>
#include <cmath>

namespace tessellon {
namespace {

// Two lines below a title fit: turning tiling on leaves the panel as high as it is.
constexpr int rowHeight = 44;
constexpr int rowSpacing = 2;
constexpr int spacing = 9;
constexpr int controlSpacing = 8;

constexpr double symbolSize = 20;
constexpr double titleSize = 13;
constexpr double subtitleSize = 10.5;
constexpr double chipSpacing = 6;
constexpr int mostLines = 2;

int rowTop(int row) {
    return row * (rowHeight + rowSpacing);
}

/// The text in lines of `width` logical pixels; the last one is cut when there is more.
QStringList wrapped(const QString& text, double width) {
    const QFont font = interfaceFont(subtitleSize);
    QStringList lines;
    qsizetype start = 0;
    while (start < text.size()) {
        qsizetype end = text.size();
        if (lines.size() < mostLines - 1 && textWidth(font, text) > width) {
            QTextBoundaryFinder finder(QTextBoundaryFinder::Line, text);
            finder.setPosition(start);
            qsizetype fitting = -1;
            for (auto next = finder.toNextBoundary(); next != -1; next = finder.toNextBoundary()) {
                if (textWidth(font, text.mid(start, next - start).trimmed()) > width) {
                    break;
                }
                fitting = next;
            }
            end = fitting > start ? fitting : end;
        }
        const auto line = text.mid(start, end - start).trimmed();
        lines.append(fitText(line, width, subtitleSize, QFont::Medium, 1).text);
        start = end;
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
    lines_ = wrapped(name + rest_, room);
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
    const double all = titleHeight + static_cast<double>(lines_.size()) * subtitleHeight;
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
    top += titleHeight;

    painter.setFont(subtitleFont);
    painter.setPen(palette::muted);
    for (const QString& line : lines_) {
        drawLine(painter, QRectF(textLeft(), top, title.width(), subtitleHeight), line,
                 Qt::AlignLeft);
        top += subtitleHeight;
    }
}

PillToggle* MenuSwitches::addSwitch(const MenuSwitchText::Look& look, MenuSwitchText*& text) {
    const int top = origin().y() + rowTop(static_cast<int>(rows().size()));
    auto* const toggle = new PillToggle(look.title, this);
    // As with all of the panel's controls, a click leaves the keyboard's place alone.
    toggle->setFocusPolicy(Qt::TabFocus);
    toggle->move(origin().x() + contentWidth - toggle->width(),
                 top + (rowHeight - toggle->height()) / 2);
    text = new MenuSwitchText(look, this);
    text->setGeometry(origin().x(), top, toggle->x() - controlSpacing - origin().x(), rowHeight);
    return toggle;
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

    ignore_ = addSwitch(
        {Symbol::eyeSlash, palette::lavender, QStringLiteral("Ignore this app"), QString()},
        ignoreText_);
    addRow({ignore_});
    const auto name = appName ? singleLine(*appName) : QString();
    const auto ignoreSubtitle = appName ? QStringLiteral(" never snaps while this is on")
                                        : QStringLiteral("No app in front");
    ignoreText_->setSubtitle(name, ignoreSubtitle);
    ignore_->setAccessibleDescription(name + ignoreSubtitle);

    // The keyboard comes to it before it comes to the switch.
    tile_ = new MenuCapsuleButton(QStringLiteral("Tile now"), this);
    tiling_ = addSwitch({Symbol::squareGrid2x2, palette::pink, QStringLiteral("Tile this display"),
                         QStringLiteral("Beta")},
                        tilingText_);
    tile_->move(tiling_->x() - controlSpacing - tile_->width(),
                tiling_->y() + (tiling_->height() - tile_->height()) / 2);
    tile_->setAccessibleDescription(QStringLiteral("Tiles the windows of this display"));
    addRow({tile_, tiling_});
    setContentHeight(rowTop(2) + rowHeight);

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
    tilingText_->resize(control->x() - controlSpacing - tilingText_->x(), rowHeight);
    const auto subtitle = tiling ? QStringLiteral("Master on the left, the rest stacked")
                                 : QStringLiteral("Turn on to tile on demand");
    tilingText_->setSubtitle(QString(), subtitle);
    tiling_->setAccessibleDescription(QStringLiteral("Beta. ") + subtitle);
}

}  // namespace tessellon
