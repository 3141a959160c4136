#pragma once

#include "platform/linux/base/system.h"

namespace quorvane {

// The system as a program with windows knows it: fonts of a file are made known to the toolkit.
class GuiFontSystem final : public LinuxSystem {
  public:
    int AddFontFile(const std::string& path) override;
};

} // namespace quorvane
