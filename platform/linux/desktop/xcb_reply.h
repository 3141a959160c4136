#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <xcb/xcb.h>

namespace quorvane {

// What XCB answers belongs to the asker and is freed by it; null where there was no answer.
template<typename T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

template<typename T>
Reply<T> Own(T* reply) {
    return {reply, &std::free};
}

// A connection of our own to the person's X server. Never null; xcb_connection_has_error tells whether there
// is one.
using XConnection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

inline XConnection ConnectToX() {
    return {xcb_connect(nullptr, nullptr), &xcb_disconnect};
}

inline xcb_atom_t InternAtom(xcb_connection_t* connection, std::string_view name) {
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const auto reply = Own(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

} // namespace quorvane
