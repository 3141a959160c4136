#include "platform/linux/desktop/font_system.h"

#include <QFileInfo>
#include <QFontDatabase>

namespace quorvane {

int GuiFontSystem::AddFontFile(const std::string& path) {
    const QString file = QString::fromStdString(path);
    const int id = QFileInfo::exists(file) ? QFontDatabase::addApplicationFont(file) : -1;
    return id < 0 ? 0 : static_cast<int>(QFontDatabase::applicationFontFamilies(id).size());
}

} // namespace quorvane
