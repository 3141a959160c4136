#pragma once

#include "platform/forms/controls.h"
#include "platform/forms/form.h"

#include <string>

namespace quorvane {

// A question answered by one line.
class InputBox : public Form {
  public:
    explicit InputBox(Forms& forms);

    // Waits for the answer. An empty one means that the person cancelled, or left the line empty: the two
    // cannot be told apart.
    std::string Ask(const std::string& question, const std::string& title, const std::string& preset);

    Label Label1{*this, "Label1"};
    TextBox Text1{*this, "Text1"};
    Button Command1{*this, "Command1", {"&Ok", 120}};
    Button Command2{*this, "Command2", {"&Cancel", 121}};

  protected:
    bool OnCloseByFrame() override;

  private:
    void Cancel();
};

} // namespace quorvane
