#pragma once

#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/platform.h"

#include <cstdint>
#include <functional>
#include <string>

namespace quorvane {

struct GlobalRecord;

// The dialogue that a failure ends in.
class frmError : public Form {
  public:
    frmError(Forms& forms, const GlobalRecord& record, const Platform& platform);

    // Shows the failure and waits until the dialogue is closed. "Close application" ends the process in the
    // middle of it, with nothing saved.
    void Ask(std::int32_t number, const std::string& description);

    Label Label1{*this, "Label1", {"Unexpected Error! Please, report to software developer", 133}};
    Label Label2{*this, "Label2"};
    Label Label3{*this, "Label3"};
    Button Command2{*this, "Command2", {"Dump kernel", 134}};
    Button Command1{*this, "Command1", {"Close application", 135}};

  private:
    void DumpKernel();
    void CloseApplication();

    std::string description_;
    const GlobalRecord& record_;
    const Platform& platform_;
};

} // namespace quorvane
