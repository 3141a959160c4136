#pragma once

#include "platform/system.h"

#include <set>
#include <string>

namespace quorvane {

// Says on standard error what is wrong with a file or a folder, once for each path: a change comes every few
// minutes and would say it again.
class Complaints {
  public:
    explicit Complaints(System& system)
        : system_(system) {}

    void Tell(const std::string& path, const std::string& why) {
        if (told_.insert(path).second) system_.Complain(path + ": " + why);
    }

  private:
    System& system_;
    std::set<std::string> told_;
};

} // namespace quorvane
