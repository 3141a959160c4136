#pragma once

#include "platform/forms/form.h"
#include "platform/linux/forms/parts.h"
#include "platform/linux/forms/qt_text.h"

namespace quorvane {

// A part whose control and widget have known types. The widget belongs to its parent widget.
template<typename Kind, typename ShownWidget>
class PartOf : public Part {
  public:
    PartOf(Kind& control, QWidget* parent)
        : control_(control)
        , widget_(new ShownWidget(parent)) {}

    QWidget* Widget() const override { return widget_; }
    ShownWidget* Shown() const { return widget_; }

  protected:
    Kind& control_;
    ShownWidget* widget_;
};

} // namespace quorvane
