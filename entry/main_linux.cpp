#include "entry/application.h"
#include "platform/linux/desktop/display.h"
#include "platform/linux/linux_platform.h"

#include <cstdio>
#include <malloc.h>

namespace {

// A composition's large blocks are mapped one by one and go back to the system one by one: the threshold that
// would otherwise grow with the largest block stays where it is.
constexpr int MappedFrom = 128 * 1024;

} // namespace

int main(int argumentCount, char** arguments) {
    using namespace quorvane;
    mallopt(M_MMAP_THRESHOLD, MappedFrom);
    ListenToTheToolkit();
    const std::string problem = DisplayProblem();
    if (!problem.empty()) {
        std::fprintf(stderr, "quorvane: %s\n", problem.c_str());
        return 1;
    }
    LinuxPlatform machine(argumentCount, arguments);
    Application application(machine.Services(), machine.StoreNote());
    return application.Run();
}
