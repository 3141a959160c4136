#include "shell/frm_splash.h"

#include "config/registry.h"
#include "core/numbers.h"
#include "core/text.h"
#include "core/version.h"
#include "platform/system.h"
#include "shell/artwork.h"

#include <optional>
#include <string>

namespace quorvane {

namespace {

constexpr Color ground = Rgb(24, 34, 50);
constexpr Color light = Rgb(240, 244, 250);
constexpr Color dim = Rgb(168, 182, 204);
constexpr int opacity = 244;

// Three numbers with blanks between them: the first one up to the first blank, the last one behind the last,
// and what lies between.
std::optional<Color> ReadColor(const std::string& text) {
    const std::size_t first = text.find(' ');
    const std::size_t last = text.rfind(' ');
    if (first == std::string::npos || first == last) {
        return std::nullopt;
    }
    const auto channel = [&text](std::size_t from, std::size_t count) {
        return static_cast<int>(LeadingNumber(text.substr(from, count)));
    };
    return Rgb(channel(0, first), channel(first + 1, last - first - 1), channel(last + 1, std::string::npos));
}

} // namespace

frmSplash::frmSplash(Forms& forms, const Platform& platform)
    : Form(forms, "frmSplash")
    , platform_(platform) {
    SetBorder(BorderStyle::None);
    SetShownInTaskBar(false);
    SetMargin(0);
    Frame1.SetBackColor(ground);
    Picture1.SetPreferred({6300, 2100});
    Picture1.onPaint = [](Surface& surface) { PaintLandscape(surface); };
    lblProductName.SetFont(FontSpec{"Monotype Corsiva", 26, true, true, false, false});
    for (Label* label : {&lblProductName, &lblLoading}) {
        label->SetForeColor(light);
    }
    for (Label* label : {&lblVersion, &lblPlatform, &lblCompanyProduct, &lblCopyright, &lblWarning}) {
        label->SetForeColor(dim);
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
    lblVersion.SetCaption("Version " + VersionNumbers());
    const std::string name = platform_.system.Version().displayName;
    lblPlatform.SetCaption("OS platform: " + (name.empty() ? "Win32" : name));
    CutOutButtonFace();
    SetOpacity(opacity);
}

// What stays in the colour of a plain window is cut out, so that the form shows as the shape of its picture.
void frmSplash::CutOutButtonFace() {
    std::string text;
    RegReadValue(platform_.store, "", Hive::CurrentUser, "Control Panel\\Colors", key_access::Read,
                 "ButtonFace", text);
    if (const auto face = ReadColor(text)) {
        SetBackColor(face);
        SetTransparentColor(face);
    }
}

} // namespace quorvane
