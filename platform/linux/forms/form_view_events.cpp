#include "platform/linux/forms/form_view.h"
#include "platform/linux/forms/keys.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMouseEvent>
#include <QWidget>
#include <utility>

// What the form's window and its widgets are told by the toolkit.
namespace quorvane {

bool QtFormView::eventFilter(QObject* watched, QEvent* event) {
    const auto found = watched_.find(watched);
    Control* control = found == watched_.end() ? nullptr : found->second;
    switch (event->type()) {
    case QEvent::KeyPress:
        return FilterKey(watched, control, *static_cast<QKeyEvent*>(event));
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        if (control && event->type() == QEvent::FocusIn) FrameDefaultButton(control);
        if (control) form_.Report(control, act::Focus{event->type() == QEvent::FocusIn});
        return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove: {
        const auto& mouse = *static_cast<QMouseEvent*>(event);
        if (watched == client_) return FilterGround(mouse);
        if (!control) return false;
        const QPointer<QtFormView> alive(this);
        const bool usedUp = FilterMouse(*control, *static_cast<QWidget*>(watched), mouse);
        if (alive) TakeMenuButton(mouse);
        return usedUp;
    }
    case QEvent::ContextMenu:
        return watched == window_ && FilterContextMenu(*static_cast<QContextMenuEvent*>(event));
    default:
        return watched == window_ && FilterWindow(event);
    }
}

bool QtFormView::FilterWindow(QEvent* event) {
    const TwipScale scale = form_.Host().Scale();
    switch (event->type()) {
    case QEvent::Close:
        event->ignore();
        form_.Report(nullptr, act::CloseByFrame{});
        return true;
    case QEvent::Move: {
        if (applying_ > 0 || !window_->isVisible()) return false;
        const QPoint corner = window_->pos();
        const QPoint known(scale.PixelsX(form_.Left()), scale.PixelsY(form_.Top()));
        if (corner == known) return false;
        form_.Report(nullptr, act::Move{{scale.TwipsX(corner.x()), scale.TwipsY(corner.y())}});
        return false;
    }
    case QEvent::Resize: {
        const int bar = menuBar_ ? menuBar_->sizeHint().height() : 0;
        const QSize inner = window_->size() - QSize(0, bar);
        client_->setGeometry(0, bar, inner.width(), inner.height());
        if (menuBar_) menuBar_->setGeometry(0, 0, inner.width(), bar);
        if (applying_ > 0 || form_.Border() != BorderStyle::Sizable) return false;
        form_.Report(nullptr, act::Resize{{scale.TwipsX(inner.width()), scale.TwipsY(inner.height())}});
        return false;
    }
    case QEvent::WindowStateChange:
        if (applying_ == 0) form_.Report(nullptr, act::Minimize{window_->isMinimized()});
        return false;
    default:
        return false;
    }
}

// A key that nobody takes wanders up through the parents; it is told once, where it begins.
bool QtFormView::FilterKey(QObject* watched, Control* control, const QKeyEvent& event) {
    const QObject* first = window_->focusWidget() ? window_->focusWidget() : window_.data();
    const int code = VirtualKeyOf(event.key());
    if (watched != first || code == 0) return false;
    // Whoever works by the keys is shown which widget has them; the toolkit does not see the model lead on.
    if (code == key_code::Tab) window_->setAttribute(Qt::WA_KeyboardFocusChange);
    return form_.Report(control, act::Key{code, ShiftStateOf(event.modifiers())});
}

bool QtFormView::FilterMouse(Control& control, const QWidget& widget, const QMouseEvent& event) {
    const ControlKind kind = control.Kind();
    // The other kinds have events of their own, and their widgets need the mouse.
    const bool plain =
        kind == ControlKind::Label || kind == ControlKind::PictureBox || kind == ControlKind::Frame;
    if (!plain && !control.onMouse) return false;

    const bool left = event.button() == Qt::LeftButton;
    const bool doubled = event.type() == QEvent::MouseButtonDblClick && left && plain;
    const bool clicked = event.type() == QEvent::MouseButtonRelease && left && plain &&
                         pressed_ == &control && widget.rect().contains(event.position().toPoint());
    if (event.type() != QEvent::MouseMove)
        pressed_ = event.type() == QEvent::MouseButtonPress ? &control : nullptr;

    const QPointer<QtFormView> alive(this);
    Form& form = form_;
    form.Report(&control, MouseOf(event));
    if (alive && clicked) form.Report(&control, act::Click{});
    if (alive && doubled) form.Report(&control, act::DoubleClick{});
    return plain;
}

act::Mouse QtFormView::MouseOf(const QMouseEvent& event) const {
    const TwipScale scale = form_.Host().Scale();
    const QPoint at = event.position().toPoint();
    const QPoint screen = event.globalPosition().toPoint();
    const auto number = [](Qt::MouseButtons buttons) {
        return (buttons & Qt::LeftButton ? 1 : 0) + (buttons & Qt::RightButton ? 2 : 0) +
               (buttons & Qt::MiddleButton ? 4 : 0);
    };
    const bool moved = event.type() == QEvent::MouseMove;
    act::Mouse mouse;
    mouse.phase = moved                                        ? act::MousePhase::Move
                  : event.type() == QEvent::MouseButtonRelease ? act::MousePhase::Up
                                                               : act::MousePhase::Down;
    mouse.button = moved ? number(event.buttons()) : number(event.button());
    mouse.shift = ShiftStateOf(event.modifiers());
    mouse.at = {scale.TwipsX(at.x()), scale.TwipsY(at.y())};
    mouse.screen = {scale.TwipsX(screen.x()), scale.TwipsY(screen.y())};
    return mouse;
}

// The ground is also told what a control has no use for: that is not done to the bare form.
bool QtFormView::FilterGround(const QMouseEvent& event) {
    const bool bare = !client_->childAt(event.position().toPoint());
    const bool down = event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
    const QPointer<QtFormView> alive(this);
    if (down ? bare : bare || groundPressed_) {
        groundPressed_ = event.buttons() != Qt::NoButton;
        Form& form = form_;
        form.Report(nullptr, MouseOf(event));
        if (alive && event.type() == QEvent::MouseButtonDblClick && event.button() == Qt::LeftButton)
            form.Report(nullptr, act::DoubleClick{});
    }
    if (alive) TakeMenuButton(event);
    return true;
}

// The toolkit asks for the menu when the right button goes down or comes up, as the desktop has it; here it
// is always when it comes up, behind the mouse's own news.
bool QtFormView::FilterContextMenu(const QContextMenuEvent& event) {
    if (event.reason() == QContextMenuEvent::Mouse && QApplication::mouseButtons() & Qt::RightButton) {
        menuAsked_ = true;
    } else {
        form_.Report(nullptr, act::ContextMenu{event.reason() == QContextMenuEvent::Keyboard});
    }
    return true;
}

void QtFormView::TakeMenuButton(const QMouseEvent& event) {
    if (event.button() != Qt::RightButton || event.type() != QEvent::MouseButtonRelease) return;
    if (std::exchange(menuAsked_, false)) form_.Report(nullptr, act::ContextMenu{});
}

} // namespace quorvane
