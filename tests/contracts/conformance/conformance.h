#pragma once

#include "core/locale_strings.h"
#include "core/utf8.h"
#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/dump.h"
#include "platform/forms/form.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace quorvane {

// A form with every kind of control, each of whose events writes a line into a log.
class ConformanceForm : public Form {
  public:
    explicit ConformanceForm(Forms& forms);

    std::vector<std::string> log;

    Menu mnuBar{*this, "mnuBar"};
    Menu popup; // of the bare form; built anew by tmrTick while it is open
    Label lblName{*this, "lblName", "&Name:"};
    TextBox txtName{*this, "txtName"};
    Label lblCount{*this, "lblCount", "Count"};
    TextBox txtCount{*this, "txtCount"};
    TextBox txtText{*this, "txtText", NoIndex, TextBox::Lines::Many};
    RichTextBox rtbMessage{*this, "rtbMessage"};
    CheckBox chkActive{*this, "chkActive", "&Active && shown"};
    Frame fraKind{*this, "fraKind", {"Kind", 203}};
    ControlArray<OptionButton> optKind{fraKind, "optKind", {{"First", 201}, {"Second", 202}}};
    OptionButton optOther{fraKind, "optOther", "Other group", NoIndex, 1};
    ComboBox cboUnit{*this, "cboUnit"};
    ComboBox cboFree{*this, "cboFree", NoIndex, ComboBox::Style::Editable};
    ListView lvwAlarms{*this, "lvwAlarms"};
    TabStrip tabPages{*this, "tabPages"};
    ControlArray<Label> lblPage{
        tabPages, "lblPage", {"Page of the first tab", "A longer page of the second tab"}, 1};
    Slider sldAlpha{*this, "sldAlpha"};
    ProgressBar prgDone{*this, "prgDone"};
    ScrollBar scrZone{*this, "scrZone"};
    DatePicker dtpStart{*this, "dtpStart"};
    MonthView mvwDay{*this, "mvwDay"};
    PictureBox picFace{*this, "picFace"};
    Button cmdOk{*this, "cmdOk", "&Ok"};
    Button cmdCancel{*this, "cmdCancel", "Cancel"};
    Button cmdOff{*this, "cmdOff", "Not now"};
    TextBox txtNowhere{*this, "txtNowhere"}; // the layout does not name it
    Timer tmrTick{*this, "tmrTick", 50, false};

  protected:
    bool OnCloseByFrame() override;
    void OnUnload() override { log.push_back("unload"); }

  private:
    static constexpr int NoIndex = Control::NoIndex;
    void Fill();
    void BuildPopup(const std::string& when);
    void Listen();
    void Arrange();
};

// A person at one host: what is done here is done to the widgets by that host's own means.
class Hands {
  public:
    virtual ~Hands() = default;

    virtual void
    Click(Control& control) = 0; // in its middle; a label, a button, a picture box, a frame's caption
    virtual void DoubleClick(Control& control) = 0;
    virtual void Toggle(Control& control) = 0; // a check box or an option button
    // At the end of what stands there, letter by letter.
    virtual void Type(Control& control, const std::string& letters) = 0;
    virtual void PressKey(Control& control, int code, int shift) = 0; // with the keyboard in that control
    virtual void Choose(Control& control, int index) = 0;             // combo box, list view's row, tab
    virtual void CheckRow(ListView& list, int row) = 0;
    virtual void Step(RangeControl& control, int by) = 0; // by the arrow keys
    virtual void PickDate(Control& control, const DateTime& value) = 0;
    virtual void ChooseFromMenuBar(Form& form, int menu, int entry) = 0;
    // A button goes down or up, or the pointer moves while it is held; from the upper left corner of the
    // control, or of the form where there is none.
    virtual void Mouse(Form& form, Control* control, act::MousePhase phase, int button, int shift,
                       TwipPoint at) = 0;
    virtual void DoubleClickGround(Form& form) = 0; // at GroundOf(form)
    // Has the form's popup opened, by the right button in that corner or by the menu key in `control`, waits
    // until `ready` and picks an entry.
    virtual void PickFromPopup(Form& form, Control* control, int entry,
                               const std::function<bool()>& ready) = 0;
    virtual void MoveWindow(Form& form, TwipPoint upperLeft) = 0; // of the frame
    virtual void ResizeWindow(Form& form, TwipSize client) = 0;
    virtual void Minimise(Form& form, bool minimized) = 0;
    virtual void CloseByFrame(Form& form) = 0;
    // The value that the widget itself shows, in the words of Control::ValueText.
    virtual std::string Shown(Control& control) = 0;
    // Tool tip and colours of the widget, by LookText.
    virtual std::string ShownLook(Control& control) = 0;
    // Where the widget is seen, from the upper left corner of the form's inner area.
    virtual PixelRect PlaceOf(Control& control) = 0;
    // The control that is seen in the middle of this one.
    virtual const Control* SeenAt(Control& control) = 0;
    // Lets the host work off what is waiting.
    virtual void Settle() = 0;
};

