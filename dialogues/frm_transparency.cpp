#include "dialogues/frm_transparency.h"

namespace quorvane {

frmTransparency::frmTransparency(Forms& forms)
    : Form(forms, "frmTransparency") {
    SetCaption({"Transparency", 123});
    Slider1.SetRange(0, 255);
    Slider1.length = 3900;
    lblValue.SetAlignment(Label::Align::Right);
    const auto follow = [this] { ApplyTransparency(Slider1.Value()); };
    Slider1.onChange = follow;
    Slider1.onScroll = follow;
    Command1.onClick = [this] {
        if (value_) *value_ = Slider1.Value();
        Hide();
    };
    Command2.onClick = [this] { Cancel(); };
    SetDefaultButton(&Command1);
    SetCancelButton(&Command2);
    Frame1.SetLayout(Row({Place(Slider1).Stretched(), Place(lblValue).Least({420, 0})}));
    SetLayout(Column({Frame1, Gap(60), Row({Stretch(), Command1, Command2}).Equal()}));
}

void frmTransparency::Adjust(Form& window, std::int32_t& Transparency_Value) {
    window_ = &window;
    value_ = &Transparency_Value;
    Slider1.SetValue(Transparency_Value);
    ApplyTransparency(Slider1.Value());
    ShowModal();
    window_ = nullptr;
    value_ = nullptr;
    Unload();
}

void frmTransparency::ApplyTransparency(int alpha) {
    lblValue.SetCaption(std::to_string(alpha));
    if (window_) window_->SetOpacity(alpha);
}

void frmTransparency::Cancel() {
    if (value_) ApplyTransparency(*value_);
    Hide();
}

bool frmTransparency::OnCloseByFrame() {
    Cancel();
    return false;
}

} // namespace quorvane
