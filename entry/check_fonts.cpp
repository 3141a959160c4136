#include "entry/check_fonts.h"

#include "platform/files.h"
#include "platform/prompts.h"
#include "platform/shared/breather.h"
#include "platform/system.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace quorvane {

namespace {

constexpr int FirstBar = 3;
constexpr int LastBar = 11;

struct Family {
    const char* name;
    std::vector<const char*> files;
    bool found = false;
};

std::vector<Family> Families() {
    return {{"Courier", {"courer.fon"}},
            {"Monotype Corsiva", {"mtcorsva.ttf"}},
            {"MS Sans Serif", {"sserifer.fon"}},
            {"Microsoft Sans Serif", {"micross.ttf"}},
            {"SansSerif", {"sanss___.ttf", "sanssb__.ttf", "sanssbo_.ttf", "sansso__.ttf"}},
            {"Arial", {"arial.ttf", "arialbd.ttf", "arialbi.ttf", "ariali.ttf"}}};
}

// False where any file of the family could not be added: the results are joined bit by bit.
bool AddFamily(const Family& family, System& system, const Files& files, const std::string& folder) {
    int joined = ~0;
    for (const char* name : family.files) {
        int added = system.AddFontFile(folder + files.Separator() + "Fonts" + files.Separator() + name);
        if (added == 0) added = system.AddFontFile(folder + files.Separator() + name);
        joined &= added;
    }
    return joined != 0;
}

} // namespace

bool CheckFonts(const Platform& platform, const std::function<void(int bar)>& progress) {
    std::vector<Family> families = Families();
    const std::vector<std::string> names = platform.system.FontNames();
    Breather breather(platform.clock, platform.events);
    for (std::size_t i = 0; i < names.size(); ++i) {
        for (Family& family : families) {
            family.found |= names[i] == family.name;
        }
        progress(FirstBar + static_cast<int>(i * (LastBar - FirstBar) / names.size()));
        breather.Breathe();
    }
    progress(LastBar);
    const std::string folder = platform.files.ProgramDirectory();
    for (const Family& family : families) {
        if (family.found || AddFamily(family, platform.system, platform.files, folder) ||
            platform.system.SubstitutesFont(family.name)) {
            continue;
        }
        platform.prompts.Message(std::string("Font :[") + family.name +
                                     "] - isn't installed on to Yours system.\r\nPlease, install this font!",
                                 "Warning!", message_style::Warning);
    }
    return true;
}

} // namespace quorvane
