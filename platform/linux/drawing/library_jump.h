#pragma once

#include <csetjmp>

namespace quorvane {

// For a library that leaves its own routines by a jump on an error: everything between Guarded and a call of
// the library must be plain data.
class LibraryJump {
  public:
    // Runs `steps`; false where the library gave up in their midst.
    template<typename Steps>
    bool Guarded(Steps&& steps) {
        if (setjmp(back_)) return false;
        steps();
        return true;
    }

  protected:
    // For the library's report of an error, which must not return.
    [[noreturn]] void GiveUp() { std::longjmp(back_, 1); }

  private:
    std::jmp_buf back_{};
};

} // namespace quorvane
