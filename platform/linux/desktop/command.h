#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

class Patience;

// Runs a program of PATH to its end, without a shell, its standard output as the answer. Nothing where it is
// not there, fails, or takes longer than there is patience, after which it is killed.
std::optional<std::string> RunCommand(const std::string& program, const std::vector<std::string>& arguments,
                                      Patience& patience);

// A program that we started and that outlives us. A process number is used again by the system; with the
// moment of the start beside it the process is told from every other.
struct StartedProgram {
    std::int64_t processId = 0;
    std::string startTime; // as the kernel counts it

    bool IsRunning() const;
    void Terminate() const; // does nothing where it runs no more
};

// Starts a program of PATH on its own, its standard streams closed.
std::optional<StartedProgram> StartProgram(const std::string& program,
                                           const std::vector<std::string>& arguments);

} // namespace quorvane
