#include "platform/linux/desktop/font_system.h"

#include <QFileInfo>
#include <QFontDatabase>
#include <algorithm>
#include <fontconfig/fontconfig.h>

namespace quorvane {
namespace {

std::string FontFamily(FcPattern* pattern, int index) {
    FcChar8* family = nullptr;
    const bool found = FcPatternGetString(pattern, FC_FAMILY, index, &family) == FcResultMatch;
    return found ? reinterpret_cast<const char*>(family) : "";
}

} // namespace

std::vector<std::string> GuiFontSystem::FontNames() {
    std::vector<std::string> names;
    FcPattern* all = FcPatternCreate();
    FcObjectSet* wanted = FcObjectSetBuild(FC_FAMILY, nullptr);
    if (FcFontSet* fonts = FcFontList(nullptr, all, wanted)) {
        for (int font = 0; font < fonts->nfont; ++font) {
            std::string name;
            for (int i = 0; !(name = FontFamily(fonts->fonts[font], i)).empty(); ++i) {
                names.push_back(name);
            }
        }
        FcFontSetDestroy(fonts);
    }
    FcObjectSetDestroy(wanted);
    FcPatternDestroy(all);
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

bool GuiFontSystem::SubstitutesFont(const std::string& family) {
    FcPattern* wanted = FcPatternCreate();
    FcPatternAddString(wanted, FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcConfigSubstitute(nullptr, wanted, FcMatchPattern);
    FcDefaultSubstitute(wanted);
    FcResult result = FcResultNoMatch;
    FcPattern* match = FcFontMatch(nullptr, wanted, &result);
    const bool found = match && !FontFamily(match, 0).empty();
    if (match) FcPatternDestroy(match);
    FcPatternDestroy(wanted);
    return found;
}

int GuiFontSystem::AddFontFile(const std::string& path) {
    const QString file = QString::fromStdString(path);
    const int id = QFileInfo::exists(file) ? QFontDatabase::addApplicationFont(file) : -1;
    return id < 0 ? 0 : static_cast<int>(QFontDatabase::applicationFontFamilies(id).size());
}

} // namespace quorvane
