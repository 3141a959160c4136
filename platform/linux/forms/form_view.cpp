#include "platform/linux/forms/form_view.h"

#include "platform/event_loop.h"
#include "platform/linux/desktop/icon.h"
#include "platform/linux/desktop/qt_menu.h"
#include "platform/linux/drawing/font.h"
#include "platform/linux/forms/qt_text.h"
#include "platform/linux/forms/task_bar.h"

#include <QApplication>
#include <QBitmap>
#include <QCursor>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <algorithm>

namespace quorvane {

// While one lives, what the widgets say is our own echo.
struct QtFormView::Applying {
    explicit Applying(QtFormView& owner)
        : view(owner) {
        ++view.applying_;
    }
    ~Applying() { --view.applying_; }
    QtFormView& view;
};

QtFormView::QtFormView(Form& form)
    : form_(form)
    , window_(new QWidget)
    , client_(new QWidget(window_)) {
    const Applying applying(*this);
    window_->setObjectName(QString::fromStdString(form.Name()));
    window_->setWindowIcon(ProgramIcon());
    window_->setWindowTitle(ToWidgetText(form.Caption()));
    window_->installEventFilter(this);
    client_->installEventFilter(this);
    client_->setMouseTracking(true);
    window_->setLayoutDirection(form.RightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    ShowWindowKind();
    ShowMenuBar();
    MakeParts(form, client_);
    for (Control* control : form.Controls())
        ShowAll(*control);
    FrameDefaultButton(nullptr);
    ShowLookOfWindow();
    ShowPlace();
}

// Possibly inside one of the window's own events: the widgets go when that is over.
QtFormView::~QtFormView() {
    if (!window_) return;
    for (const auto& [control, part] : parts_)
        part->Detach();
    window_->removeEventFilter(this);
    window_->hide();
    window_->deleteLater();
}

void QtFormView::MakeParts(Container& container, QWidget* parent) {
    for (Control* control : container.Children()) {
        PartMaker maker(parent, this, [this](Control& from, const Act& done) {
            if (applying_ == 0) form_.Report(&from, done);
        });
        control->Accept(maker);
        Part& part = *(parts_[control] = std::move(maker.part));
        part.Widget()->setObjectName(QString::fromStdString(control->FullName()));
        part.ShowItems();
        WatchInside(*control);
        if (auto* holder = dynamic_cast<Container*>(control)) MakeParts(*holder, part.Inside());
    }
}

// The widget and those that it is made of. Before its children are there, or not as one of theirs.
void QtFormView::WatchInside(Control& control) {
    QWidget* whole = WidgetOf(control);
    Watch(whole, &control);
    const auto inner = whole->findChildren<QWidget*>();
    for (QWidget* widget : inner) {
        const auto known = watched_.find(widget);
        if (known == watched_.end() || known->second == &control) Watch(widget, &control);
    }
}

void QtFormView::Watch(QWidget* widget, Control* control) {
    widget->installEventFilter(this);
    watched_[widget] = control;
}

// The mnemonic of a label leads to the next control, where that can have the keyboard.
void QtFormView::LeadMnemonic(const Control& label) {
    QWidget* buddy = nullptr;
    if (label.Caption().size() != PlainCaption(label.Caption()).size()) {
        const std::vector<Control*> all = form_.Controls();
        const auto here = std::find(all.begin(), all.end(), &label);
        if (here + 1 != all.end() && here[1]->TakesFocus()) buddy = WidgetOf(*here[1]);
    }
    static_cast<QLabel*>(WidgetOf(label))->setBuddy(buddy);
}

// The button that has the keyboard is the one that Enter presses; elsewhere it is the form's default button.
void QtFormView::FrameDefaultButton(const Control* focused) {
    const bool own = focused && focused->Kind() == ControlKind::Button;
    const Control* wanted = own ? focused : form_.DefaultButton();
    for (const auto& [control, part] : parts_) {
        if (control->Kind() == ControlKind::Button)
            static_cast<QPushButton*>(part->Widget())->setDefault(control == wanted);
    }
}

void QtFormView::Show() {
    const Qt::WindowModality wanted = form_.IsModal() ? Qt::ApplicationModal : Qt::NonModal;
    {
        const Applying applying(*this);
        if (window_->windowModality() != wanted) {
            window_->hide();
            window_->setWindowModality(wanted);
        }
        ShowWindowKind();
        ShowPlace();
        CutOut();
        window_->winId(); // the window is there before it is mapped
        JoinModal();
        LeaveTaskBar();
        form_.Minimized() ? window_->showMinimized() : window_->show();
    }
    window_->raise();
    if (form_.ShownInTaskBar()) window_->activateWindow();
}

// The toolkit blocks every window but the topmost modal one and what belongs to that. A modal window itself
// belongs to the one that was used before, and stays above it.
void QtFormView::JoinModal() {
    QWindow* own = window_->windowHandle();
    if (!own || form_.IsBlocked()) return;
    const Form* topmost = form_.Host().Order().Topmost();
    const QWidget* over = nullptr;
    if (topmost == &form_) {
        if (own->isVisible()) return;
        over = QApplication::activeWindow();
    } else {
        over = topmost ? static_cast<QtFormView*>(topmost->View())->window_.data()
                       : QApplication::activeModalWidget();
    }
    QWindow* parent = over ? over->windowHandle() : nullptr;
    for (const QWindow* each = parent; each && parent; each = each->transientParent()) {
        if (each == own) parent = nullptr; // no ring: that one belongs to this one
    }
    own->setTransientParent(parent);
}

// Neither the bar nor the pager shows it. The toolkit keeps what stands there when it maps the window, and a
// window manager takes it away when the window is withdrawn.
void QtFormView::LeaveTaskBar() {
    if (window_->isVisible()) return;
    if (!form_.HasTaskBarEntry()) SetSkippedByTaskBar(*window_);
}

void QtFormView::Hide() {
    const Applying applying(*this);
    window_->hide();
}

void QtFormView::BringToFront() {
    window_->raise();
    window_->activateWindow();
}

void QtFormView::Update(Control& control, Aspect aspect) {
    const auto found = parts_.find(&control);
    if (found == parts_.end()) return;
    const Applying applying(*this);
    Part& part = *found->second;
    switch (aspect) {
    case Aspect::Value:
        part.ShowValue();
        break;
    case Aspect::Caption:
        ShowCaption(control);
        break;
    case Aspect::Items:
        part.ShowItems();
        part.ShowValue();
        WatchInside(control);
        break;
    case Aspect::State:
        ShowState(control);
        break;
    case Aspect::Look:
        ShowLook(control);
        break;
    case Aspect::Bounds:
        ShowBounds(control);
        break;
    }
    CutOutSoon();
}

void QtFormView::UpdateRows(ListView& list, const RowChange& change) {
    const auto found = parts_.find(&list);
    if (found == parts_.end()) return;
    const Applying applying(*this);
    found->second->ShowRows(change);
    CutOutSoon();
}

void QtFormView::UpdateForm(FormAspect aspect) {
    const Applying applying(*this);
    switch (aspect) {
    case FormAspect::Caption:
        window_->setWindowTitle(ToWidgetText(form_.Caption()));
        break;
    case FormAspect::Place:
        ShowPlace();
        break;
    case FormAspect::Look:
        ShowLookOfWindow();
        break;
    case FormAspect::Order:
        ShowWindowKind();
        break;
    case FormAspect::Window:
        ShowWindowKind();
        ShowMenuBar();
        ShowPlace();
        if (form_.IsVisible() && form_.Minimized() != window_->isMinimized())
            form_.Minimized() ? window_->showMinimized() : window_->showNormal();
        break;
    case FormAspect::Blocked:
        JoinModal();
        break;
    }
}

void QtFormView::Focus(Control& control) {
    WidgetOf(control)->setFocus(Qt::OtherFocusReason);
}

const MenuItem* QtFormView::Popup(const ShownMenu& menu, MenuPlace place) {
    return AskMenu(menu, place == MenuPlace::Form ? client_->mapToGlobal(QPoint(0, 0)) : QCursor::pos());
}

std::uintptr_t QtFormView::NativeHandle(Control& control) {
    return static_cast<std::uintptr_t>(WidgetOf(control)->winId());
}

void QtFormView::ShowAll(Control& control) {
    Part& part = *parts_.at(&control);
    ShowCaption(control);
    part.ShowItems();
    part.ShowValue();
    ShowState(control);
    ShowLook(control);
    ShowBounds(control);
}

void QtFormView::ShowCaption(Control& control) {
    if (control.Kind() == ControlKind::Label) LeadMnemonic(control);
    parts_.at(&control)->ShowCaption();
}

void QtFormView::ShowState(Control& control) {
    Part& part = *parts_.at(&control);
    part.Widget()->setVisible(control.Visible() && control.HasPlace());
    part.Widget()->setEnabled(control.Enabled());
    part.ShowState();
}

void QtFormView::ShowLook(Control& control) {
    Part& part = *parts_.at(&control);
    QWidget* widget = part.Widget();
    widget->setToolTip(ToWidgetText(control.ToolTip()).toHtmlEscaped());
    widget->setFont(control.Font() ? FontOf(*control.Font()) : QApplication::font(widget));
    QPalette palette = QApplication::palette(widget);
    if (control.ForeColor()) {
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
            palette.setColor(role, ToQColor(*control.ForeColor()));
        }
    }
    if (control.BackColor()) {
        for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button}) {
            palette.setColor(role, ToQColor(*control.BackColor()));
        }
    }
    widget->setPalette(palette);
    widget->setAutoFillBackground(control.BackColor().has_value());
    part.ShowLook();
}

