#include "ui/fonts.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QScreen>
#include <QStringList>
#include <algorithm>
#include <cmath>

namespace tessellon {
namespace {

constexpr double pointsPerInch = 72;
constexpr double fallbackDpi = 96;
constexpr double tolerance = 0.75;  // logical pixels

// The resolution by which Qt turns a font's points into pixels on every paint device.
double logicalDpi() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen != nullptr ? std::round(screen->logicalDotsPerInchY()) : fallbackDpi;
}

double exactPixelSize(const QFont& font) {
    return font.pointSizeF() * logicalDpi() / pointsPerInch;
}

// Qt rounds the size of every font to whole pixels. What a font of a broken size measures and draws
// is therefore brought back to that size by this factor; glyphs without hinting bear it well.
double drawnScale(const QFont& font) {
    const double exact = exactPixelSize(font);
    const double whole = std::round(exact);
    return exact > 0 && whole > 0 ? exact / whole : 1;
}

}  // namespace

QFont interfaceFont(double pixelSize, QFont::Weight weight) {
    // The list differs in nothing else, since Qt would take the glyphs it has cached for the other.
    QStringList families{QStringLiteral("Quicksand"), QStringLiteral("Inter"),
                         QStringLiteral("DejaVu Sans"), QStringLiteral("sans-serif")};
    if (weight == QFont::Medium) {
        // Some systems know the medium weight only as a family of its own.
        families.prepend(QStringLiteral("Quicksand Medium"));
    }
    QFont font;
    font.setFamilies(families);
    font.setStyleHint(QFont::SansSerif);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    // QFont's own pixel sizes are whole numbers; its point sizes keep the fraction.
    font.setPointSizeF(pixelSize * pointsPerInch / logicalDpi());
    return font;
}

double textWidth(const QFont& font, const QString& text) {
    return QFontMetricsF(font).horizontalAdvance(text) * drawnScale(font);
}

double lineHeight(const QFont& font) {
    return QFontMetricsF(font).height() * drawnScale(font);
}

FittedText fitText(const QString& text, double width, double pixelSize, QFont::Weight weight,
                   double minimumScale) {
    FittedText fitted{text, interfaceFont(pixelSize, weight)};
    const double wanted = textWidth(fitted.font, text);
    if (wanted <= width) {
        return fitted;
    }
    fitted.font = interfaceFont(pixelSize * std::max(minimumScale, width / wanted), weight);
    // Advances do not shrink quite evenly: a hair's breadth too much is no reason to cut.
    if (textWidth(fitted.font, text) > width + tolerance) {
        fitted.text = QFontMetricsF(fitted.font)
                          .elidedText(text, Qt::ElideRight, width / drawnScale(fitted.font));
    }
    return fitted;
}

void drawLine(QPainter& painter, const QRectF& rect, const QString& text, Qt::Alignment alignment) {
    const QFont& font = painter.font();
    const double scale = drawnScale(font);
    const double slack = rect.width() - textWidth(font, text);
    double left = rect.left();
    if ((alignment & Qt::AlignHCenter) != 0) {
        left += slack / 2;
    } else if ((alignment & Qt::AlignRight) != 0) {
        left += slack;
    }
    // Centring the line box would leave room for descenders that few of the texts have.
    const double baseline = rect.center().y() + QFontMetricsF(font).capHeight() * scale / 2;
    painter.save();
    painter.translate(left, baseline);
    painter.scale(scale, scale);
    painter.drawText(QPointF(0, 0), text);
    painter.restore();
}

}  // namespace tessellon
