#include "diagnostics/frm_error.h"

#include "config/settings.h"
#include "core/run_time_error.h"
#include "diagnostics/kernel_dump.h"
#include "platform/files.h"
#include "platform/prompts.h"
#include "platform/session.h"

namespace quorvane {

namespace {

constexpr int TextWidth = 6000; // twips

} // namespace

frmError::frmError(Forms& forms, const GlobalRecord& record, const Platform& platform)
    : Form(forms, "frmError")
    , record_(record)
    , platform_(platform) {
    SetCaption({"Kerner error!", 132});
    Label1.SetFont(FontSpec{Host().DefaultFont().name, Host().DefaultFont().size, true, false, false, false});
    Label3.SetWrapWidth(TextWidth);
    Command2.onClick = [this] { DumpKernel(); };
    Command1.onClick = [this] { CloseApplication(); };
    SetLayout(
        Column({Label1, Gap(60), Label2, Label3, Gap(120), Row({Stretch(), Command2, Command1}).Equal()}));
}

void frmError::Ask(std::int32_t number, const std::string& description) {
    description_ = description;
    Label2.SetCaption("Error code: " + std::to_string(number));
    Label3.SetCaption(LiteralCaption(description));
    ShowModal();
}

void frmError::DumpKernel() {
    const std::string folder = platform_.files.WritableDirectory();
    const std::string path = folder + platform_.files.Separator() + "kernel.dmp";
    platform_.files.MakeFolder(folder);
    const std::string why = SaveKernelDump(
        record_, {Label2.Caption(), description_, PresentMoment(platform_.store, platform_.clock)},
        platform_.files, path);
    if (why.empty()) {
        platform_.prompts.Message("Kernel memory dump complete...\r\nDump file saved to [" + path + "]",
                                  "Information", message_style::Information);
    } else {
        platform_.prompts.Message("The dump could not be written to [" + path + "]\r\n" + why, "Error!",
                                  message_style::Stop);
    }
}

// Whatever a form fails at while it goes is passed over: the process ends.
void frmError::CloseApplication() {
    PassOver([this] { Collection().UnloadAll(Name()); });
    PassOver([this] { Unload(); });
    platform_.session.End(1);
}

} // namespace quorvane
