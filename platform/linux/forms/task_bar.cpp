#include "platform/linux/forms/task_bar.h"

#include <QApplication>
#include <QWidget>
#include <array>
#include <cstdlib>
#include <string_view>
#include <xcb/xcb.h>

namespace quorvane {

void SetSkippedByTaskBar(QWidget& window) {
    const auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11) return;
    xcb_connection_t* connection = x11->connection();
    constexpr std::array<std::string_view, 3> Names = {"_NET_WM_STATE", "_NET_WM_STATE_SKIP_TASKBAR",
                                                       "_NET_WM_STATE_SKIP_PAGER"};
    std::array<xcb_intern_atom_cookie_t, 3> asked{};
    for (std::size_t i = 0; i < Names.size(); ++i)
        asked[i] =
            xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(Names[i].size()), Names[i].data());
    std::array<xcb_atom_t, 3> atoms{};
    for (std::size_t i = 0; i < asked.size(); ++i) {
        xcb_intern_atom_reply_t* answer = xcb_intern_atom_reply(connection, asked[i], nullptr);
        atoms[i] = answer ? answer->atom : xcb_atom_t{XCB_ATOM_NONE};
        std::free(answer);
    }
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                        atoms[0], XCB_ATOM_ATOM, 32, 2, &atoms[1]);
}

} // namespace quorvane
