#include "cli/commands.h"
#include "cli/no_events.h"
#include "commands/json.h"

#include "engine/folder_scan.h"
#include "platform/headless.h"

#include <ostream>

namespace quorvane::cli {
namespace {

// Written path by path: a list of a million files is not worth a second copy.
void WriteJson(const PathList& paths, double seconds, char end, std::ostream& out) {
    out << "{\"files\": [";
    for (std::int32_t index = 1; index <= paths.Count(); ++index) {
        out << (index > 1 ? ", " : "") << JsonText(paths[index]);
    }
    out << "], " << JsonObject().Add("seconds", seconds).Text().substr(1) << end;
}

void WriteLines(const PathList& paths, char end, Streams& streams) {
    for (std::int32_t index = 1; index <= paths.Count(); ++index) {
        streams.out << Shown(paths[index], streams) << end;
    }
}

int Scan(const Arguments& arguments, Streams& streams) {
    std::string folder = arguments.OnlyInput("FOLDER");
    if (folder.empty()) throw UsageError("FOLDER is empty");
    const auto files = CreateFiles();
    const auto clock = CreateClock();
    const auto system = CreateSystem();
    if (!folder.ends_with(files->Separator())) folder.push_back(files->Separator());
    NoEvents events;
    Breather breather(*clock, events);
    Complaints complaints(*system);
    PathList paths;
    const std::int64_t start = clock->Ticks();
    FolderScan scan(*files, breather, complaints, paths);
    const bool whole = scan.GetFiles(folder, arguments.Value("pattern").value_or("*.*"),
                                     ScanLevel(arguments.Value("level").value_or("0")), 0);
    const double seconds = static_cast<double>(clock->Ticks() - start) / 1000;
    if (arguments.Json()) {
        WriteJson(paths, seconds, arguments.ResultEnd(), streams.out);
    } else {
        WriteLines(paths, arguments.ResultEnd(), streams);
    }
    return whole || paths.Count() > 0 ? Done : Refused; // what could not be read has been told
}

} // namespace

Command ScanCommand() {
    return {"scan", "scan [--json] [-0] [--pattern P] [--level L] FOLDER", {"pattern", "level"}, {"0"}, Scan};
}

} // namespace quorvane::cli
