// Any bytes as a compiled criterion and as a typed one, at any moment. Where the text is short enough for the
// arrays, the decoded program must agree with them.

#include "alarms/criteria/program.h"
#include "alarms/criteria/trial.h"
#include "fuzz/reference/criteria_evaluation.h"
#include "platform/shared/seeded_random.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quorvane;
    if (size < 4) return 0;
    const DateTime now{2000 + data[0], 1 + data[1] % 12, 1 + data[1] / 12 % 28,
                       data[2] % 24,   data[2] / 8 % 60, data[3] % 60};
    const std::string text(reinterpret_cast<const char*>(data + 4), size - 4);

    SeededRandom random;
    const CriteriaMoment moment(now, random);
    CriteriaMemory memory, slowMemory;
    if (text.size() < 200 && !reference::Agree(text, moment, memory, slowMemory, 1000)) std::abort();
    CriteriaMemory freshMemory, watchedMemory;
    WatchedCriterion watched;
    if (watched.Test(text, moment, watchedMemory) != TestCriteria(text, moment, freshMemory)) std::abort();
    TryCriteria(text, moment, memory);
    return 0;
}
