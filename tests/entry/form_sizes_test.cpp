#include "config/global_record.h"
#include "core/locale_strings.h"
#include "diagnostics/frm_error.h"
#include "dialogues/frm_transparency.h"
#include "dialogues/input_box.h"
#include "dialogues/mess_box.h"
#include "locale/locale_text.h"
#include "platform/memory/memory_platform.h"
#include "shell/frm_splash.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>

namespace quorvane {
namespace {

constexpr TwipSize Room{1024 * 15, 740 * 15}; // a small screen above its task bar

// One of every form that shows itself, with what it asks at its longest.
class EveryForm {
  public:
    EveryForm(Forms& forms, const Platform& platform)
        : frmError_(forms, record_, platform)
        , frmSplash_(forms, platform)
        , frmTransparency_(forms)
        , inputBox_(forms)
        , messBox_(forms) {
        std::string message;
        while (message.size() < 300)
            message += "whatever went wrong ";
        frmError_.Label3.SetCaption(message);
        inputBox_.Label1.SetCaption(message.substr(0, 60));
        messBox_.Label1.SetCaption(message);
    }
    std::vector<Form*> All() { return {&frmError_, &frmSplash_, &frmTransparency_, &inputBox_, &messBox_}; }

  private:
    GlobalRecord record_;
    frmError frmError_;
    frmSplash frmSplash_;
    frmTransparency frmTransparency_;
    InputBox inputBox_;
    MessBox messBox_;
};

// All words of the forms, each of which fits.
std::string WordsIn(const LocaleStrings& strings, const std::string& language) {
    MemoryPlatform machine;
    const Platform platform = machine.Services();
    Forms forms(platform, &strings);
    EveryForm every(forms, platform);
    std::string words;
    for (Form* form : every.All()) {
        form->Show();
        const TwipSize least = form->LeastSize();
        EXPECT_LE(least.width, Room.width) << form->Name() << ", " << language;
        EXPECT_LE(least.height, Room.height) << form->Name() << ", " << language;
        for (const Control* control : form->Controls())
            words += control->Caption() + '\n';
    }
    return words;
}

TEST(FormSizes, NoLanguageMakesAFormTooLargeForASmallScreen) {
    std::set<std::string> words{WordsIn({}, "built in")};
    for (const auto& file : std::filesystem::directory_iterator(QUORVANE_LOCALES)) {
        if (file.path().extension() != ".res") continue;
        LocaleStrings strings;
        strings.SetLoaded(true);
        std::ifstream in(file.path(), std::ios::binary);
        ASSERT_TRUE(LoadLocaleStrings(std::string(std::istreambuf_iterator<char>(in), {}), strings));
        words.insert(WordsIn(strings, file.path().filename().string()));
    }
    EXPECT_GT(words.size(), 10U) << "the languages were taken";
}

} // namespace
} // namespace quorvane
