#include "platform/linux/desktop/monitors.h"

#include <QScreen>

#include <cstdlib>
#include <memory>
#include <xcb/randr.h>

namespace quorvane {

std::vector<PixelRect> ServerMonitors() {
    std::vector<PixelRect> monitors;
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const xcb_query_extension_reply_t* randr =
        xcb_connection_has_error(connection) ? nullptr : xcb_get_extension_data(connection, &xcb_randr_id);
    if (randr && randr->present) {
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
        const std::unique_ptr<xcb_randr_get_monitors_reply_t, decltype(&std::free)> reply(
            xcb_randr_get_monitors_reply(connection, xcb_randr_get_monitors(connection, root, 1), nullptr),
            &std::free);
        if (reply) {
            auto all = xcb_randr_get_monitors_monitors_iterator(reply.get());
            for (; all.rem > 0; xcb_randr_monitor_info_next(&all))
                monitors.push_back({all.data->x, all.data->y, all.data->width, all.data->height});
        }
    }
    xcb_disconnect(connection);
    return monitors;
}

PixelRect TrueMonitor(const PixelRect& reckoned, const std::vector<PixelRect>& monitors) {
    constexpr int Rounding = 4; // one of the toolkit's pixels, at the largest scale there is
    for (const PixelRect& monitor : monitors) {
        if (monitor.x == reckoned.x && monitor.y == reckoned.y &&
            std::abs(monitor.width - reckoned.width) <= Rounding &&
            std::abs(monitor.height - reckoned.height) <= Rounding) {
            return monitor;
        }
    }
    return reckoned;
}

PixelRect ScreenPixels(const QScreen& screen, const std::vector<PixelRect>& monitors) {
    const QRect geometry = screen.geometry();
    const double scale = screen.devicePixelRatio();
    // The place is in the machine's pixels already.
    return TrueMonitor(
        {geometry.x(), geometry.y(), qRound(geometry.width() * scale), qRound(geometry.height() * scale)},
        monitors);
}

} // namespace quorvane
