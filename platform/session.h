#pragma once

#include "core/run_time_error.h"

#include <functional>
#include <string>

namespace quorvane {

// The process and its place in the person's log-on.
class Session {
  public:
    virtual ~Session() = default;

    // The whole argument text of the command line, without the program's name.
    virtual std::string CommandLine() = 0;

    // Starts the program at log-on, or no longer. `switches` goes behind the program's name where the
    // platform can pass it on. A system error number, 0 for success, also where there is nothing to take
    // away.
    virtual int SetAutostart(bool enabled, const std::string& switches) = 0;

    // Called from the event loop when the system wants the program to end: a signal, a log-off, a display
    // that goes away. Called once; the handler ends the process. A further request that comes while the
    // handler waits, as for a person who is not there, ends the process at once with status 1.
    virtual void OnEndRequest(std::function<void()> handler) = 0;

    // Ends the process here: unwinds to the event loop or to main by a ProcessEnd.
    [[noreturn]] virtual void End(int status) { throw ProcessEnd{status}; }
};

} // namespace quorvane
