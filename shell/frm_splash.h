#pragma once

#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/platform.h"

namespace quorvane {

// What a person sees while the program starts: a picture with the program's name, and a bar. A click on it
// takes it away.
class frmSplash : public Form {
  public:
    frmSplash(Forms& forms, const Platform& platform);

  private:
    Frame Frame1{*this, "Frame1"};
    PictureBox Picture1{Frame1, "Picture1"};
    Label lblProductName{Frame1, "lblProductName", {"Quorvane II", 125}};
    Label lblVersion{Frame1, "lblVersion"};
    Label lblPlatform{Frame1, "lblPlatform"};
    Label lblCompanyProduct{Frame1, "lblCompanyProduct", {"Wallpapers, calendar, Sun and Moon", 128}};
    Label lblCopyright{Frame1, "lblCopyright", {"The Quorvane project, 2026", 129}};
    Label lblWarning{Frame1, "lblWarning", {"This software provided as is, without any warranty!", 130}};
    Label lblLoading{Frame1, "lblLoading", {"Please, wait... Program is loading", 131}};

  public:
    ProgressBar ProgressBar1{Frame1, "ProgressBar1"};

  protected:
    void OnLoad() override;

  private:
    void CutOutButtonFace();

    const Platform& platform_;
};

} // namespace quorvane
