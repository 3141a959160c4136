#pragma once

#include "tests/support/process.h"

#include <memory>

namespace quorvane::test {

// An X server without a machine's screen, of a display number that nobody else has.
class VirtualScreen {
  public:
    explicit VirtualScreen(const std::string& geometry = "1280x800x24") {
        int ends[2] = {-1, -1};
        if (pipe(ends) != 0) return;
        server_ = std::make_unique<Process>(
            std::vector<std::string>{"Xvfb", "-displayfd", std::to_string(ends[1]), "-screen", "0", geometry,
                                     "-nolisten", "tcp", "-noreset"});
        close(ends[1]);
        std::string number;
        char digit = 0;
        pollfd ready{ends[0], POLLIN, 0};
        while (poll(&ready, 1, 20'000) > 0 && read(ends[0], &digit, 1) == 1 && digit != '\n')
            number += digit;
        close(ends[0]);
        if (!number.empty()) display_ = ":" + number;
    }

    // ":5"; empty where no server could be started.
    const std::string& Display() const { return display_; }
    void Kill() { server_.reset(); }

  private:
    std::unique_ptr<Process> server_;
    std::string display_;
};

} // namespace quorvane::test
