#include "config/global_record.h"
#include "core/locale_strings.h"
#include "diagnostics/frm_error.h"
#include "dialogues/frm_transparency.h"
#include "dialogues/input_box.h"
#include "dialogues/mess_box.h"
#include "platform/forms/controls.h"
#include "platform/memory/memory_platform.h"
#include "shell/frm_splash.h"

#include <gtest/gtest.h>
#include <map>

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

struct Language {
    std::string name;
    LocaleStrings strings;
};

// A made-up language whose words are a third longer than the built-in ones.
Language LongWords() {
    Language language{"long words", {}};
    language.strings.SetLoaded(true);
    const auto lengthen = [&](const Words& words) {
        language.strings.Set(words.Id(), words.Text() + std::string((words.Text().size() + 2) / 3, 'o'));
    };
    MemoryPlatform machine;
    const Platform platform = machine.Services();
    Forms forms(platform);
    EveryForm every(forms, platform);
    for (Form* form : every.All()) {
        lengthen(form->CaptionWords());
        for (const Control* control : form->Controls()) {
            lengthen(control->CaptionWords());
            if (const auto* tabs = dynamic_cast<const TabStrip*>(control)) {
                for (const Words& tab : tabs->Tabs())
                    lengthen(tab);
            }
        }
    }
    return language;
}

TEST(FormSizes, NoLanguageMakesAFormTooLargeForASmallScreen) {
    const Language languages[] = {{"built in", {}}, LongWords()};
    std::map<std::string, int> widths;
    for (const Language& language : languages) {
        MemoryPlatform machine;
        const Platform platform = machine.Services();
        Forms forms(platform, &language.strings);
        EveryForm every(forms, platform);
        for (Form* form : every.All()) {
            form->Show();
            const TwipSize least = form->LeastSize();
            EXPECT_LE(least.width, Room.width) << form->Name() << ", " << language.name;
            EXPECT_LE(least.height, Room.height) << form->Name() << ", " << language.name;
            widths[language.name] += least.width;
        }
    }
    EXPECT_GT(widths["long words"], widths["built in"]) << "the words were taken";
}

} // namespace
} // namespace quorvane
