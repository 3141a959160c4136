#pragma once

#include "platform/forms/controls.h"
#include "platform/forms/form_host.h"

#include <functional>
#include <memory>

class QObject;
class QWidget;

namespace quorvane {

// A control's widget. It shows what the model says and calls `report` for what a person does.
class Part {
  public:
    virtual ~Part() = default;

    virtual QWidget* Widget() const = 0;
    // What the widgets of children belong to.
    virtual QWidget* Inside() const { return Widget(); }
    virtual void ShowCaption() {}
    virtual void ShowItems() {}
    virtual void ShowRows(const RowChange&) {} // of a list
    virtual void ShowValue() {}
    virtual void ShowState() {} // beyond visible and enabled
    virtual void ShowLook() {}  // beyond font, colours and tool tip
    // The control is gone or going, the widget is hidden and goes a little later.
    virtual void Detach() {}
};

// Makes the part of a control: one function for each kind.
class PartMaker final : public ControlVisitor {
  public:
    using Report = std::function<void(Control&, const Act&)>;

    // `parent` is the widget of the container. What the part connects ends with `context`.
    PartMaker(QWidget* parent, QObject* context, Report report)
        : parent_(parent)
        , context_(context)
        , report_(std::move(report)) {}

    std::unique_ptr<Part> part;

    void Visit(Label& control) override;
    void Visit(TextBox& control) override;
    void Visit(RichTextBox& control) override;
    void Visit(Button& control) override;
    void Visit(CheckBox& control) override;
    void Visit(OptionButton& control) override;
    void Visit(ComboBox& control) override;
    void Visit(ListView& control) override;
    void Visit(TabStrip& control) override;
    void Visit(Frame& control) override;
    void Visit(Slider& control) override;
    void Visit(ProgressBar& control) override;
    void Visit(ScrollBar& control) override;
    void Visit(DatePicker& control) override;
    void Visit(MonthView& control) override;
    void Visit(PictureBox& control) override;

  private:
    QWidget* parent_;
    QObject* context_;
    Report report_;
};

} // namespace quorvane
