#pragma once

#include "platform/forms/form.h"
#include "platform/memory/call_log.h"

#include <deque>
#include <map>
#include <string>
#include <vector>

namespace quorvane {

class MemoryFormHost;

// The window of a form that nobody sees: it keeps what widgets would show.
class MemoryFormView final : public FormView {
  public:
    MemoryFormView(MemoryFormHost& host, Form& form);
    ~MemoryFormView() override;

    void Show() override;
    void Hide() override;
    void BringToFront() override;
    void Update(Control& control, Aspect aspect) override;
    void UpdateRows(ListView& list, const RowChange& change) override;
    void UpdateForm(FormAspect aspect) override;
    void Focus(Control& control) override;
    const MenuItem* Popup(const ShownMenu& menu, MenuPlace place) override;
    std::uintptr_t NativeHandle(Control& control) override;
    FormMetrics& Metrics() override;

    // A person does `done` to a control of a form that has a window, or to the form itself. What Report
    // answers.
    static bool Do(Form& form, Control* control, const Act& done);
    // The value that the widget shows, in the words of Control::ValueText.
    std::string Shown(const Control& control) const;

  private:
    MemoryFormHost& host_;
    Form& form_;
    // What a list's widget holds: the rows as it was told of them, one by one.
    struct ShownRows {
        std::vector<std::string> texts;
        int selected = -1;
    };
    void ShowRows(const ListView& list, const RowChange& change);

    std::map<const Control*, std::string> shown_;
    std::map<const Control*, ShownRows> shownRows_;
};

// Texts have letters of a fixed width: 6 pixels across and 13 down at 8 points, 90 and 195 twips, in
// proportion at other sizes. Every call upon a window is a line of the platform's log: "frmAlarm.Show modal".
class MemoryFormHost final : public FormHost {
  public:
    explicit MemoryFormHost(CallLog& calls)
        : calls_(calls) {}

    std::unique_ptr<FormView> Create(Form& form) override;
    FontSpec DefaultFont() override { return {"Memory", 8}; }
    TwipSize TextSize(const FontSpec& font, std::string_view text, int wrapWidth) override;
    Insets Chrome(ControlKind kind) override;
    TwipScale Scale() override { return scale; }
    TwipRect WorkArea() override { return workArea; }

    TwipScale scale{15, 15};
    TwipRect workArea{0, 0, 1024 * 15, 740 * 15};
    // What a person chooses from the menus that are shown next, by the captions from the top entry down
    // without mnemonics, "Views/Compact"; an empty text closes the menu. A menu that nobody expects is
    // closed.
    std::deque<std::string> menuChoices;
    // What happens while a menu is open: timers, a change of the menu itself.
    std::function<void()> whileMenu;

  private:
    friend class MemoryFormView;
    CallLog& calls_;
};

// The entry of a menu by its captions, "Views/Compact"; null where there is none that a person could choose.
const MenuItem* FindEntry(const ShownMenu& menu, std::string_view path);
// Opens a menu and chooses an entry, as a person would. False where there is no such entry.
bool ChooseFromMenu(Menu& menu, std::string_view path);

} // namespace quorvane
