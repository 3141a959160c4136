#include "platform/linux/desktop/work_area.h"

#include "platform/linux/desktop/command.h"
#include "platform/linux/desktop/root_numbers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRect>
#include <cstdlib>
#include <optional>

namespace quorvane {

namespace {

// A screen and the part of it that is free, in one unit that need not be the machine's pixel.
struct FreePart {
    QRect screen;
    QRect area;
};

// Of the workspace in front; its numbers cover all screens together.
std::optional<FreePart> AskWindowManager() {
    const std::vector<Output> outputs = FindX11Outputs();
    const std::vector<std::int32_t> areas = RootNumbers("_NET_WORKAREA");
    const std::vector<std::int32_t> current = RootNumbers("_NET_CURRENT_DESKTOP");
    const std::size_t at =
        current.size() == 1 && current[0] > 0 ? static_cast<std::size_t>(current[0]) * 4 : 0;
    if (outputs.empty() || areas.size() < 4 || at > areas.size() - 4) return std::nullopt;
    const Output& primary = outputs.front();
    return FreePart{QRect(primary.x, primary.y, primary.size.width, primary.size.height),
                    QRect(areas[at], areas[at + 1], areas[at + 2], areas[at + 3])};
}

QJsonArray AskSway(const char* question, Patience& patience) {
    const auto answer = RunCommand("swaymsg", {"-r", "-t", question}, patience);
    return QJsonDocument::fromJson(QByteArray::fromStdString(answer.value_or(""))).array();
}

QRect RectOf(const QJsonObject& thing) {
    const QJsonObject rect = thing["rect"].toObject();
    return {rect["x"].toInt(), rect["y"].toInt(), rect["width"].toInt(), rect["height"].toInt()};
}

std::optional<FreePart> AskSway(const std::string& outputName, Patience& patience) {
    FreePart part;
    const QString name = QString::fromStdString(outputName);
    for (const auto& output : AskSway("get_outputs", patience)) {
        if (output.toObject()["name"].toString() == name) part.screen = RectOf(output.toObject());
    }
    for (const auto& workspace : AskSway("get_workspaces", patience)) {
        const QJsonObject fields = workspace.toObject();
        if (fields["output"].toString() == name && fields["visible"].toBool()) part.area = RectOf(fields);
    }
    if (part.screen.isEmpty() || part.area.isEmpty()) return std::nullopt;
    return part;
}

} // namespace

PixelRect FindWorkArea(const Output& primary, Patience& patience) {
    const PixelSize size = primary.size;
    const PixelRect whole{0, 0, size.width, size.height};
    const auto part = std::getenv("SWAYSOCK") ? AskSway(primary.name, patience) : AskWindowManager();
    if (!part || part->screen.isEmpty()) return whole;
    const QRect area = part->area.intersected(part->screen).translated(-part->screen.topLeft());
    if (area.isEmpty()) return whole;
    const double across = double{1} * size.width / part->screen.width();
    const double down = double{1} * size.height / part->screen.height();
    const int left = qRound(area.left() * across);
    const int top = qRound(area.top() * down);
    return {left, top, qRound((area.left() + area.width()) * across) - left,
            qRound((area.top() + area.height()) * down) - top};
}

} // namespace quorvane
