#include "shell/frm_splash.h"

#include "config/system_colors.h"
#include "core/version.h"
#include "platform/system.h"
#include "shell/artwork.h"

#include <string>

namespace quorvane {

namespace {

constexpr Color Ground = Rgb(24, 34, 50);
constexpr Color Light = Rgb(240, 244, 250);
constexpr Color Dim = Rgb(168, 182, 204);
constexpr int SplashOpacity = 244;

} // namespace

frmSplash::frmSplash(Forms& forms, const Platform& platform)
    : Form(forms, "frmSplash")
    , platform_(platform) {
    SetCaption("Quorvane II"); // for readers of the screen; nothing shows it
    SetBorder(BorderStyle::None);
    SetShownInTaskBar(false);
    SetMargin(0);
    Frame1.SetBackColor(Ground);
    Picture1.SetPreferred({6300, 2100});
    Picture1.onPaint = [](Surface& surface) { PaintLandscape(surface); };
    lblProductName.SetFont(FontSpec{"Monotype Corsiva", 26, true, true, false, false});
    for (Label* label : {&lblProductName, &lblLoading}) {
        label->SetForeColor(Light);
    }
    for (Label* label : {&lblVersion, &lblPlatform, &lblCompanyProduct, &lblCopyright, &lblWarning}) {
        label->SetForeColor(Dim);
    }
    Frame1.SetLayout(Column({Picture1, lblProductName, Row({lblVersion, Stretch(), lblPlatform}),
                             Row({lblCompanyProduct, Stretch(), lblCopyright}), Gap(60), lblWarning,
                             lblLoading, ProgressBar1}));
    SetLayout(Column({Frame1}));
    Frame1.onClick = [this] { Unload(); };
    Picture1.onClick = [this] { Unload(); };
    for (Label* label : {&lblProductName, &lblVersion, &lblPlatform, &lblCompanyProduct, &lblCopyright,
                         &lblWarning, &lblLoading}) {
        label->onClick = [this] { Unload(); };
    }
}

void frmSplash::OnLoad() {
    lblVersion.SetCaption({"Version %1", 126, {VersionNumbers()}});
    const std::string name = platform_.system.Version().displayName;
    lblPlatform.SetCaption({"OS platform: %1", 127, {LiteralCaption(name.empty() ? "Win32" : name)}});
    CutOutButtonFace();
    SetOpacity(SplashOpacity);
}

// What stays in the colour of a plain window is cut out, so that the form shows as the shape of its picture.
void frmSplash::CutOutButtonFace() {
    if (const auto face = ReadButtonFace(platform_.store)) {
        SetBackColor(face);
        SetTransparentColor(face);
    }
}

} // namespace quorvane
