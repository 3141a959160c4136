#include "cli/commands.h"
#include "platform/headless.h"

#include <iostream>

int main(int count, char** words) {
    std::ios::sync_with_stdio(false);
    // A batch flushes when it has read all that there is, not at each line.
    std::cin.tie(nullptr);
    std::cerr.tie(nullptr);
    std::cerr.unsetf(std::ios::unitbuf);
    quorvane::cli::Streams streams{std::cin, std::cout, std::cerr, quorvane::OutputIsTerminal()};
    const std::vector<std::string> arguments(words + (count > 0 ? 1 : 0), words + count);
    const int status = quorvane::cli::RunCommand(quorvane::cli::AllCommands(), arguments, streams);
    std::cout.flush();
    std::cerr.flush();
    if (!std::cout) {
        std::cerr << "quorvanectl: the output could not be written" << std::endl;
        return quorvane::cli::Refused;
    }
    return status;
}
