#include "dialogues/mess_box.h"

namespace quorvane {

namespace {

constexpr int TextWidth = 5400; // twips

} // namespace

MessBox::MessBox(Forms& forms)
    : Form(forms, "MessBox") {
    Label1.SetWrapWidth(TextWidth);
    Command1.onClick = [this] { Hide(); };
    SetDefaultButton(&Command1);
    SetCancelButton(&Command1);
    SetLayout(Column({Place(Label1).Least({3000, 0}), Gap(120), Row({Stretch(), Command1, Stretch()})}));
}

void MessBox::Tell(const std::string& message, const std::string& title) {
    Label1.SetCaption(LiteralCaption(message));
    SetCaption(title);
    Arrange();
    Show();
    BringToFront();
}

// As "Ok": the form is kept for the next message.
bool MessBox::OnCloseByFrame() {
    Hide();
    return false;
}

} // namespace quorvane
