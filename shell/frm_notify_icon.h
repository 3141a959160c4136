#pragma once

#include "config/global_record.h"
#include "platform/forms/form.h"
#include "platform/forms/menu.h"
#include "platform/platform.h"

#include <functional>
#include <memory>
#include <string>

namespace quorvane {

// The hidden form behind the icon in the notification area, and the icon's menu.
class frmNotifyIcon : public Form {
  public:
    // What the menu sets in motion elsewhere.
    struct Hooks {
        std::function<void(const std::string& file, int mode)> changeWallpaper;
        std::function<void()> writeSettings;
        std::function<void()> saveAndEnd;
        std::function<void()> releaseAndEnd;
    };

    frmNotifyIcon(Forms& forms, GlobalRecord& record, const Platform& platform, Hooks hooks);

    // Adds the icon with the present wallpaper in its balloon.
    void ShowTrayTip();
    void RemoveTrayIcon();

    Menu mnu_popup;

  protected:
    void OnLoad() override;
    void OnUnload() override;

  private:
    void BuildTrayMenu();
    std::shared_ptr<Surface> Add_BM_Handler(std::shared_ptr<Surface> picture);
    void TakeMessage(int message);

    void ChangeNow();
    void AddCurrentWallpaper(OneBased<ListedFile>& list);
    void RemoveCurrentFromFavorites();
    void Exit();

    GlobalRecord& record_;
    const Platform& platform_;
    Hooks hooks_;
};

} // namespace quorvane
