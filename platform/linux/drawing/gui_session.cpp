#include "platform/linux/drawing/gui_session.h"

#include "platform/linux/drawing/quiet_qt.h"

#include <QGuiApplication>

namespace quorvane {

struct GuiSession::Headless {
    char name[10] = "quorvane";
    char option[10] = "-platform";
    char platform[10] = "offscreen";
    char* arguments[4] = {name, option, platform, nullptr};
    int count = 3;
    QGuiApplication application{count, arguments};
};

GuiSession::GuiSession() = default;
GuiSession::~GuiSession() = default;

bool GuiSession::Ready() {
    if (!QCoreApplication::instance()) {
        const QuietQt quiet;
        headless_ = std::make_unique<Headless>();
    }
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

} // namespace quorvane
