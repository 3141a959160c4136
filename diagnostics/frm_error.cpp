#include "diagnostics/frm_error.h"

#include "core/run_time_error.h"
#include "platform/session.h"

namespace quorvane {

namespace {

constexpr int TextWidth = 6000; // twips

} // namespace

frmError::frmError(Forms& forms, const Platform& platform)
    : Form(forms, "frmError")
    , platform_(platform) {
    SetCaption({"Kerner error!", 132});
    Label1.SetFont(FontSpec{Host().DefaultFont().name, Host().DefaultFont().size, true, false, false, false});
    Label3.SetWrapWidth(TextWidth);
    // A button that does nothing helps nobody: it is seen once there is a dump.
    Command2.SetVisible(false);
    Command1.onClick = [this] { CloseApplication(); };
    SetLayout(
        Column({Label1, Gap(60), Label2, Label3, Gap(120), Row({Stretch(), Command2, Command1}).Equal()}));
}

void frmError::Ask(std::int32_t number, const std::string& description) {
    Label2.SetCaption("Error code: " + std::to_string(number));
    Label3.SetCaption(LiteralCaption(description));
    ShowModal();
}

// Whatever a form fails at while it goes is passed over: the process ends.
void frmError::CloseApplication() {
    PassOver([this] { Collection().UnloadAll(Name()); });
    PassOver([this] { Unload(); });
    platform_.session.End(1);
}

} // namespace quorvane
