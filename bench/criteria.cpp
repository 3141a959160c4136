// The criteria language: one evaluation beside the same condition in muParser and LuaJIT, a tick of the
// alarms, and the compiler.

#include "alarms/criteria/compiler.h"
#include "alarms/criteria/foretelling.h"
#include "alarms/criteria/program.h"
#include "platform/shared/seeded_random.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#ifdef QUORVANE_BENCH_MUPARSER
#include <muParser.h>
#endif
#ifdef QUORVANE_BENCH_LUAJIT
#include <luajit-2.1/lua.hpp>
#endif

namespace quorvane {
namespace {

// The moments that every contender evaluates in turn: around noon of the days of a week, so that the
// condition comes out both ways.
struct Moments {
    static constexpr std::size_t Count = 64;
    SeededRandom random;
    std::vector<CriteriaMoment> all;
    Moments() {
        for (int at = 0; at < static_cast<int>(Count); ++at)
            all.emplace_back(DateTime{2026, 11, 16 + at % 7, 11 + at % 3 / 2, 29 + at % 2, 0}, random);
    }
    double Value(std::size_t at, SystemVariable variable) const { return all[at].Value(variable); }
};

const std::string Condition = CompileCriteria("hh=12&nn=30&wd<6").compiled;

void EvaluateQuorvane(benchmark::State& state) {
    const Moments moments;
    CriteriaMemory memory;
    CriteriaProgram program(Condition);
    std::size_t at = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(program.Evaluate(moments.all[at++ % Moments::Count], memory));
}
BENCHMARK(EvaluateQuorvane);

#ifdef QUORVANE_BENCH_MUPARSER
void EvaluateMuParser(benchmark::State& state) {
    const Moments moments;
    double hh = 0;
    double nn = 0;
    double wd = 0;
    mu::Parser parser;
    parser.DefineVar("hh", &hh);
    parser.DefineVar("nn", &nn);
    parser.DefineVar("wd", &wd);
    parser.SetExpr("hh==12 && nn==30 && wd<6");
    std::size_t at = 0;
    for (auto _ : state) {
        const std::size_t moment = at++ % Moments::Count;
        hh = moments.Value(moment, SystemVariable::Hour);
        nn = moments.Value(moment, SystemVariable::Minute);
        wd = moments.Value(moment, SystemVariable::Weekday);
        benchmark::DoNotOptimize(parser.Eval());
    }
}
BENCHMARK(EvaluateMuParser);
#endif

#ifdef QUORVANE_BENCH_LUAJIT
void EvaluateLuaJit(benchmark::State& state) {
    const Moments moments;
    lua_State* lua = luaL_newstate();
    luaL_openlibs(lua);
    if (luaL_dostring(lua, "return function(hh, nn, wd) return hh == 12 and nn == 30 and wd < 6 end") != 0)
        state.SkipWithError(lua_tostring(lua, -1));
    std::size_t at = 0;
    for (auto _ : state) {
        const std::size_t moment = at++ % Moments::Count;
        lua_pushvalue(lua, -1);
        lua_pushnumber(lua, moments.Value(moment, SystemVariable::Hour));
        lua_pushnumber(lua, moments.Value(moment, SystemVariable::Minute));
        lua_pushnumber(lua, moments.Value(moment, SystemVariable::Weekday));
        lua_call(lua, 3, 1);
        benchmark::DoNotOptimize(lua_toboolean(lua, -1));
        lua_pop(lua, 1);
    }
    lua_close(lua);
}
BENCHMARK(EvaluateLuaJit);
#endif

// A thousand alarms of a few sorts, none of them alike.
std::vector<std::string> ThousandCriteria() {
    std::vector<std::string> criteria;
    for (int at = 0; at < 1000; ++at) {
        const std::string hour = std::to_string(at % 24);
        const std::string minute = std::to_string(at % 60);
        const std::vector<std::string> sorts{
            "hh=" + hour + "&nn=" + minute + "&wd<6",
            "hh>=" + hour + "&hh<=17^nn=" + minute,
            "(dd=1&mm=1)^(dd=25&mm=12)&hh=" + hour,
            "ss\\" + std::to_string(at % 7 + 2) + "=0&nn=" + minute,
        };
        criteria.push_back(CompileCriteria(sorts[static_cast<std::size_t>(at) % sorts.size()]).compiled);
    }
    return criteria;
}

// Two ticks a second, as the alarms' timer has it.
void TickOfAThousandAlarms(benchmark::State& state) {
    const std::vector<std::string> criteria = ThousandCriteria();
    std::vector<WatchedCriterion> alarms(criteria.size());
    SeededRandom random;
    CriteriaMemory memory;
    int tick = 0;
    for (auto _ : state) {
        const int second = tick++ / 2;
        const CriteriaMoment moment({2026, 11, 16, 12, second / 60 % 60, second % 60}, random);
        for (std::size_t at = 0; at < alarms.size(); ++at)
            benchmark::DoNotOptimize(alarms[at].Test(criteria[at], moment, memory));
    }
}
BENCHMARK(TickOfAThousandAlarms)->Unit(benchmark::kMicrosecond);

// The same where nothing could be kept from the tick before.
void TickWithEverythingChanged(benchmark::State& state) {
    std::vector<CriteriaProgram> alarms;
    for (const std::string& criterion : ThousandCriteria())
        alarms.emplace_back(criterion);
    const Moments moments;
    CriteriaMemory memory;
    std::size_t tick = 0;
    for (auto _ : state) {
        const CriteriaMoment& moment = moments.all[tick++ % Moments::Count];
        for (CriteriaProgram& alarm : alarms)
            benchmark::DoNotOptimize(alarm.Evaluate(moment, memory));
    }
}
BENCHMARK(TickWithEverythingChanged)->Unit(benchmark::kMicrosecond);

void Decode(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(CriteriaProgram(Condition));
}
BENCHMARK(Decode);

void Compile(benchmark::State& state, const char* text) {
    for (auto _ : state)
        benchmark::DoNotOptimize(CompileCriteria(text));
}
BENCHMARK_CAPTURE(Compile, good, "hh = 12 & nn = 30 & wd < 6");
BENCHMARK_CAPTURE(Compile, broken, "((hh = 12) & (nn = 30) & wd < 6))");

// The floor: a descent over well-formed text without brackets that writes the compiled form straight away, no
// grammar, no messages, no limits.
class PlainDescent {
  public:
    explicit PlainDescent(std::string_view text)
        : text_(text) {}

