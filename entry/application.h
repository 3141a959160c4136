#pragma once

#include "config/global_record.h"
#include "config/settings.h"
#include "core/locale_strings.h"
#include "core/program.h"
#include "engine/frm_engine.h"
#include "locale/locale_files.h"
#include "platform/channel.h"
#include "platform/forms/form.h"
#include "platform/platform.h"
#include "shell/frm_notify_icon.h"
#include "shell/frm_splash.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quorvane {

struct CommandLineRequests;

// The program: owner of the global record and of the forms, and what joins the subsystems to each other.
class Application final : public Program {
  public:
    // The platform outlives the application. `storeNote` is what the person should know about the stored
    // tree, empty for nothing; it is shown in a box once the start is over.
    explicit Application(const Platform& platform, std::string storeNote = {});

    // The start, to its end, and the events until the process ends. The exit status.
    int Run();

    // The start in its order. Afterwards the process lives on by its forms.
    void Main();

    void ChangeWallpaper(const std::string& file, int mode) override;
    void BuildFileList() override;
    void WriteSettings() override;
    void SaveAndEnd() override;
    void ReleaseAndEnd() override;
    void ShowErrorDialog(std::int32_t number, const std::string& description) override;

    GlobalRecord& Record() { return record_; }
    Forms& LoadedForms() { return forms_; }
    frmEngine& Engine() { return engine_; }
    frmNotifyIcon& NotifyIcon() { return notifyIcon_; }

  private:
    void RunStages();
    void ShowBoxAndEnd(const std::string& text);
    void Bar(int value);
    void FindSystemDirectory();
    void ReadLanguage();
    void ReadLocale();
    void AskToEnd();
    SettingsContext Context();
    void ListenToTheShell();
    void AnswerTheShell(const std::string& question, const Channel::Reply& reply);

    const Platform platform_;
    std::string storeNote_;
    GlobalRecord record_;
    LocaleStrings locale_;
    std::vector<LocaleFile> localeFiles_;
    std::vector<std::function<void()>> questions_; // of the shell, which wait for the end of the start
    Forms forms_;
    frmSplash splash_;
    frmNotifyIcon notifyIcon_;
    frmEngine engine_;
};

} // namespace quorvane
