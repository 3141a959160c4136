#include "platform/linux/desktop/desktop_store.h"

#include "platform/headless.h"
#include "platform/linux/base/system_values.h"

#include <QGuiApplication>
#include <QPalette>
#include <QToolTip>

namespace quorvane {
namespace {

// Red, green and blue with blanks between them.
std::string ColorText(const QColor& color) {
    return std::to_string(color.red()) + " " + std::to_string(color.green()) + " " +
           std::to_string(color.blue());
}

std::string ButtonFace() {
    return ColorText(QGuiApplication::palette().color(QPalette::Button));
}

std::string InfoWindow() {
    return ColorText(QToolTip::palette().color(QPalette::ToolTipBase));
}

} // namespace

std::unique_ptr<Store> CreateDesktopStore(std::string& why) {
    std::vector<SystemValue> values{{"control panel\\colors", "buttonface", ButtonFace},
                                    {"control panel\\colors", "infowindow", InfoWindow}};
    return std::make_unique<SystemValues>(CreateStore(why), std::move(values));
}

} // namespace quorvane
