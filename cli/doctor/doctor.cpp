#include "commands/doctor.h"
#include "cli/commands.h"
#include "cli/settings_source.h"
#include "commands/json.h"
#include "platform/channel.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/headless.h"
#include "platform/system.h"

#include <algorithm>
#include <ostream>

namespace quorvane::cli {
namespace {

using State = Finding::State;

const char* StateName(State state) {
    if (state == State::Ok) return "ok";
    return state == State::Limited ? "limited" : "missing";
}

Finding ExamineCopies(ChannelClient& client) {
    const std::vector<RunningCopy> copies = client.Copies();
    if (copies.empty()) return {"program", State::Limited, "Quorvane is not running", "start it: quorvane"};
    std::string processes;
    for (const RunningCopy& copy : copies)
        processes += (processes.empty() ? "" : ", ") + std::to_string(copy.process);
    if (copies.size() == 1) return {"program", State::Ok, "it runs as process " + processes};
    return {"program", State::Limited,
            std::to_string(copies.size()) + " copies run (processes " + processes +
                ") and take the wallpaper from each other",
            "quorvanectl do exit ends the one that started last"};
}

std::vector<Finding> ExamineAll() {
    const auto files = CreateFiles();
    const auto clock = CreateClock();
    const auto system = CreateSystem();
    const auto store = ReadStore();
    std::vector<Finding> findings{ExamineCopies(*CreateChannelClient())};
    GlobalRecord record;
    commands::Place place{record, ContextOf(*store, *files, *clock), *system};
    LoadRecord(record, place.context);
    for (auto& part : {ExamineDesktop(commands::ExpectedOf(record)), commands::ExamineRecord(place)})
        findings.insert(findings.end(), part.begin(), part.end());
    return findings;
}

void Print(const Finding& finding, bool json, Streams& streams) {
    if (json) {
        streams.out << JsonObject()
                           .Add("check", finding.check)
                           .Add("state", StateName(finding.state))
                           .Add("why", finding.why)
                           .Add("hint", finding.hint)
                           .Text();
    } else {
        streams.out << finding.check << ": " << StateName(finding.state) << ": "
                    << Shown(finding.why, streams);
        if (!finding.hint.empty()) streams.out << ". " << Shown(finding.hint, streams);
    }
    streams.out << '\n';
}

} // namespace

int Doctor(const Arguments& arguments, Streams& streams) {
    arguments.NoInputs();
    const std::vector<Finding> findings = ExamineAll();
    for (const Finding& finding : findings)
        Print(finding, arguments.Json(), streams);
    const bool missing = std::any_of(findings.begin(), findings.end(),
                                     [](const Finding& each) { return each.state == State::Missing; });
    return missing ? Refused : Done;
}

} // namespace quorvane::cli