// In the lower left corner of the form, where no control is.
TwipPoint GroundOf(const Form& form);

// "tip "Your name" fore 0,70,140 back 225,245,225".
std::string LookText(const std::string& tip, Color fore, Color back);

// The log since it was last asked for.
std::string TakenLog(ConformanceForm& form, Hands& hands);
// Every widget shows what the model holds.
void CheckMirror(ConformanceForm& form, Hands& hands, const char* when);

// What of a form is no value: look, language, mouse, the window's own place. At a form that is shown.
void CheckLook(ConformanceForm& form, Hands& hands);
void CheckLanguage(ConformanceForm& form, Hands& hands, LocaleStrings& strings);
void CheckMouse(ConformanceForm& form, Hands& hands);
void CheckPlace(ConformanceForm& form, Hands& hands);
// Where the Tab key leads, with the second option of the frame chosen.
void CheckTabOrder(ConformanceForm& form, Hands& hands);

// Rows that come, go and change, below the check boxes and the chosen row. At a form that is shown.
void CheckRows(ListView& list, Hands& hands);

// A window with a button, of which several stand on the screen at once.
class SmallForm : public Form {
  public:
    SmallForm(Forms& forms, std::string name);

    int presses = 0;
    Button cmdPress{*this, "cmdPress", "&Press"};
};

// Presses the button of a form as a person at the display would; a window that is blocked lets nobody
// through.
using Presser = std::function<void(SmallForm& form)>;
// Opens modal windows above each other and looks which ones a person can use. Reports to GoogleTest.
void CheckModality(Forms& forms, const Presser& press);
// A form whose layout has what the other one has not: pieces at their own places, tabs in several rows.
class LayoutForm : public Form {
  public:
    explicit LayoutForm(Forms& forms);

    Label lblLeft{*this, "lblLeft", "Leads"};
    TextBox txtRight{*this, "txtRight"};
    PictureBox picBelow{*this, "picBelow"};
    Button cmdAbove{*this, "cmdAbove", "Above"};
    TextBox txtHidden{*this, "txtHidden", Control::NoIndex, TextBox::Lines::Many};
    TabStrip tabMany{*this, "tabMany"};
    Frame fraInside{tabMany, "fraInside", "Inside"};
    CheckBox chkInside{fraInside, "chkInside", "On a page"};
    ListView lvwRows{*this, "lvwRows"};
};

// What lies where, in both reading directions, and tabs in all rows.
void CheckLayout(LayoutForm& form, Hands& hands);

// Walks a person through the form, and code through its properties; the log and the dump must come out the
// same at every host. `strings` are those of the form's collection, with nothing loaded. Reports to
// GoogleTest.
void CheckConformance(ConformanceForm& form, Hands& hands, LocaleStrings& strings);

} // namespace quorvane