    std::string Compiled() {
        Chain(0);
        return std::move(out_);
    }

  private:
    static constexpr std::string_view Operators[] = {"+-^", "*/\\&", "=<>"};

    char Next() {
        while (at_ < text_.size() && text_[at_] == ' ')
            ++at_;
        return at_ < text_.size() ? text_[at_] : '\0';
    }
    void Chain(std::size_t level) {
        if (level == 3) return Operand();
        const std::size_t begin = out_.size();
        Chain(level + 1);
        const char sign = Next();
        if (sign == '\0' || Operators[level].find(sign) == std::string_view::npos) return;
        ++at_;
        const char instruction[] = {static_cast<char>('1' + level), ';', sign, '~'};
        out_.insert(begin, instruction, sizeof instruction);
        out_ += '~';
        Chain(level);
    }
    void Operand() {
        const char first = Next();
        const bool number = first >= '0' && first <= '9';
        out_ += number ? "0;" : "9;";
        const auto belongs = [&](char c) { return number ? c >= '0' && c <= '9' : c >= 'a' && c <= 'z'; };
        while (at_ < text_.size() && belongs(text_[at_]))
            out_ += text_[at_++];
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::string out_;
};

void CompilePlainly(benchmark::State& state) {
    const char* text = "hh = 12 & nn = 30 & wd < 6";
    if (PlainDescent(text).Compiled() != CompileCriteria(text).compiled) state.SkipWithError("not the same");
    for (auto _ : state)
        benchmark::DoNotOptimize(PlainDescent(text).Compiled());
}
BENCHMARK(CompilePlainly);

// Brackets opened, closed and followed by an error; a walk that goes back takes eight times longer for each.
void CompileNestedBrackets(benchmark::State& state) {
    const auto depth = static_cast<std::size_t>(state.range(0));
    const std::string text = std::string(depth, '(') + "1" + std::string(depth, ')') + "(";
    for (auto _ : state)
        benchmark::DoNotOptimize(CompileCriteria(text));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(CompileNestedBrackets)
    ->RangeMultiplier(2)
    ->Range(125, 2000)
    ->Complexity()
    ->Unit(benchmark::kMicrosecond);

// The next five moments within ten years. The last two are never true, and bounds alone do not show it.
void Foretell(benchmark::State& state, const char* text) {
    const std::string compiled = CompileCriteria(text).compiled;
    for (auto _ : state)
        benchmark::DoNotOptimize(Foretelling(compiled).Turns({2026, 11, 21, 12, 0, 0}, 5));
}
BENCHMARK_CAPTURE(Foretell, weekdays, "hh=7&nn=30&wd<6")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Foretell, leap_monday, "dd=29&mm=2&wd=1")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Foretell, one_second,
                  "((yy*372+mm*31+dd)*86400+hh*3600+nn*60+ss)=((2035*372+31+1)*86400+5)")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Foretell, never_in_a_minute, "(ss\\7)=5&(ss\\7)=6&(hh\\5)=3&(dd\\3)=1&(nn\\2)=1")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Foretell, never_in_a_year, "((dd*mm*wd)\\101)=5&((dd*mm*wd)\\101)=6&((hh*nn*ss)\\101)=7")
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quorvane
