#include "ui/key_chips.h"

#include "ui/accessible_role.h"
#include "ui/control_style.h"
#include "ui/fonts.h"
#include "ui/palette.h"
#include "ui/shapes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace tessellon {
namespace {

constexpr double paddingScale = 0.3;
constexpr double radiusScale = 0.28;
constexpr double gapScale = 0.16;

struct SpokenKey {
    char16_t sign;
    std::u16string_view name;
};

constexpr std::array<SpokenKey, 13> spokenKeyTable{{
    {u'⌃', u"Control"},
    {u'⌥', u"Alt"},
    {u'⇧', u"Shift"},
    {u'⌘', u"Super"},
    {u'←', u"Left Arrow"},
    {u'→', u"Right Arrow"},
    {u'↑', u"Up Arrow"},
    {u'↓', u"Down Arrow"},
    {u'↩', u"Return"},
    {u'⌫', u"Backspace"},
    {u'⌦', u"Delete"},
    {u'⇥', u"Tab"},
    {u'⎋', u"Escape"},
}};

QString spoken(const QString& key) {
    const auto found = std::ranges::find_if(
        spokenKeyTable, [&](const SpokenKey& row) { return key == QChar(row.sign); });
    return found != spokenKeyTable.end() ? QString::fromUtf16(found->name.data()) : key;
}

QFont capFont(double size) {
    return interfaceFont(keyChipsFontSize(size), QFont::DemiBold);
}

double capWidth(const QFont& font, const QString& key, double size) {
    const double padding = onePerCharacter(key).size() > 1 ? size * paddingScale : 0;
    return std::max(size, textWidth(font, key) + 2 * padding);
}

// Whole pixels, so that the edges of all the caps are equally sharp.
double capGap(double size) {
    return std::max(1.0, std::round(size * gapScale));
}

}  // namespace

QStringList onePerCharacter(const QString& text) {
    QStringList characters;
    for (const char32_t code : text.toUcs4()) {
        characters.append(QString::fromUcs4(&code, 1));
    }
    return characters;
}

QString spokenKeys(const QStringList& keys) {
    QStringList names;
    for (const QString& key : keys) {
        names.append(spoken(key));
    }
    return names.join(QLatin1Char(' '));
}

QSizeF keyChipsSize(const QStringList& keys, double size) {
    if (keys.isEmpty()) {
        return {0, 0};
    }
    const QFont font = capFont(size);
    double width = capGap(size) * static_cast<double>(keys.size() - 1);
    for (const QString& key : keys) {
        width += capWidth(font, key, size);
    }
    return {width, size};
}

void paintKeyChips(QPainter& painter, const QPointF& topLeft, const QStringList& keys,
                   double size) {
    const QFont font = capFont(size);
    painter.save();
    painter.setFont(font);
    painter.setPen(palette::ink);
    double left = topLeft.x();
    for (const QString& key : keys) {
        const QRectF cap(left, topLeft.y(), capWidth(font, key, size), size);
        paintRoundedRect(painter, cap, size * radiusScale, palette::paper,
                         {palette::ink, control_style::outline});
        drawLine(painter, cap, key);
        left += cap.width() + capGap(size);
    }
    painter.restore();
}

KeyChips::KeyChips(const QStringList& keys, double size, QWidget* parent)
    : QWidget(parent), size_(size) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAccessibleRole(*this, QAccessible::StaticText);
    setKeys(keys);
}

void KeyChips::setKeys(const QStringList& keys) {
    keys_ = keys;
    setAccessibleName(spokenKeys(keys));
    updateGeometry();
    update();
}

QSize KeyChips::sizeHint() const {
    const QSizeF exact = keyChipsSize(keys_, size_);
    return {static_cast<int>(std::ceil(exact.width())),
            static_cast<int>(std::ceil(exact.height()))};
}

void KeyChips::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintKeyChips(painter, QPointF(0, 0), keys_, size_);
}

}  // namespace tessellon
