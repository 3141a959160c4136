#pragma once

#include <cstdint>
#include <string>

namespace quorvane {

// A program that was started by this process; 0 is none. A number is never used twice.
using ProgramHandle = std::int32_t;

enum class ProgramWindow { Normal, Minimized };

// Other programs and the things that open by association. Nothing here waits for what it starts, and nothing
// that has ended stays behind.
class Programs {
  public:
    virtual ~Programs() = default;

    // Starts a program from its command line: words parted by blanks, words with blanks in double quotes,
    // nothing expanded. 0 where there is no such program. A window that is minimised has the focus all the
    // same, where the desktop can do both.
    virtual ProgramHandle Start(const std::string& commandLine, ProgramWindow window) = 0;

    // As a person opens it from the desktop: a program is started, any other file, folder or address goes to
    // the program it belongs to. The handle is 0 where no process can be told of; `opened` where it worked.
    struct Opening {
        bool opened = false;
        ProgramHandle handle = 0;
    };
    virtual Opening Open(const std::string& fileOrAddress) = 0;

    // Ends a program of ours and what it has started in turn. False where it had ended before, and for a
    // handle that was never given.
    virtual bool Terminate(ProgramHandle program) = 0;
    virtual bool IsRunning(ProgramHandle program) = 0;
};

} // namespace quorvane
