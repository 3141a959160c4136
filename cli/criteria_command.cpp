#include "alarms/criteria/compiler.h"
#include "alarms/criteria/foretelling.h"
#include "alarms/criteria/program.h"
#include "alarms/criteria/trial.h"
#include "cli/batch.h"
#include "cli/commands.h"
#include "cli/moment.h"
#include "commands/json.h"
#include "core/text.h"
#include "platform/shared/seeded_random.h"

#include <ostream>

namespace quorvane::cli {
namespace {

// A text of several lines on one, where lines stand for inputs.
std::string OnOneLine(const std::string& text) {
    return Replace(Replace(text, "\r\n", " "), "\n", " ");
}

std::string Joined(const std::vector<std::string>& texts, const char* between) {
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : between) + text;
    return joined;
}

// One run of the command: what to do with each input and how to tell of it.
class CriteriaRun {
  public:
    CriteriaRun(const Arguments& arguments, const std::string& input, Streams& streams)
        : json_(arguments.Json())
        , batch_(input == "-")
        , streams_(streams) {}

    int Compile(const std::string& text) {
        const CompiledCriterion result = CompileCriteria(text);
        if (result.refused && !(json_ && batch_)) Complain(ReasonOf(result));
        if (json_) {
            Print(JsonObject()
                      .Add("text", text)
                      .Add("compiled", result.compiled)
                      .Add("message", result.message)
                      .Text());
        } else if (!result.refused || batch_) {
            Print(result.compiled);
        }
        return result.refused ? Refused : Done;
    }

    int Test(const std::string& compiled, const CriteriaMoment& moment) {
        const bool result = TestCriteria(compiled, moment, memory_);
        if (json_) {
            Print(JsonObject().Add("compiled", compiled).Add("result", result).Text());
        } else {
            Print(result ? "true" : "false");
        }
        return Done;
    }

    int Try(const std::string& text, const CriteriaMoment& moment) {
        const CriteriaTrial trial = TryCriteria(text, moment, memory_);
        if (!trial.boxMessage.empty()) streams_.err << OnOneLine(trial.boxMessage) + '\n';
        if (json_) {
            Print(JsonObject().Add("text", text).Add("output", trial.output).Text());
        } else {
            Print(batch_ ? OnOneLine(trial.output) : trial.output);
        }
        return trial.boxMessage.empty() ? Done : Refused;
    }

    int Next(const std::string& text, const DateTime& from, std::size_t count) {
        const CompiledCriterion result = CompileCriteria(text);
        Foretelling foretelling(result.compiled);
        const bool refused = result.refused || !foretelling.Possible();
        const std::string message = result.refused ? ReasonOf(result) : refused ? NotForetold : "";
        if (refused && !(json_ && batch_)) Complain(message);
        std::vector<std::string> moments;
        if (!refused) {
            for (const DateTime& moment : foretelling.Turns(from, count))
                moments.push_back(DateTimeText(moment));
        }
        if (json_) {
            Print(JsonObject().Add("text", text).Add("next", moments).Add("message", message).Text());
        } else if (batch_) {
            Print(Joined(moments, ", "));
        } else if (!moments.empty()) {
            Print(Joined(moments, "\n"));
        }
        return refused ? Refused : Done;
    }

  private:
    static constexpr const char* NotForetold = "a criterion that reads rr or calls frst cannot be foretold";

    static std::string ReasonOf(const CompiledCriterion& result) {
        return result.message.empty()
                   ? "more than a hundred values of one kind, or a constant that is too great"
                   : result.message;
    }
    void Complain(const std::string& reason) {
        streams_.err << (batch_ ? OnOneLine(reason) : reason)
                     << (batch_ || reason.back() != '\n' ? "\n" : "");
    }
    void Print(std::string_view text) { streams_.out << text << '\n'; }

    bool json_;
    bool batch_;
    Streams& streams_;
    CriteriaMemory memory_; // lives through a batch, as it does through the program's ticks
};

std::size_t CountOf(const Arguments& arguments) {
    const auto count = arguments.WholeNumber("count").value_or(5);
    if (count < 1 || count > 1'000'000) throw UsageError("--count is a number from 1 to 1000000");
    return static_cast<std::size_t>(count);
}

int RunCriteria(const Arguments& arguments, Streams& streams) {
    const std::vector<std::string>& inputs = arguments.Inputs();
    if (inputs.size() != 2) throw UsageError("compile, test, try or next is wanted, and one text");
    const std::string& verb = inputs[0];
    const std::string& input = inputs[1];
    CriteriaRun run(arguments, input, streams);
    const auto forEach = [&](const std::function<int(const std::string&)>& one) {
        return ForEachInput(arguments, input, verb == "test" ? "compiled" : "text", streams, one);
    };
    if (verb == "compile") {
        return forEach([&](const std::string& text) { return run.Compile(text); });
    }
    SeededRandom random;
    if (verb == "test") {
        const CriteriaMoment moment(MomentOf(arguments), random);
        return forEach([&](const std::string& text) { return run.Test(text, moment); });
    }
    if (verb == "try") {
        const CriteriaMoment moment(MomentOf(arguments), random);
        return forEach([&](const std::string& text) { return run.Try(text, moment); });
    }
    if (verb == "next") {
        const DateTime from = MomentOf(arguments);
        const std::size_t count = CountOf(arguments);
        return forEach([&](const std::string& text) { return run.Next(text, from, count); });
    }
    throw UsageError("compile, test, try or next is wanted, not \"" + verb + "\"");
}

} // namespace

Command CriteriaCommand() {
    return {"criteria",
            "criteria compile|test|try|next [--json] [--at T] [--count N] TEXT|COMPILED|-",
            {"at", "count"},
            {},
            RunCriteria};
}

} // namespace quorvane::cli
