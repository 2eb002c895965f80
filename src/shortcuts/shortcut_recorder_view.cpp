#include "shortcuts/shortcut_recorder_view.h"

#include "shortcuts/key_labels.h"
#include "ui/chip.h"
#include "ui/control_style.h"
#include "ui/focus_ring.h"
#include "ui/fonts.h"
#include "ui/key_chips.h"
#include "ui/layer.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/text.h"

#include <QEvent>
#include <QPen>
#include <QTextDocument>
#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <tuple>

namespace tessellon {
namespace {

constexpr double spacing = 6;
constexpr double fontSize = 11.5;
constexpr double sidePadding = 10;
constexpr double outline = control_style::thinOutline;
constexpr double dashOn = 3;
constexpr double dashOff = 2;
// Labels are stored text of any length.
constexpr double keyLabelMaxWidth = 64;
// Between that of a key cap and that of a capsule, since the ring is for both.
constexpr double ringRadiusScale = 0.4;

QString recordText() {
    return QStringLiteral("Record");
}

QString recordingText() {
    return QStringLiteral("Press new keys…");
}

QString takenHelp(const std::optional<std::string>& holder) {
    return holder ? QString::fromStdString(*holder) + QStringLiteral(" uses this shortcut.")
                  : QStringLiteral("Another app already uses this shortcut.");
}

QFont capsuleFont() {
    return interfaceFont(fontSize, QFont::DemiBold);
}

QSizeF capsuleSize(const QString& text, double height) {
    return {textWidth(capsuleFont(), text) + 2 * sidePadding, height};
}

void paintText(QPainter& painter, const QRectF& rect, const QString& text, const QColor& color) {
    painter.setFont(capsuleFont());
    painter.setPen(color);
    drawLine(painter, rect, text);
}

void paintDashedCapsule(QPainter& painter, const QRectF& rect, const QColor& color) {
    QPen pen(color, outline);
    pen.setCapStyle(Qt::FlatCap);
    pen.setDashPattern({dashOn / outline, dashOff / outline});  // in widths of the pen
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    constexpr double inset = outline / 2;
    painter.drawPath(capsule(rect.adjusted(inset, inset, -inset, -inset)));
}

QStringList keysOf(const std::optional<KeyCombo>& combo, double size) {
    QStringList keys;
    if (combo) {
        for (const std::string& key : displayKeys(*combo)) {
            keys.append(fitText(singleLine(key), keyLabelMaxWidth, keyChipsFontSize(size),
                                QFont::DemiBold, 1)
                            .text);
        }
    }
    return keys;
}

}  // namespace

ShortcutRecorder::ShortcutRecorder(Recorder& recorder, const HotkeyTarget& target, double size,
                                   QWidget* parent)
    : QAbstractButton(parent),
      recorder_(recorder),
      target_(target),
      size_(size),
      revision_(recorder.revision() - 1) {
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    new FocusRing(*this, size * ringRadiusScale);
    connect(this, &QAbstractButton::clicked, this, [this] { recorder_.toggle(target_); });
    changed_ = recorder_.changed().subscribe([this] { follow(); });
    follow();
}

void ShortcutRecorder::follow() {
    const auto before = std::tuple(shown_, keys_, takenHelp_);
    if (revision_ != recorder_.revision()) {
        revision_ = recorder_.revision();
        keys_ = keysOf(recorder_.comboFor(target_), size_);
        takenHelp_ =
            recorder_.isTaken(target_) ? takenHelp(recorder_.holderTitle(target_)) : QString();
    }
    shown_ = isRecording() ? Shown::recording : !keys_.isEmpty() ? Shown::keys : Shown::record;
    if (before == std::tuple(shown_, keys_, takenHelp_) && !accessibleName().isEmpty()) {
        return;
    }
    showChip(!takenHelp_.isEmpty() && shown_ != Shown::recording);
    describe();
    updateGeometry();
    place();
    update();
}

void ShortcutRecorder::describe() {
    const bool recording = shown_ == Shown::recording;
    const auto state = recording                 ? recordingText()
                       : shown_ == Shown::record ? QStringLiteral("no shortcut")
                                                 : spokenKeys(keys_);
    const auto title =
        spokenTitle_.isEmpty() ? QString::fromStdString(recorder_.title(target_)) : spokenTitle_;
    setAccessibleName(title + QStringLiteral(", ") + state);
    setToolTip(recording ? QStringLiteral("Esc cancels · ⌫ clears")
                         : QStringLiteral("Click to change"));
    setAccessibleDescription(chip_ != nullptr && !chip_->isHidden()
                                 ? takenHelp_ + QLatin1Char(' ') + toolTip()
                                 : toolTip());
}

void ShortcutRecorder::setSpokenTitle(const QString& title) {
    if (spokenTitle_ != title) {
        spokenTitle_ = title;
        describe();
    }
}

void ShortcutRecorder::showChip(bool shown) {
    if (chip_ == nullptr && shown) {
        chip_ = new Chip(QStringLiteral("Taken"), palette::coral, ChipDot::none, this);
    }
    if (chip_ != nullptr) {
        // An arrangement may be called anything.
        chip_->setToolTip(Qt::mightBeRichText(takenHelp_)
                              ? QStringLiteral("<p>") + takenHelp_.toHtmlEscaped() +
                                    QStringLiteral("</p>")
                              : takenHelp_);
        chip_->setVisible(shown);
    }
}

QSizeF ShortcutRecorder::buttonSize() const {
    switch (shown_) {
        case Shown::keys:
            return keyChipsSize(keys_, size_);
        case Shown::record:
            return capsuleSize(recordText(), size_);
        case Shown::recording:
            break;
    }
    return capsuleSize(recordingText(), size_);
}

QSize ShortcutRecorder::sizeHint() const {
    QSizeF exact = buttonSize();
    if (chip_ != nullptr && !chip_->isHidden()) {
        const QSize chip = chip_->sizeHint();
        exact = {std::ceil(exact.width()) + spacing + chip.width(),
                 std::max<double>(exact.height(), chip.height())};
    }
    return {static_cast<int>(std::ceil(exact.width())),
            static_cast<int>(std::ceil(exact.height()))};
}

QRectF ShortcutRecorder::buttonRect() const {
    const QSizeF exact = buttonSize();
    const bool leftToRight = layoutDirection() == Qt::LeftToRight;
    const double left = leftToRight ? 0 : width() - exact.width();
    // Whole pixels keep the edges of the caps sharp.
    return {QPointF(left, std::floor((height() - exact.height()) / 2)), exact};
}

void ShortcutRecorder::place() {
    if (chip_ == nullptr || chip_->isHidden()) {
        return;
    }
    const QSize chip = chip_->sizeHint();
    const bool leftToRight = layoutDirection() == Qt::LeftToRight;
    const int left = leftToRight ? static_cast<int>(std::ceil(buttonSize().width()) + spacing) : 0;
    chip_->setGeometry(QRect(QPoint(left, (height() - chip.height()) / 2), chip));
}

void ShortcutRecorder::resizeEvent(QResizeEvent* /*event*/) {
    place();
}

bool ShortcutRecorder::hitButton(const QPoint& position) const {
    return buttonRect().contains(position);
}

bool ShortcutRecorder::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::ShortcutOverride:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
            // Keys are for the recording; one that comes this way must not press the button.
            if (isRecording()) {
                event->accept();
                return true;
            }
            break;
        case QEvent::LayoutDirectionChange:
            place();
            break;
        default:
            break;
    }
    return QAbstractButton::event(event);
}

void ShortcutRecorder::paintEvent(QPaintEvent* /*event*/) {
    QPainter widgetPainter(this);
    const double opacity = isEnabled() ? 1 : control_style::disabledOpacity;
    paintLayer(widgetPainter, size(), opacity, [this](QPainter& painter) { paintButton(painter); });
}

void ShortcutRecorder::paintButton(QPainter& painter) const {
    const QRectF rect = buttonRect();
    switch (shown_) {
        case Shown::keys:
            paintKeyChips(painter, rect.topLeft(), keys_, size_);
            break;
        case Shown::record:
            paintDashedCapsule(painter, rect, palette::muted);
            paintText(painter, rect, recordText(), palette::muted);
            break;
        case Shown::recording:
            paintCapsule(painter, rect, palette::amber);
            paintText(painter, rect, recordingText(), palette::ink);
            break;
    }
}

}  // namespace tessellon
