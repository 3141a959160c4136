#include "platform/linux/desktop/desktop_store.h"

#include "platform/headless.h"
#include "platform/linux/base/system_values.h"

#include <QGuiApplication>
#include <QPalette>

namespace quorvane {
namespace {

// Red, green and blue with blanks between them.
std::string ButtonFace() {
    const QColor color = QGuiApplication::palette().color(QPalette::Button);
    return std::to_string(color.red()) + " " + std::to_string(color.green()) + " " +
           std::to_string(color.blue());
}

} // namespace

std::unique_ptr<Store> CreateDesktopStore(std::string& why) {
    std::vector<SystemValue> values{{"control panel\\colors", "buttonface", ButtonFace}};
    return std::make_unique<SystemValues>(CreateStore(why), std::move(values));
}

} // namespace quorvane
