#include "platform/forms/form.h"

#include "core/locale_strings.h"
#include "platform/forms/controls.h"
#include "platform/forms/menu.h"
#include "platform/platform.h"

#include <algorithm>
#include <utility>

namespace quorvane {

Form::Form(Forms& forms, std::string name)
    : forms_(forms)
    , name_(std::move(name))
    , self_(std::make_shared<Form*>(this)) {}

Form::~Form() {
    *self_ = nullptr;
    LeaveOrder();
    view_.reset();
    if (loaded_) std::erase(forms_.loaded_, this);
}

EventLoop& Form::Events() const {
    return forms_.Events();
}

Drawing& Form::Painter() const {
    return forms_.Painter();
}

FormHost& Form::Host() const {
    return forms_.Host();
}

void Form::Load() {
    if (loaded_) return;
    loaded_ = true;
    forms_.loaded_.push_back(this);
    struct Loading {
        std::shared_ptr<Form*> form;
        explicit Loading(const Form& loaded)
            : form(loaded.self_) {
            (*form)->loading_ = true;
        }
        ~Loading() {
            if (*form) (*form)->loading_ = false;
        }
    };
    const std::shared_ptr<Form*> self = self_; // OnLoad may end the form
    {
        const Loading loading(*this);
        Localise();
        OnLoad();
    }
    if (!*self) return;
    for (Timer* timer : timers_)
        timer->Adjust();
}

void Form::MakeView() {
    if (view_) return;
    FitToLayout();
    if (!IsPlaced()) {
        const TwipRect screen = Host().WorkArea();
        left_ = screen.x + std::max(0, (screen.width - client_.width) / 2);
        top_ = screen.y + std::max(0, (screen.height - client_.height) / 2);
    }
    ArrangeForm(*this, Metrics(), client_);
    view_ = Host().Create(*this);
}

void Form::BringUp(bool modal) {
    Load();
    MakeView();
    const bool comesUp = !std::exchange(visible_, true);
    Host().Order().Shown(*this, modal);
    view_->Show();
    Control* first = std::exchange(wantsFocus_, nullptr);
    // A window without a frame leaves the keyboard where it is.
    const bool takesKeyboard = comesUp && (modal || border_ != BorderStyle::None);
    if (!first && takesKeyboard && !focus_) first = NextInTabOrder();
    if (first && view_ && first->CanHaveFocus()) view_->Focus(*first);
}

void Form::LeaveOrder() {
    if (view_) Host().Order().Gone(*this);
}

void Form::Show() {
    BringUp(false);
}

void Form::ShowModal() {
    BringUp(true);
    Events().RunWhile([self = self_] { return *self && (*self)->visible_; });
}

bool Form::HasTaskBarEntry() const {
    if (!inTaskBar_ || border_ == BorderStyle::Tool) return false;
    return !IsModal() || !Host().Order().IsOverEntry(*this);
}

void Form::Hide() {
    if (!visible_) return;
    visible_ = false;
    LeaveOrder(); // first, so that the window below can become active and not another program's
    if (view_) view_->Hide();
}

void Form::Unload() {
    if (!loaded_) return;
    loaded_ = false;
    visible_ = false;
    for (Timer* timer : timers_)
        timer->Adjust();
    // However OnUnload ends, the window is gone and the form out of the collection.
    struct Leave {
        Form& form;
        ~Leave() {
            form.focus_ = nullptr;
            form.LeaveOrder();
            form.view_.reset();
            form.forms_.Left(form);
        }
    } leave{*this};
    OnUnload();
}

void Form::BringToFront() {
    if (view_ && visible_) view_->BringToFront();
}

void Form::Tell(FormAspect aspect) {
    if (view_) view_->UpdateForm(aspect);
}

void Form::SetCaption(Words caption) {
    const std::string before = Caption();
    caption_ = std::move(caption);
    caption_.Localise(forms_.Strings());
    if (Caption() != before) Tell(FormAspect::Caption);
}

void Form::Localise() {
    const LocaleStrings& strings = forms_.Strings();
    if (caption_.Localise(strings)) Tell(FormAspect::Caption);
    for (Control* control : Controls())
        control->Localise(strings);
    for (Menu* menu : menus_)
        menu->Localise(strings);
    if (menuBar_) RefreshMenuBar();
    if (!ownDirection_) Turn(border_ != BorderStyle::None && strings.RightToLeft());
}

void Form::SetBorder(BorderStyle border) {
    if (border == border_) return;
    border_ = border;
    Tell(FormAspect::Window);
}

void Form::SetOpacity(int alpha) {
    alpha = std::clamp(alpha, 0, 255);
    if (alpha == opacity_) return;
    opacity_ = alpha;
    Tell(FormAspect::Look);
}

void Form::SetTransparentColor(std::optional<Color> color) {
    if (color == transparentColor_) return;
    transparentColor_ = color;
    Tell(FormAspect::Look);
}

void Form::SetBackColor(std::optional<Color> color) {
    if (color == backColor_) return;
    backColor_ = color;
    Tell(FormAspect::Look);
}

void Form::SetRightToLeft(bool rightToLeft) {
    ownDirection_ = true;
    Turn(rightToLeft);
}

void Form::Turn(bool rightToLeft) {
    if (rightToLeft == rightToLeft_) return;
    rightToLeft_ = rightToLeft;
    if (!view_) return;
    Control* focused = std::exchange(focus_, nullptr);
    view_.reset(); // widgets are made for one direction
    if (!visible_) return;
    MakeView();
    view_->Show();
    view_->UpdateForm(FormAspect::Blocked);
    if (focused && view_ && focused->CanHaveFocus()) view_->Focus(*focused);
}

void Form::SetAlwaysOnTop(bool onTop) {
    if (onTop == alwaysOnTop_) return;
    alwaysOnTop_ = onTop;
    Tell(FormAspect::Order);
}

void Form::SetMinimized(bool minimized) {
    if (minimized == minimized_) return;
    minimized_ = minimized;
    Tell(FormAspect::Window);
    if (onMinimize) onMinimize(minimized);
}

void Form::MoveTo(int left, int top) {
    if (left_ == left && top_ == top) return;
    left_ = left;
    top_ = top;
    Tell(FormAspect::Place);
    Control::Raise(onMove);
}

void Form::Resize(TwipSize client) {
    if (HasOneSize()) return;
    client = {std::max(client.width, least_.width), std::max(client.height, least_.height)};
    if (client == client_) return;
    client_ = client;
    if (view_) {
        Tell(FormAspect::Place);
        ArrangeForm(*this, Metrics(), client_);
    }
    Control::Raise(onResize);
}

void Form::SetMenuBar(Menu* menu) {
    if (menu == menuBar_) return;
    menuBar_ = menu;
    RefreshMenuBar();
}

void Form::RefreshMenuBar() {
    Tell(FormAspect::Window);
}

void Form::PopupMenu(Menu& menu, MenuPlace place) {
    const ShownMenu shown = menu.Open();
    if (!view_) return; // gone with what the opening did
    if (const MenuItem* picked = view_->Popup(shown, place)) Menu::Choose(*picked);
}

namespace {

void Collect(const Container& container, std::vector<Control*>& out) {
    for (Control* child : container.Children()) {
        out.push_back(child);
        if (const auto* inner = dynamic_cast<const Container*>(child)) Collect(*inner, out);
    }
}

} // namespace

std::vector<Control*> Form::Controls() const {
    std::vector<Control*> all;
    Collect(*this, all);
    return all;
}

Control* Form::FindControl(std::string_view fullName) const {
    for (Control* control : Controls()) {
        if (control->FullName() == fullName) return control;
    }
    return nullptr;
}

Timer* Form::FindTimer(std::string_view name) const {
    for (Timer* timer : timers_) {
        if (timer->Name() == name) return timer;
    }
    return nullptr;
}

std::uintptr_t Form::NativeHandle(Control& control) {
    Load();
    MakeView();
    return view_->NativeHandle(control);
}

namespace {

// What happens to a window whether or not a person may use it.
bool IsNews(const Act& done) {
    return std::holds_alternative<act::Focus>(done) || std::holds_alternative<act::Move>(done) ||
           std::holds_alternative<act::Resize>(done) || std::holds_alternative<act::Minimize>(done) ||
           std::holds_alternative<act::Rescale>(done);
}

} // namespace

bool Form::Report(Control* control, const Act& done) {
    bool usedUp = false;
    if (IsBlocked() && !IsNews(done)) {
        if (control) control->Changed(Aspect::Value); // the widget may show what was not accepted
        return true;
    }
    Events().Deliver([&] { usedUp = control ? Take(*control, done) : TakeOwn(done); });
    return usedUp;
}

bool Form::Take(Control& control, const Act& done) {
    if (const auto* focus = std::get_if<act::Focus>(&done)) {
        if (focus->got) {
            focus_ = &control;
        } else if (focus_ == &control) {
            focus_ = nullptr;
        }
        Control::Raise(focus->got ? control.onGotFocus : control.onLostFocus);
        return true;
    }
    if (const auto* key = std::get_if<act::Key>(&done)) return TakeKey(&control, *key);
    if (!control.IsReachable()) {
        control.Changed(Aspect::Value); // the widget may show what was not accepted
        return false;
    }
    if (const auto* mouse = std::get_if<act::Mouse>(&done)) {
        if (!control.onMouse) return false;
        const auto handler = control.onMouse;
        handler(*mouse);
        return true;
    }
    if (std::holds_alternative<act::DoubleClick>(done)) {
        Control::Raise(control.onDoubleClick);
        return true;
    }
    return control.Take(done);
}

bool Form::TakeOwn(const Act& done) {
    if (const auto* key = std::get_if<act::Key>(&done)) return TakeKey(nullptr, *key);
    if (std::holds_alternative<act::CloseByFrame>(done)) {
        if (OnCloseByFrame()) Unload();
    } else if (const auto* move = std::get_if<act::Move>(&done)) {
        if (left_ == move->upperLeft.x && top_ == move->upperLeft.y) return true;
        left_ = move->upperLeft.x;
        top_ = move->upperLeft.y;
        Control::Raise(onMove);
    } else if (const auto* resize = std::get_if<act::Resize>(&done)) {
        if (client_ == resize->client) return true;
        client_ = resize->client;
        ArrangeForm(*this, Metrics(), client_);
        Control::Raise(onResize);
    } else if (const auto* minimize = std::get_if<act::Minimize>(&done)) {
        if (minimized_ == minimize->minimized) return true;
        minimized_ = minimize->minimized;
        if (onMinimize) onMinimize(minimized_);
    } else if (std::holds_alternative<act::Rescale>(done)) {
        for (Control* control : Controls())
            control->Rescaled();
        Arrange();
    } else if (const auto* mouse = std::get_if<act::Mouse>(&done)) {
        if (!onMouse) return false;
        const auto handler = onMouse;
        handler(*mouse);
    } else if (std::holds_alternative<act::DoubleClick>(done)) {
        Control::Raise(onDoubleClick);
    } else if (const auto* asked = std::get_if<act::ContextMenu>(&done)) {
        if (!popupMenu_) return false;
        PopupMenu(*popupMenu_, asked->byKey ? MenuPlace::Form : MenuPlace::Pointer);
    } else {
        return false;
    }
    return true;
}

bool Form::HasOneSize() const {
    return border_ != BorderStyle::Sizable && Layout().kind != LayoutItem::Kind::Nothing;
}

// The size that the layout asks for; a sizable form may be larger.
void Form::FitToLayout() {
    const TwipSize least = MeasureForm(*this, Metrics());
    if (least == TwipSize{}) return;
    least_ = least;
    if (!HasOneSize()) {
        client_ = {std::max(client_.width, least.width), std::max(client_.height, least.height)};
    } else {
        client_ = least;
    }
}

void Form::Arrange() {
    if (!view_) return;
    const TwipSize before = client_;
    const TwipSize leastBefore = least_;
    FitToLayout();
    if (client_ != before || least_ != leastBefore) Tell(FormAspect::Place);
    ArrangeForm(*this, Metrics(), client_);
}

void Form::ArrangeSoon() {
    if (!view_ || arrangePending_) return;
    arrangePending_ = true;
    Events().Post([self = self_] {
        if (!*self) return;
        (*self)->arrangePending_ = false;
        (*self)->Arrange();
    });
}

// A control goes: its widget, and with it the whole window, is no longer there to be mirrored.
void Form::Forget(Control& control) {
    LeaveOrder();
    view_.reset();
    if (focus_ == &control) focus_ = nullptr;
    if (wantsFocus_ == &control) wantsFocus_ = nullptr;
}

void Form::FocusOn(Control& control) {
    if (view_ && visible_) {
        if (control.CanHaveFocus()) view_->Focus(control);
    } else {
        wantsFocus_ = &control;
    }
}

namespace {

const LocaleStrings BuiltInWords;

} // namespace

Forms::Forms(FormHost& host, EventLoop& events, Drawing& drawing, const LocaleStrings* strings)
    : host_(host)
    , events_(events)
    , drawing_(drawing)
    , strings_(strings ? *strings : BuiltInWords)
    , self_(std::make_shared<Forms*>(this)) {}

Forms::Forms(const Platform& platform, const LocaleStrings* strings)
    : Forms(platform.forms, platform.events, platform.drawing, strings) {}

Forms::~Forms() {
    *self_ = nullptr;
    owned_.clear();
}

void Forms::Localise() {
    for (Form* form : loaded_)
        form->Localise();
}

Form* Forms::Find(std::string_view name) const {
    for (Form* form : loaded_) {
        if (form->Name() == name) return form;
    }
    return nullptr;
}

void Forms::UnloadAll(std::string_view except) {
    const auto isWanted = [except](const Form* form) {
        return form->IsLoaded() && (except.empty() || form->Name() != except);
    };
    for (;;) {
        const auto last = std::find_if(loaded_.rbegin(), loaded_.rend(), isWanted);
        if (last == loaded_.rend()) return;
        (*last)->Unload();
    }
}

void Forms::Left(Form& form) {
    std::erase(loaded_, &form);
    const auto isForm = [&form](const std::unique_ptr<Form>& each) { return each.get() == &form; };
    if (std::none_of(owned_.begin(), owned_.end(), isForm)) return;
    // Later: the form may be in the middle of one of its handlers.
    events_.Post([self = self_, gone = &form] {
        if (!*self) return;
        std::erase_if((*self)->owned_, [gone](const std::unique_ptr<Form>& each) {
            return each.get() == gone && !each->IsLoaded();
        });
    });
}

} // namespace quorvane
