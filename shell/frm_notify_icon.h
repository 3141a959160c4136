#pragma once

#include "config/global_record.h"
#include "core/program.h"
#include "platform/forms/form.h"
#include "platform/forms/menu.h"
#include "platform/platform.h"

#include <memory>
#include <string>

namespace quorvane {

// The hidden form behind the icon in the notification area, and the icon's menu.
class frmNotifyIcon : public Form {
  public:
    frmNotifyIcon(Forms& forms, GlobalRecord& record, const Platform& platform, Program& program);

    // Adds the icon with the present wallpaper in its balloon.
    void ShowTrayTip();
    void RemoveTrayIcon();

    Menu mnu_popup{*this, "mnu_popup"};

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
    Program& program_;
};

} // namespace quorvane
