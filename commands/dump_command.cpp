#include "commands/record_command.h"
#include "config/settings.h"
#include "diagnostics/kernel_dump.h"
#include "diagnostics/system_survey.h"
#include "platform/channel.h"

namespace quorvane::commands {
namespace {

ErrorReport ReportOf(const Arguments& arguments, const Place& place) {
    return {"Error code: " + std::to_string(arguments.WholeNumber("number").value_or(0)),
            arguments.Value("description").value_or(""),
            PresentMoment(place.context.store, place.context.clock)};
}

// What a running program answers with has to fit into a message.
std::string DumpText(const GlobalRecord& record, const ErrorReport& report, bool running) {
    std::string dump;
    WriteKernelDump(record, report, [&](std::string_view text) {
        if (running && dump.size() + text.size() > channel_limit::MessageBytes / 2)
            throw RefusedInput("the dump is too long to be handed over; name a file");
        dump += text;
    });
    return dump;
}

std::string Run(const Arguments& arguments, Place& place) {
    const std::string& target = arguments.OnlyInput("a file");
    if (!place.program) SurveySystem(place.record, place.system);
    const ErrorReport report = ReportOf(arguments, place);
    if (target == "-") return DumpText(place.record, report, place.program != nullptr);
    const std::string path = WholePath(place, target);
    const std::string why = SaveKernelDump(place.record, report, place.context.files, path);
    if (!why.empty()) throw RefusedInput("\"" + path + "\": " + why);
    return {};
}

} // namespace

RecordCommand DumpCommand() {
    return {"dump",
            "dump [--number N] [--description T] [--settings F] [--set 'KEY\\NAME=DATA']... FILE|-",
            {"number", "description", "settings", "set"},
            {},
            Works::Anywhere,
            Run,
            true};
}

} // namespace quorvane::commands