void QtFormView::ShowBounds(Control& control) {
    FormHost& host = form_.Host();
    const PixelRect area = ToPixels(control.Bounds(), host.Scale());
    QPoint corner(area.x, area.y);
    if (const Control* around = control.Parent().AsControl()) {
        const Insets chrome = host.Chrome(around->Kind());
        // The pane of a tab strip begins below the tabs.
        const int top = around->Kind() == ControlKind::TabStrip ? chrome.bottom : chrome.top;
        corner += QPoint(host.Scale().PixelsX(chrome.left), host.Scale().PixelsY(top));
    }
    WidgetOf(control)->setGeometry(QRect(corner, QSize(area.width, area.height)));
    WidgetOf(control)->setVisible(control.Visible() && control.HasPlace());
}

void QtFormView::ShowWindowKind() {
    Qt::WindowFlags flags = Qt::Window;
    const Qt::WindowFlags dialogue =
        Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
    switch (form_.Border()) {
    case BorderStyle::None:
        flags = (form_.ShownInTaskBar() ? Qt::Window : Qt::Tool) | Qt::FramelessWindowHint;
        break;
    case BorderStyle::Fixed:
        flags = Qt::Window | dialogue;
        if (!form_.IsModal()) flags |= Qt::WindowMinimizeButtonHint;
        break;
    case BorderStyle::Tool:
        flags = Qt::Tool | dialogue;
        break;
    case BorderStyle::Sizable:
        flags = Qt::Window;
        break;
    }
    if (form_.AlwaysOnTop()) flags |= Qt::WindowStaysOnTopHint;
    if (window_->windowFlags() == flags) return;
    const bool shown = window_->isVisible();
    window_->setWindowFlags(flags); // hides the window
    if (!shown) return;
    LeaveTaskBar();
    window_->show(); // the handle may be another one
    JoinModal();
}

