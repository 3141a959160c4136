#pragma once

#include "platform/forms/form.h"
#include "platform/linux/forms/parts.h"

#include <QObject>
#include <QPointer>
#include <map>
#include <memory>
#include <vector>

class QContextMenuEvent;
class QKeyEvent;
class QMenuBar;
class QMouseEvent;

namespace quorvane {

// A form's window on the screen.
class QtFormView final : public QObject, public FormView {
  public:
    explicit QtFormView(Form& form);
    ~QtFormView() override;

    void Show() override;
    void Hide() override;
    void BringToFront() override;
    void Update(Control& control, Aspect aspect) override;
    void UpdateRows(ListView& list, const RowChange& change) override;
    void UpdateForm(FormAspect aspect) override;
    void Focus(Control& control) override;
    const MenuItem* Popup(const ShownMenu& menu, MenuPlace place) override;
    std::uintptr_t NativeHandle(Control& control) override;
    FormMetrics& Metrics() override { return form_.Host(); }

    // For tests, which work on the widgets.
    QWidget* Window() const { return window_; }
    QWidget* WidgetOf(const Control& control) const { return parts_.at(&control)->Widget(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Applying;

    void MakeParts(Container& container, QWidget* parent);
    void WatchInside(Control& control);
    void Watch(QWidget* widget, Control* control);
    void LeadMnemonic(const Control& label);
    void FrameDefaultButton(const Control* focused);

    void ShowAll(Control& control);
    void ShowCaption(Control& control);
    void ShowState(Control& control);
    void ShowLook(Control& control);
    void ShowBounds(Control& control);
    void ShowWindowKind();
    void JoinModal();
    void LeaveTaskBar();
    void ShowPlace();
    void ShowMenuBar();
    void ShowLookOfWindow();
    void CutOutSoon();
    void CutOut();

    // Filters. Each may end in the death of this view: nothing is touched after a report.
    bool FilterWindow(QEvent* event);
    bool FilterKey(QObject* watched, Control* control, const QKeyEvent& event);
    bool FilterMouse(Control& control, const QWidget& widget, const QMouseEvent& event);
    bool FilterGround(const QMouseEvent& event);
    bool FilterContextMenu(const QContextMenuEvent& event);
    void TakeMenuButton(const QMouseEvent& event);
    act::Mouse MouseOf(const QMouseEvent& event) const;

    Form& form_;
    QPointer<QWidget> window_;
    QWidget* client_ = nullptr; // below the menu bar
    QMenuBar* menuBar_ = nullptr;
    std::map<const Control*, std::unique_ptr<Part>> parts_;
    std::map<const QObject*, Control*> watched_;
    int applying_ = 0;
    bool cutPending_ = false;
    Control* pressed_ = nullptr; // the left button went down on it
    bool groundPressed_ = false; // a button went down on the bare ground
    bool menuAsked_ = false;     // the right button is down where no control has a menu of its own
};

} // namespace quorvane
