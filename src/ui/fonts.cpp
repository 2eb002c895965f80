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

// The resolution by which Qt turns a font's points into pixels on every paint device.
double logicalDpi() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen != nullptr ? std::round(screen->logicalDotsPerInchY()) : fallbackDpi;
}

}  // namespace

QFont interfaceFont(double pixelSize, QFont::Weight weight) {
    QFont font;
    // Always the same list: with a second one Qt takes the glyphs it has cached for the first.
    font.setFamilies({QStringLiteral("Quicksand"), QStringLiteral("Inter"),
                      QStringLiteral("DejaVu Sans"), QStringLiteral("sans-serif")});
    font.setStyleHint(QFont::SansSerif);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    // QFont's own pixel sizes are whole numbers, its point sizes are not.
    font.setPointSizeF(pixelSize * pointsPerInch / logicalDpi());
    return font;
}

double textWidth(const QFont& font, const QString& text) {
    return QFontMetricsF(font).horizontalAdvance(text);
}

double lineHeight(const QFont& font) {
    return QFontMetricsF(font).height();
}

FittedText fitText(const QString& text, double width, double pixelSize, QFont::Weight weight,
                   double minimumScale) {
    FittedText fitted{text, interfaceFont(pixelSize, weight)};
    const double wanted = textWidth(fitted.font, text);
    if (wanted <= width) {
        return fitted;
    }
    const double scale = std::max(minimumScale, width / wanted);
    fitted.font = interfaceFont(pixelSize * scale, weight);
    // Advances do not shrink quite evenly; a last hair's breadth is taken off rather than cutting
    // a letter that the scale was made for.
    if (scale > minimumScale) {
        const double excess = textWidth(fitted.font, text) / width;
        if (excess > 1) {
            fitted.font =
                interfaceFont(pixelSize * std::max(minimumScale, scale / excess * 0.999), weight);
        }
    }
    fitted.text = QFontMetricsF(fitted.font).elidedText(text, Qt::ElideRight, width);
    return fitted;
}

void drawLine(QPainter& painter, const QRectF& rect, const QString& text, Qt::Alignment alignment) {
    const QFontMetricsF metrics(painter.font(), painter.device());
    const double slack = rect.width() - metrics.horizontalAdvance(text);
    double left = rect.left();
    if ((alignment & Qt::AlignHCenter) != 0) {
        left += slack / 2;
    } else if ((alignment & Qt::AlignRight) != 0) {
        left += slack;
    }
    // Centring the line box would leave room for descenders that few of the texts have.
    painter.drawText(QPointF(left, rect.center().y() + metrics.capHeight() / 2), text);
}

}  // namespace tessellon
