// Any bytes as a question to the running program: refused or carried out, and the answer has the form of one.
#include "commands/message.h"
#include "commands/setting_values.h"
#include "platform/memory/memory_platform.h"
#include "tests/support/recorded_program.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quorvane;
    MemoryPlatform machine;
    test::RecordedProgram program(machine.calls);
    GlobalRecord record;
    commands::Place place{record, commands::ContextOf(machine.store, machine.files, machine.clock),
                          machine.system, &program};
    const std::string answer = commands::AnswerTo({reinterpret_cast<const char*>(data), size}, place);
    if (!commands::AnswerOf(answer)) std::abort();
    return 0;
}
