// Any bytes as a criterion. Where the text is short enough for the slow walk, both must agree.

#include "alarms/criteria/compiler.h"
#include "alarms/criteria/lexer.h"
#include "fuzz/reference/criteria_analysis.h"

#include <cstdint>
#include <cstdlib>

namespace {

using namespace quorvane;

void Require(bool condition) {
    if (!condition) std::abort();
}

void CompareWithTheSlowWalk(const std::string& leksems, std::size_t stackEntries) {
    const auto slow = reference::Walk(leksems, stackEntries, 3000);
    Require(!slow || reference::Difference(leksems, stackEntries, *slow).empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const CompiledCriterion result = CompileCriteria(text);
    Require(!result.refused || result.compiled.empty());
    Require(result.refused || result.message.empty());

    std::string leksems;
    PassOver([&] { leksems = ScanCriterion(text).leksems; });
    CompareWithTheSlowWalk(leksems, AnalyserStackEntries);
    CompareWithTheSlowWalk(leksems, 4 + size % 32);
    // The same bytes as leksems, which reach the analyser whatever the lexer would say.
    std::string direct;
    for (std::size_t i = 0; i < size; ++i)
        direct += "aboocpf-()[]{}||"[data[i] % 16];
    CompareWithTheSlowWalk(direct, AnalyserStackEntries);
    CompareWithTheSlowWalk(direct, 4 + size % 32);
    return 0;
}
