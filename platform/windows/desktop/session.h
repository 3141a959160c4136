#pragma once

#include "platform/session.h"

namespace quorvane {

class Store;
class WindowsEventLoop;

class WindowsSession final : public Session {
  public:
    WindowsSession(WindowsEventLoop& events, Store& store);
    ~WindowsSession() override;

    std::string CommandLine() override;
    int SetAutostart(bool enabled, const std::string& switches) override;
    // Asked by: the end of the log-on session, WM_CLOSE to the program's hidden window (as "taskkill" sends),
    // and at a console Ctrl+C, Ctrl+Break and the console's closing.
    void OnEndRequest(std::function<void()> handler) override;

  private:
    void RequestEnd();

    WindowsEventLoop& events_;
    Store& store_;
    std::function<void()> onEndRequest_;
    bool ending_ = false; // the first request has been taken up
};

} // namespace quorvane
