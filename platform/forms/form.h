#pragma once

#include "platform/forms/control.h"
#include "platform/forms/form_host.h"
#include "platform/forms/timer.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

class Drawing;
class EventLoop;
class Forms;
class LocaleStrings;
struct Platform;

enum class BorderStyle {
    None,  // no frame and no title
    Fixed, // a dialogue of one size
    Tool,  // as Fixed, with a small title and no entry in the task bar
    Sizable,
};

// A window of the system: a class derived from this one, whose members are its controls and timers. It holds
// every value, and knows no toolkit. A form is loaded once before its first showing (OnLoad), and stays
// loaded, its timers running, until it is unloaded; a form that is never shown never asks the host for
// anything.
class Form : public Container {
  public:
    // Joins `forms` when it is loaded. `name` is what other windows look it up by.
    Form(Forms& forms, std::string name);
    ~Form() override;

    const std::string& Name() const { return name_; }
    Forms& Collection() const { return forms_; }
    EventLoop& Events() const;
    Drawing& Painter() const;
    FormHost& Host() const;
    // Of the window's own screen; the host's before there is a window.
    FormMetrics& Metrics() const { return view_ ? view_->Metrics() : Host(); }
    Form& OwnerForm() override { return *this; }
    Control* AsControl() override { return nullptr; }

    // Life. Each step does nothing where it has been done; Show and ShowModal load the form first.
    void Load();
    void Show();
    // Waits, letting events run, until the form is hidden or unloaded. What was shown before is blocked until
    // then; what is shown meanwhile is not.
    void ShowModal();
    void Hide();
    // Ends the form: OnUnload, timers stopped, the window gone, out of the collection. It can be loaded
    // again, and then runs OnLoad anew. The values of its controls stay.
    void Unload();
    void BringToFront();
    bool IsLoaded() const { return loaded_; }
    bool IsVisible() const { return visible_; }
    bool IsModal() const { return Host().Order().IsModal(*this); }
    // By a modal window: nothing that a person does in this one counts.
    bool IsBlocked() const { return Host().Order().IsBlocked(*this); }

    const std::string& Caption() const { return caption_.Text(); }
    const Words& CaptionWords() const { return caption_; }
    void SetCaption(Words caption);
    BorderStyle Border() const { return border_; }
    void SetBorder(BorderStyle border);
    // 255 is opaque.
    int Opacity() const { return opacity_; }
    void SetOpacity(int alpha);
    // What is painted in this colour is cut out of the window: a shaped window.
    const std::optional<Color>& TransparentColor() const { return transparentColor_; }
    void SetTransparentColor(std::optional<Color> color);
    const std::optional<Color>& BackColor() const { return backColor_; }
    void SetBackColor(std::optional<Color> color);
    // The form reads from right to left: its layout is mirrored, and so are its widgets. By itself it does so
    // where the language does, except a window without a frame: that is painted rather than read. A form that
    // is shown gets a new window.
    bool RightToLeft() const { return rightToLeft_; }
    void SetRightToLeft(bool rightToLeft);
    bool AlwaysOnTop() const { return alwaysOnTop_; }
    void SetAlwaysOnTop(bool onTop);
    bool ShownInTaskBar() const { return inTaskBar_; }
    void SetShownInTaskBar(bool shown) { inTaskBar_ = shown; } // before the first showing
    // Whether it has one now: a modal form has none where another window below it leads to it.
    bool HasTaskBarEntry() const;
    bool Minimized() const { return minimized_; }
    void SetMinimized(bool minimized);

    // Of the frame, in twips. A form that nobody placed stands in the middle of the screen.
    int Left() const { return left_.value_or(0); }
    int Top() const { return top_.value_or(0); }
    bool IsPlaced() const { return left_.has_value() && top_.has_value(); }
    void MoveTo(int left, int top);
    // Size of the inner area. It is worked out from the layout when the form is shown.
    TwipSize ClientSize() const { return client_; }
    // The smallest that the layout allows, once the form was shown.
    TwipSize LeastSize() const { return least_; }
    // A sizable form takes the size, but no less than its layout needs; a form without a layout takes any. A
    // form of one size has that of its layout: it stays as it is. onResize is raised where the size changed.
    void Resize(TwipSize client);
    // The system's own handle of a control's widget, for programs that draw into it; 0 where there is none.
    // Loads the form and makes its window, which stays hidden before the first showing.
    std::uintptr_t NativeHandle(Control& control);
    // Room between the edge of the form and its layout; 0 for a window that is painted up to the edge.
    void SetMargin(int twips) { margin_ = twips; }
    int Margin() const { return margin_; }

    // Enter presses the default button, Esc the cancel button, wherever the keyboard is, except that a
    // multi-line text box keeps Enter and a button that has the keyboard is pressed itself.
    void SetDefaultButton(Button* button) { defaultButton_ = button; }
    void SetCancelButton(Button* button) { cancelButton_ = button; }
    Button* DefaultButton() const { return defaultButton_; }
    Button* CancelButton() const { return cancelButton_; }

    // Null for none. The menu is made as one of this form.
    void SetMenuBar(Menu* menu);
    Menu* MenuBar() const { return menuBar_; }
    // The menu bar's entries changed.
    void RefreshMenuBar();
    // Shows a menu and waits until it is closed and what was picked is done.
    void PopupMenu(Menu& menu, MenuPlace place = MenuPlace::Pointer);
    // The menu that the right button and the menu key open wherever no control has one of its own; null for
    // none. It is a member of the form.
    void SetPopupMenu(Menu* menu) { popupMenu_ = menu; }

