#pragma once

#include "platform/tray.h"
#include "platform/windows/base/win32.h"

namespace quorvane {

class WindowsEventLoop;

// The program's icon in the notification area. It comes back when the shell that shows the area restarts.
class WindowsTray final : public Tray {
  public:
    explicit WindowsTray(WindowsEventLoop& events);
    ~WindowsTray() override;

    bool Add(const TrayRecord& record) override;
    bool Modify(const TrayRecord& record) override;
    bool SetVersion(int version) override;
    void Remove() override;
    void SetMenu(Menu*) override {} // the area asks for a menu only when it is to be shown
    void Popup(Menu& menu) override;
    void OnMessage(std::function<void(int message)> handler) override;

  private:
    bool Tell(DWORD operation, const TrayRecord& record);
    bool Show();
    void Restore();

    WindowsEventLoop& events_;
    UINT areaCreated_;
    HICON icon_;
    TrayRecord shown_;
    bool wanted_ = false;
    bool open_ = false; // the menu
    std::function<void(int)> onMessage_;
};

} // namespace quorvane
