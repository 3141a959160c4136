#include "entry/application.h"
#include "platform/linux/desktop/display.h"
#include "platform/linux/linux_platform.h"

#include <csignal>
#include <cstdio>
#include <malloc.h>

namespace {

// A composition's large blocks are mapped one by one and go back to the system one by one: the threshold that
// would otherwise grow with the largest block stays where it is.
constexpr int MappedFrom = 128 * 1024;

} // namespace

int main(int argumentCount, char** arguments) {
    using namespace quorvane;
    // A session manager or a bus that has gone is noticed by the failing write.
    std::signal(SIGPIPE, SIG_IGN);
    mallopt(M_MMAP_THRESHOLD, MappedFrom);
    ListenToTheToolkit();
    const DisplayChoice display = ChooseDisplay();
    if (!display.problem.empty()) {
        std::fprintf(stderr, "quorvane: %s\n", display.problem.c_str());
        return 1;
    }
    LinuxPlatform machine(argumentCount, arguments, display.platform);
    Application application(machine.Services(), machine.StoreNote());
    return application.Run();
}
