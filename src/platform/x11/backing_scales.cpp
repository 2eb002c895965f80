#include "platform/x11/backing_scales.h"

#include "platform/x11/reply.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace tessellon::x11 {

Size backingScale(const Size& mode, std::uint16_t rotation, const Size& area) {
    if (!(mode.width > 0 && mode.height > 0 && area.width > 0 && area.height > 0)) {
        return {1, 1};
    }
    Size pixels = mode;
    if ((rotation & (XCB_RANDR_ROTATION_ROTATE_90 | XCB_RANDR_ROTATION_ROTATE_270)) != 0) {
        std::swap(pixels.width, pixels.height);
    }
    return {pixels.width / area.width, pixels.height / area.height};
}

std::map<xcb_randr_output_t, Size> backingScales(
    xcb_connection_t* xcb, const xcb_randr_get_screen_resources_current_reply_t& resources) {
    std::map<xcb_randr_mode_t, Size> modes;
    const auto* const infos = xcb_randr_get_screen_resources_current_modes(&resources);
    for (int i = 0; i < xcb_randr_get_screen_resources_current_modes_length(&resources); ++i) {
        modes[infos[i].id] = {static_cast<double>(infos[i].width),
                              static_cast<double>(infos[i].height)};
    }
    std::vector<xcb_randr_get_crtc_info_cookie_t> cookies;
    const auto* const crtcs = xcb_randr_get_screen_resources_current_crtcs(&resources);
    const int count = xcb_randr_get_screen_resources_current_crtcs_length(&resources);
    cookies.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        cookies.push_back(
            xcb_randr_get_crtc_info_unchecked(xcb, crtcs[i], resources.config_timestamp));
    }
    std::map<xcb_randr_output_t, Size> scales;
    for (const auto cookie : cookies) {
        const Reply<xcb_randr_get_crtc_info_reply_t> crtc(
            xcb_randr_get_crtc_info_reply(xcb, cookie, nullptr));
        const auto mode = crtc ? modes.find(crtc->mode) : modes.end();
        if (mode == modes.end()) {
            continue;
        }
        const Size area{static_cast<double>(crtc->width), static_cast<double>(crtc->height)};
        const auto* const outputs = xcb_randr_get_crtc_info_outputs(crtc.get());
        for (int i = 0; i < xcb_randr_get_crtc_info_outputs_length(crtc.get()); ++i) {
            scales[outputs[i]] = backingScale(mode->second, crtc->rotation, area);
        }
    }
    return scales;
}

}  // namespace tessellon::x11
