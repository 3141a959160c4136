#pragma once

#include "platform/platform.h"

#include <memory>

namespace quorvane {

// The services of Windows, one of each. There is one in a process; it must outlive whoever uses it.
class WindowsPlatform {
  public:
    WindowsPlatform();
    ~WindowsPlatform();
    WindowsPlatform(const WindowsPlatform&) = delete;
    WindowsPlatform& operator=(const WindowsPlatform&) = delete;

    Platform Services();

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace quorvane
