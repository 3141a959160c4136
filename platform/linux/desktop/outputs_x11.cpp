#include "platform/linux/desktop/outputs.h"

#include "platform/linux/desktop/xcb_reply.h"

#include <algorithm>
#include <xcb/randr.h>

namespace quorvane {

namespace {

std::string AtomName(xcb_connection_t* connection, xcb_atom_t atom) {
    const auto reply = Own(xcb_get_atom_name_reply(connection, xcb_get_atom_name(connection, atom), nullptr));
    if (!reply) return {};
    return {xcb_get_atom_name_name(reply.get()),
            static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

// The monitors of the extension's version 1.5; none where the server is older.
std::vector<Output> Monitors(xcb_connection_t* connection, xcb_window_t root) {
    const auto version =
        Own(xcb_randr_query_version_reply(connection, xcb_randr_query_version(connection, 1, 5), nullptr));
    if (!version || (version->major_version == 1 && version->minor_version < 5)) return {};
    const auto reply =
        Own(xcb_randr_get_monitors_reply(connection, xcb_randr_get_monitors(connection, root, 1), nullptr));
    if (!reply) return {};
    std::vector<Output> outputs;
    std::size_t primary = 0;
    for (auto each = xcb_randr_get_monitors_monitors_iterator(reply.get()); each.rem > 0;
         xcb_randr_monitor_info_next(&each)) {
        if (each.data->primary) primary = outputs.size();
        outputs.push_back({AtomName(connection, each.data->name),
                           {each.data->width, each.data->height},
                           each.data->x,
                           each.data->y});
    }
    std::rotate(outputs.begin(), outputs.begin() + static_cast<std::ptrdiff_t>(primary),
                outputs.begin() + static_cast<std::ptrdiff_t>(std::min(primary + 1, outputs.size())));
    return outputs;
}

bool HasExtension(xcb_connection_t* connection) {
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection, &xcb_randr_id);
    return extension && extension->present;
}

} // namespace

std::vector<Output> FindX11Outputs() {
    const XConnection connection = ConnectToX();
    if (xcb_connection_has_error(connection.get())) return {};
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data;
    if (HasExtension(connection.get())) {
        std::vector<Output> outputs = Monitors(connection.get(), screen->root);
        if (!outputs.empty()) return outputs;
    }
    return {{"", {screen->width_in_pixels, screen->height_in_pixels}}};
}

} // namespace quorvane