    // Puts every word of the form into the language of the collection: done when the form is loaded, and on
    // all loaded forms by Forms::Localise.
    void Localise();

    // Every control, each container before its children.
    std::vector<Control*> Controls() const;
    const std::vector<Timer*>& Timers() const { return timers_; }
    // The menus that belong to the form, the bar among them.
    const std::vector<Menu*>& Menus() const { return menus_; }
    Control* FindControl(std::string_view fullName) const;
    Timer* FindTimer(std::string_view name) const;
    // The control that has the keyboard, null for none known.
    Control* ActiveControl() const { return focus_; }
    // Where the Tab key leads from there: round all that can have the keyboard, in the order of Controls. Of
    // a group of options only the chosen one stands in its way, or the first where none is chosen. Null where
    // nothing can have the keyboard.
    Control* NextInTabOrder(bool backwards = false) const;

    // A host's one word about the person; `control` is null for the form itself. Runs the handlers under the
    // event loop's guard. True where the act is used up.
    bool Report(Control* control, const Act& done);

    // Arranges the controls anew, after what the layout hangs on was changed in a way the form cannot see.
    void Arrange();
    FormView* View() const { return view_.get(); }

    std::function<bool(const act::Key&)> onKeyDown; // sees every key before the control does
    // On the bare ground of the form.
    std::function<void(const act::Mouse&)> onMouse;
    std::function<void()> onDoubleClick;
    std::function<void()> onResize;
    std::function<void()> onMove;
    std::function<void(bool minimized)> onMinimize;

  protected:
    // Fills the form; runs each time it is loaded. The timers start when it has returned.
    virtual void OnLoad() {}
    // The frame's close button or the session asks. False keeps the form; otherwise it is unloaded.
    virtual bool OnCloseByFrame() { return true; }
    virtual void OnUnload() {}

  private:
    friend class Control;
    friend class Menu;
    friend class PictureBox;
    friend class TabStrip;
    friend class Timer;
    friend class Forms;

    bool Take(Control& control, const Act& done);
    bool TakeKey(Control* control, const act::Key& key);
    bool TakeTab(bool backwards);
    bool TakeOwn(const Act& done);
    void MakeView();
    bool HasOneSize() const;
    void FitToLayout();
    void ArrangeSoon();
    void Forget(Control& control);
    void FocusOn(Control& control);
    void BringUp(bool modal);
    void LeaveOrder();
    void Tell(FormAspect aspect);
    void Turn(bool rightToLeft);

    Forms& forms_;
    std::string name_;
    Words caption_;
    BorderStyle border_ = BorderStyle::Fixed;
    int opacity_ = 255;
    std::optional<Color> transparentColor_;
    std::optional<Color> backColor_;
    bool rightToLeft_ = false;
    bool ownDirection_ = false; // it does not follow the language
    bool alwaysOnTop_ = false;
    bool inTaskBar_ = true;
    bool minimized_ = false;
    std::optional<int> left_;
    std::optional<int> top_;
    TwipSize client_;
    TwipSize least_;
    int margin_ = 165;
    Button* defaultButton_ = nullptr;
    Button* cancelButton_ = nullptr;
    Menu* menuBar_ = nullptr;
    Menu* popupMenu_ = nullptr;
    Control* focus_ = nullptr;
    Control* wantsFocus_ = nullptr; // at the next showing
    std::vector<Timer*> timers_;
    std::vector<Menu*> menus_;
    bool loaded_ = false;
    bool loading_ = false; // OnLoad has not returned
    bool visible_ = false;
    bool arrangePending_ = false;
    std::unique_ptr<FormView> view_;
    std::shared_ptr<Form*> self_; // what waits in the event loop finds the form by, or finds it gone
};

// The loaded forms, in the order of their loading, and what a form needs of the platform.
class Forms {
  public:
    // `strings` are the words of the language, which outlive the forms; without them all words are the
    // built-in ones.
    Forms(FormHost& host, EventLoop& events, Drawing& drawing, const LocaleStrings* strings = nullptr);
    explicit Forms(const Platform& platform, const LocaleStrings* strings = nullptr);
    Forms(const Forms&) = delete;
    Forms& operator=(const Forms&) = delete;
    ~Forms();

    FormHost& Host() const { return host_; }
    EventLoop& Events() const { return events_; }
    Drawing& Painter() const { return drawing_; }
    const LocaleStrings& Strings() const { return strings_; }

    // The words became others: every loaded form shows them.
    void Localise();

    const std::vector<Form*>& Loaded() const { return loaded_; }
    // The first loaded form of that name, null for none.
    Form* Find(std::string_view name) const;

    // Keeps a form that nobody else owns, one note or one firing, until after it has been unloaded.
    template<typename T>
    T& Own(std::unique_ptr<T> form) {
        T& reference = *form;
        owned_.push_back(std::move(form));
        return reference;
    }

    // From the last to the first, also those that are loaded meanwhile by an unloading one. A form named
    // `except` stays.
    void UnloadAll(std::string_view except = {});

  private:
    friend class Form;
    void Left(Form& form);

    FormHost& host_;
    EventLoop& events_;
    Drawing& drawing_;
    const LocaleStrings& strings_;
    std::vector<Form*> loaded_;
    std::vector<std::unique_ptr<Form>> owned_;
    std::shared_ptr<Forms*> self_;
};

} // namespace quorvane
