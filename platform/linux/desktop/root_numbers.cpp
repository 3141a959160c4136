#include "platform/linux/desktop/root_numbers.h"

#include "platform/linux/desktop/xcb_reply.h"

namespace quorvane {

std::vector<std::int32_t> RootNumbers(std::string_view name) {
    constexpr std::uint32_t Most = 256;
    const XConnection connection = ConnectToX();
    if (xcb_connection_has_error(connection.get())) return {};
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root;
    const auto asked = xcb_get_property(connection.get(), 0, root, InternAtom(connection.get(), name),
                                        XCB_ATOM_CARDINAL, 0, Most);
    const auto reply = Own(xcb_get_property_reply(connection.get(), asked, nullptr));
    if (!reply || reply->format != 32) return {};
    const auto* first = static_cast<const std::int32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

} // namespace quorvane
