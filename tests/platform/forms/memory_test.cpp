#include "core/utf8.h"
#include "platform/forms/sizes.h"
#include "platform/memory/memory_platform.h"
#include "tests/contracts/conformance/conformance.h"

#include <gtest/gtest.h>

namespace quorvane {

namespace {

// A person at the windows in memory.
class MemoryHands final : public Hands {
  public:
    MemoryHands(Form& form, MemoryPlatform& machine)
        : form_(form)
        , machine_(machine) {}

    void Click(Control& control) override { MemoryFormView::Do(form_, &control, act::Click{}); }
    void DoubleClick(Control& control) override { MemoryFormView::Do(form_, &control, act::DoubleClick{}); }
    void Toggle(Control& control) override {
        const auto* box = dynamic_cast<CheckBox*>(&control);
        MemoryFormView::Do(form_, &control, act::Check{!box || !box->Value()});
    }
    void Type(Control& control, const std::string& letters) override {
        for (std::size_t at = 0; at < letters.size();) {
            const std::size_t end = NextLetter(letters, at);
            std::string text =
                TextOf(control) + (letters[at] == '\n' ? "\r\n" : letters.substr(at, end - at));
            const int caret = static_cast<int>(text.size());
            MemoryFormView::Do(form_, &control, act::Type{std::move(text), caret});
            at = end;
        }
    }
    void PressKey(Control& control, int code, int shift) override {
        const bool usedUp = MemoryFormView::Do(form_, &control, act::Key{code, shift});
        if (code == key_code::Space && !usedUp) Click(control);
    }
    void Choose(Control& control, int index) override {
        MemoryFormView::Do(form_, &control, act::Choose{index});
    }
    void CheckRow(ListView& list, int row) override {
        const bool checked = list.Rows()[static_cast<std::size_t>(row)].checked;
        MemoryFormView::Do(form_, &list, act::Check{!checked, row});
    }
    void Step(RangeControl& control, int by) override {
        MemoryFormView::Do(form_, &control, act::Slide{control.Value() + by});
    }
    void PickDate(Control& control, const DateTime& value) override {
        MemoryFormView::Do(form_, &control, act::PickDate{value});
    }
    void ChooseFromMenuBar(Form& form, int menu, int entry) override {
        const ShownMenu bar = form.MenuBar()->Open();
        Menu::Choose(bar.items[static_cast<std::size_t>(menu)].items[static_cast<std::size_t>(entry)]);
    }
    void Mouse(Form& form, Control* control, act::MousePhase phase, int button, int shift,
               TwipPoint at) override {
        MemoryFormView::Do(form, control, act::Mouse{phase, button, shift, at, at});
        if (!control || phase != act::MousePhase::Up || button != 1) return;
        const TwipRect area = control->Bounds();
        if (at.x >= 0 && at.y >= 0 && at.x < area.width && at.y < area.height) Click(*control);
    }
    void DoubleClickGround(Form& form) override {
        using enum act::MousePhase;
        for (const act::MousePhase phase : {Down, Up, Down})
            Mouse(form, nullptr, phase, 1, 0, GroundOf(form));
        MemoryFormView::Do(form, nullptr, act::DoubleClick{});
        Mouse(form, nullptr, Up, 1, 0, GroundOf(form));
    }
    void PickFromPopup(Form& form, Control* control, int entry, const std::function<bool()>& ready) override {
        machine_.forms.whileMenu = [&, this] {
            while (!ready())
                machine_.events.Advance(10);
        };
        machine_.forms.menuChoices = {"Entry " + std::to_string(entry) + " as opened"};
        if (!control) {
            Mouse(form, nullptr, act::MousePhase::Down, 2, 0, GroundOf(form));
            Mouse(form, nullptr, act::MousePhase::Up, 2, 0, GroundOf(form));
        }
        MemoryFormView::Do(form, nullptr, act::ContextMenu{control != nullptr});
    }
    void MoveWindow(Form& form, TwipPoint upperLeft) override {
        MemoryFormView::Do(form, nullptr, act::Move{upperLeft});
    }
    void ResizeWindow(Form& form, TwipSize client) override {
        MemoryFormView::Do(form, nullptr, act::Resize{client});
    }
    void Minimise(Form& form, bool minimized) override {
        MemoryFormView::Do(form, nullptr, act::Minimize{minimized});
    }
    void CloseByFrame(Form& form) override { MemoryFormView::Do(form, nullptr, act::CloseByFrame{}); }
    std::string Shown(Control& control) override {
        return static_cast<MemoryFormView*>(form_.View())->Shown(control);
    }
    std::string ShownLook(Control& control) override {
        return LookText(control.ToolTip(), control.ForeColor().value_or(0), control.BackColor().value_or(0));
    }
    PixelRect PlaceOf(Control& control) override {
        TwipRect area = control.Bounds();
        for (const Control* around = control.Parent().AsControl(); around;
             around = around->Parent().AsControl()) {
            const Insets chrome = ChromeOf(*around, machine_.forms);
            area.x += around->Bounds().x + chrome.left;
            area.y += around->Bounds().y + chrome.top;
        }
        return ToPixels(area, machine_.forms.Scale());
    }
    const Control* SeenAt(Control& control) override {
        const PixelRect wanted = PlaceOf(control);
        const int x = wanted.x + wanted.width / 2, y = wanted.y + wanted.height / 2;
        const Control* seen = nullptr;
        for (Control* each : form_.Controls()) {
            const PixelRect area = PlaceOf(*each);
            if (each->IsShown() && x >= area.x && x < area.x + area.width && y >= area.y &&
                y < area.y + area.height)
                seen = each;
        }
        return seen;
    }
    void Settle() override { machine_.events.Pump(); }

  private:
    static std::string TextOf(Control& control) {
        if (const auto* text = dynamic_cast<TextControl*>(&control)) return text->Text();
        return static_cast<ComboBox&>(control).Text();
    }

    Form& form_;
    MemoryPlatform& machine_;
};

} // namespace

TEST(Forms, BlockEachOtherInMemoryAsEverywhere) {
    MemoryPlatform machine;
    Forms forms(machine.Services());
    const Presser press = [](SmallForm& form) { MemoryFormView::Do(form, &form.cmdPress, act::Click{}); };
    CheckModality(forms, press);

    SmallForm form(forms, "frmNote");
    SmallForm alarm(forms, "frmAlarm");
    form.Show();
    machine.prompts.whileAsking = [&](const MemoryPrompts::Question&) {
        alarm.Show();
        press(form);
        press(alarm);
    };
    machine.prompts.Message("Sure?", "Title", message_style::Information);
    EXPECT_EQ(form.presses, 0) << "a question is a modal window";
    EXPECT_EQ(alarm.presses, 1);
    EXPECT_FALSE(form.IsBlocked());
}

TEST(Forms, BehaveInMemoryAsEverywhere) {
    MemoryPlatform machine;
    LocaleStrings strings;
    Forms forms(machine.Services(), &strings);
    ConformanceForm form(forms);
    MemoryHands hands(form, machine);
    CheckConformance(form, hands, strings);
    LayoutForm layout(forms);
    MemoryHands layoutHands(layout, machine);
    CheckLayout(layout, layoutHands);
}

} // namespace quorvane
