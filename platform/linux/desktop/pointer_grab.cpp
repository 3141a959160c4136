#include "platform/linux/desktop/pointer_grab.h"

#include "platform/linux/desktop/xcb_reply.h"

namespace quorvane {

// It can only be tried. A client of its own, so that our own menus are seen as well.
std::optional<bool> IsPointerGrabbed() {
    if (std::getenv("WAYLAND_DISPLAY")) return std::nullopt;
    const XConnection connection = ConnectToX();
    if (xcb_connection_has_error(connection.get())) return std::nullopt;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root;
    const auto asked =
        xcb_grab_pointer(connection.get(), 0, root, 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                         XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME);
    const auto reply = Own(xcb_grab_pointer_reply(connection.get(), asked, nullptr));
    if (!reply) return std::nullopt;
    return reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

} // namespace quorvane
