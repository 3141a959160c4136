#include "core/utf8.h"
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
        MemoryFormView::Do(form_, &control, act::Key{code, shift});
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
        MenuItem& title = form.MenuBar()->Items()[static_cast<std::size_t>(menu)];
        Menu::Choose(title.items[static_cast<std::size_t>(entry)]);
    }
    void CloseByFrame(Form& form) override { MemoryFormView::Do(form, nullptr, act::CloseByFrame{}); }
    std::string Shown(Control& control) override {
        return static_cast<MemoryFormView*>(form_.View())->Shown(control);
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

TEST(Forms, BehaveInMemoryAsEverywhere) {
    MemoryPlatform machine;
    Forms forms(machine.Services());
    ConformanceForm form(forms);
    MemoryHands hands(form, machine);
    CheckConformance(form, hands);
}

} // namespace quorvane
