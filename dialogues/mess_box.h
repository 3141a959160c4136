#pragma once

#include "platform/forms/controls.h"
#include "platform/forms/form.h"

#include <string>

namespace quorvane {

// A message that does not hold up the program. There is one window: a new message replaces the old one.
class MessBox : public Form {
  public:
    explicit MessBox(Forms& forms);

    void Tell(const std::string& message, const std::string& title);

    Label Label1{*this, "Label1"};
    Button Command1{*this, "Command1", {"&Ok", 120}};

  protected:
    bool OnCloseByFrame() override;
};

} // namespace quorvane
