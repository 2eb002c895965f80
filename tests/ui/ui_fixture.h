// A Qt application without a display, and ways to look at what a widget draws.
#pragma once

#include <QApplication>
#include <QColor>
#include <QImage>
#include <QPainter>
#include <QWidget>
#include <cmath>
#include <cstdlib>
#include <functional>

#include <gtest/gtest.h>

namespace tessellon {

/// The one application of the process; made on first use, since every case may run on its own.
inline QApplication& testApplication() {
    static QApplication* application = nullptr;
    if (application == nullptr) {
        static int argc = 1;
        static char name[] = "ui_test";
        static char* argv[] = {name, nullptr};
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application = new QApplication(argc, argv);
    }
    return *application;
}

class UiTest : public testing::Test {
  protected:
    UiTest() { testApplication(); }
};

/// What `paint` draws onto an empty picture of the given size.
inline QImage painted(const QSize& size, const std::function<void(QPainter&)>& paint) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paint(painter);
    return image;
}

/// What the widget draws by itself, on nothing.
inline QImage drawn(QWidget& widget) {
    return painted(widget.size(), [&](QPainter& painter) {
        widget.render(&painter, QPoint(), QRegion(), QWidget::RenderFlags());
    });
}

/// True when the pixel is opaque and of this colour.
inline bool shows(const QImage& image, double x, double y, const QColor& color) {
    const QColor pixel =
        image.pixelColor(static_cast<int>(std::floor(x)), static_cast<int>(std::floor(y)));
    return pixel.alpha() == 255 && std::abs(pixel.red() - color.red()) <= 3 &&
           std::abs(pixel.green() - color.green()) <= 3 &&
           std::abs(pixel.blue() - color.blue()) <= 3;
}

}  // namespace tessellon
