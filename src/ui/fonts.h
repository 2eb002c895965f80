// The program's one typeface, and the ways in which its views place text.
#pragma once

#include <QFont>
#include <QPainter>
#include <QRectF>
#include <QString>

namespace tessellon {

/// The rounded interface font with its stand-ins for signs it lacks. `pixelSize` is in logical
/// pixels and may be a fraction, which the functions below heed; Qt's own labels and drawing round
/// it. A QGuiApplication must exist.
QFont interfaceFont(double pixelSize, QFont::Weight weight = QFont::Medium);

/// The width of one line of text, in logical pixels.
double textWidth(const QFont& font, const QString& text);
/// The height of one line of text, in logical pixels.
double lineHeight(const QFont& font);

struct FittedText {
    QString text;
    QFont font;
};

/// `text` for one line of `width` logical pixels: in a smaller size when it does not fit, but not
/// below `minimumScale` (0…1] of `pixelSize`; cut at the end with an ellipsis when even that is
/// too wide.
FittedText fitText(const QString& text, double width, double pixelSize, QFont::Weight weight,
                   double minimumScale);

/// Draws one line in the painter's font and pen with the middle of its capitals on the middle of
/// `rect`; of `alignment` only the horizontal part counts. Line and ellipsis are the caller's:
/// nothing is clipped.
void drawLine(QPainter& painter, const QRectF& rect, const QString& text,
              Qt::Alignment alignment = Qt::AlignHCenter);

}  // namespace tessellon
