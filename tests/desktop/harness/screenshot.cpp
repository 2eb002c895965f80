#include "harness/screenshot.h"

#include <QImage>
#include <QString>

namespace tessellon::desktop {

bool saveScreenshot(XSession& session, const std::filesystem::path& path) {
    constexpr std::uint32_t allPlanes = ~0U;
    const Reply<xcb_get_image_reply_t> pixels(xcb_get_image_reply(
        session.connection(),
        xcb_get_image(session.connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, session.root(), 0, 0,
                      session.width(), session.height(), allPlanes),
        nullptr));
    constexpr int bytesPerPixel = 4;
    if (!pixels || pixels->depth != 24 ||
        xcb_get_image_data_length(pixels.get()) <
            session.width() * session.height() * bytesPerPixel) {
        return false;
    }
    std::error_code ignored;
    std::filesystem::create_directories(path.parent_path(), ignored);
    const QImage image(xcb_get_image_data(pixels.get()), session.width(), session.height(),
                       session.width() * bytesPerPixel, QImage::Format_RGB32);
    return image.save(QString::fromStdString(path.string()), "PNG");
}

}  // namespace tessellon::desktop
