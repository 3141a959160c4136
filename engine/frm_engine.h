#pragma once

#include "config/global_record.h"
#include "core/locale_strings.h"
#include "core/program.h"
#include "engine/complaints.h"
#include "engine/composition.h"
#include "engine/file_list.h"
#include "engine/selection.h"
#include "platform/forms/form.h"
#include "platform/forms/timer.h"

#include <string>

namespace quorvane {

// The hidden form whose timers are the system's pulse, and the one entry to a change of the wallpaper.
class frmEngine : public Form {
  public:
    // Everything must outlive the form.
    frmEngine(Forms& forms, GlobalRecord& record, const Platform& platform, const LocaleStrings& locale,
              Program& program);

    // Composes a wallpaper and hands it to the desktop. The engine chooses the picture where `file` is empty;
    // `mode` is a change_mode. Nothing is done while DISABLE_WALLPAPER_CHANGE is set, nor inside another
    // change: with a short interval and a slow scan a tick would enter it again and again.
    void ChangeWallpaper(const std::string& file, int mode = change_mode::User);

    // Rebuilds the candidate list where a rescan is due.
    bool BuildFileList() { return fileList_.BuildFileList(); }

    // The timers of the hot keys, the corners and the alarms stand here as soon as their jobs do: one without
    // a job would only wake the machine.
    Timer Timer1{*this, "Timer1", 1000};  // the wallpaper's countdown
    Timer Timer2{*this, "Timer2", 60000}; // the rescan's countdown

  protected:
    void OnLoad() override;

  private:
    void CountDownToChange();
    void CountDownToRescan();

    GlobalRecord& record_;
    const Platform& platform_;
    Program& program_;
    Complaints complaints_;
    FileList fileList_;
    Selection selection_;
    Composition composition_;
    bool changing_ = false;
};

} // namespace quorvane
