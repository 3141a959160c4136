#pragma once

#include "platform/linux/base/system.h"

namespace quorvane {

// The system as a program with windows knows it: with its fonts, those of a file made known to the toolkit.
class GuiFontSystem final : public LinuxSystem {
  public:
    std::vector<std::string> FontNames() override;
    bool SubstitutesFont(const std::string& family) override;
    int AddFontFile(const std::string& path) override;
};

} // namespace quorvane