void QtFormView::ShowPlace() {
    const TwipScale scale = form_.Host().Scale();
    const TwipSize client = form_.ClientSize();
    const QSize size(scale.PixelsX(client.width), scale.PixelsY(client.height));
    const int bar = menuBar_ ? menuBar_->sizeHint().height() : 0;
    const QSize whole = size + QSize(0, bar);
    if (menuBar_) menuBar_->setGeometry(0, 0, size.width(), bar);
    client_->setGeometry(0, bar, size.width(), size.height());
    if (form_.Border() == BorderStyle::Sizable) {
        const TwipSize least = form_.LeastSize();
        window_->setMinimumSize(scale.PixelsX(least.width), scale.PixelsY(least.height) + bar);
        window_->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
        window_->resize(whole);
    } else {
        window_->setFixedSize(whole);
    }
    const QPoint corner(scale.PixelsX(form_.Left()), scale.PixelsY(form_.Top()));
    if (window_->pos() != corner) window_->move(corner);
}

void QtFormView::ShowMenuBar() {
    if (!form_.MenuBar()) {
        delete menuBar_;
        menuBar_ = nullptr;
        return;
    }
    if (!menuBar_) {
        menuBar_ = new QMenuBar(window_);
        menuBar_->setNativeMenuBar(false);
        menuBar_->setVisible(true);
    }
    FillMenuBar(*menuBar_, *form_.MenuBar(), form_.Events());
}

// With a transparent colour the bare window has that colour, unless it was given another.
void QtFormView::ShowLookOfWindow() {
    window_->setWindowOpacity(form_.Opacity() / 255.0);
    const std::optional<Color>& back = form_.BackColor() ? form_.BackColor() : form_.TransparentColor();
    QPalette palette = QApplication::palette(window_);
    if (back) palette.setColor(QPalette::Window, ToQColor(*back));
    window_->setPalette(palette);
    if (!form_.TransparentColor()) window_->clearMask();
    CutOutSoon();
}

void QtFormView::CutOutSoon() {
    if (cutPending_ || !form_.TransparentColor()) return;
    cutPending_ = true;
    QTimer::singleShot(0, this, [this] {
        cutPending_ = false;
        CutOut();
    });
}

// Takes what is painted in the transparent colour out of the window's shape.
void QtFormView::CutOut() {
    if (!form_.TransparentColor()) return;
    const QBitmap shape =
        window_->grab().createMaskFromColor(ToQColor(*form_.TransparentColor()), Qt::MaskInColor);
    window_->setMask(shape);
}

} // namespace quorvane
