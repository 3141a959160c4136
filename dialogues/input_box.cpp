#include "dialogues/input_box.h"

namespace quorvane {

namespace {

constexpr int TextWidth = 4800; // twips

} // namespace

InputBox::InputBox(Forms& forms)
    : Form(forms, "InputBox") {
    Label1.SetWrapWidth(TextWidth);
    Text1.columns = 36;
    Command1.onClick = [this] { Hide(); };
    Command2.onClick = [this] { Cancel(); };
    SetDefaultButton(&Command1);
    SetCancelButton(&Command2);
    SetLayout(Column({Label1, Text1, Gap(120), Row({Stretch(), Command1, Command2}).Equal()}));
}

std::string InputBox::Ask(const std::string& question, const std::string& title, const std::string& preset) {
    Label1.SetCaption(LiteralCaption(question));
    SetCaption(title);
    Text1.SetText(preset);
    Text1.SetSelection(0, static_cast<int>(preset.size()));
    Text1.SetFocus();
    ShowModal();
    return Text1.Text();
}

void InputBox::Cancel() {
    Text1.SetText("");
    Hide();
}

bool InputBox::OnCloseByFrame() {
    Cancel();
    return false;
}

} // namespace quorvane
