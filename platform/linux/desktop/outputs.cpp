#include "platform/linux/desktop/outputs.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cstdlib>

namespace quorvane {

// The toolkit knows the primary one of a Wayland session where its X server does.
std::vector<Output> FindOutputs() {
    if (!std::getenv("WAYLAND_DISPLAY")) return FindX11Outputs();
    std::vector<Output> outputs = FindWaylandOutputs();
    if (outputs.empty()) return FindX11Outputs();
    const QScreen* primary = QGuiApplication::primaryScreen();
    const std::string name = primary ? primary->name().toStdString() : std::string();
    const auto found = std::find_if(outputs.begin(), outputs.end(),
                                    [&name](const Output& output) { return output.name == name; });
    if (found != outputs.end()) std::rotate(outputs.begin(), found, found + 1);
    return outputs;
}

} // namespace quorvane
