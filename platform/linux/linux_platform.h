#pragma once

#include "platform/platform.h"

#include <memory>
#include <string>

namespace quorvane {

// The services of a Linux desktop, one of each. There is one in a process; it must outlive whoever uses it.
class LinuxPlatform {
  public:
    // Needs a display; `toolkitPlatform` is what ChooseDisplay answers.
    LinuxPlatform(int argumentCount, char** arguments, std::string toolkitPlatform = {});
    ~LinuxPlatform();
    LinuxPlatform(const LinuxPlatform&) = delete;
    LinuxPlatform& operator=(const LinuxPlatform&) = delete;

    Platform Services();
    // What the person should know about the stored tree; empty for nothing.
    const std::string& StoreNote() const { return storeNote_; }

  private:
    struct Parts;

    std::string toolkitPlatform_;
    std::string storeNote_;
    std::unique_ptr<Parts> parts_;
};

} // namespace quorvane
