#pragma once

#include "platform/forms/form.h"
#include "platform/linux/forms/parts.h"

#include <QObject>
#include <QPointer>
#include <map>
#include <memory>
#include <vector>

class QKeyEvent;
class QMenuBar;
class QMouseEvent;

namespace quorvane {

// A form's window on the screen.
class QtFormView final : public QObject, public FormView {
  public:
    explicit QtFormView(Form& form);
    ~QtFormView() override;

    void Show(bool modal) override;
    void Hide() override;
    void BringToFront() override;
    void Update(Control& control, Aspect aspect) override;
    void UpdateRows(ListView& list, const RowChange& change) override;
    void UpdateForm(FormAspect aspect) override;
    void Focus(Control& control) override;
    void Popup(Menu& menu) override;
    std::uintptr_t NativeHandle(Control& control) override;

    // For tests, which work on the widgets.
    QWidget* Window() const { return window_; }
    QWidget* WidgetOf(const Control& control) const { return parts_.at(&control)->Widget(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Applying;

    void MakeParts(Container& container, QWidget* parent);
    void Watch(QWidget* widget, Control* control);
    void JoinTabOrder();
    void LeadMnemonic(const Control& label);

    void ShowAll(Control& control);
    void ShowCaption(Control& control);
    void ShowState(Control& control);
    void ShowLook(Control& control);
    void ShowBounds(Control& control);
    void ShowWindowKind();
    void ShowPlace();
    void ShowMenuBar();
    void ShowLookOfWindow();
    void CutOutSoon();
    void CutOut();

    // Filters. Each may end in the death of this view: nothing is touched after a report.
    bool FilterWindow(QEvent* event);
    bool FilterKey(QObject* watched, Control* control, const QKeyEvent& event);
    bool FilterMouse(Control& control, const QWidget& widget, const QMouseEvent& event);

    Form& form_;
    QPointer<QWidget> window_;
    QWidget* client_ = nullptr; // below the menu bar
    QMenuBar* menuBar_ = nullptr;
    std::map<const Control*, std::unique_ptr<Part>> parts_;
    std::map<const QObject*, Control*> watched_;
    int applying_ = 0;
    bool cutPending_ = false;
    Control* pressed_ = nullptr; // the left button went down on it
};

} // namespace quorvane
