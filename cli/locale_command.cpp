#include "cli/commands.h"
#include "locale/locale_files.h"
#include "locale/locale_text.h"
#include "locale/numbers.h"
#include "platform/files.h"
#include "platform/headless.h"
#include "platform/system.h"

#include <ostream>

namespace quorvane::cli {
namespace {

// What an editor puts where no words belong, so that the numbers go on.
constexpr std::string_view Filler = "-";

int List(const Arguments& arguments, Streams& streams) {
    if (arguments.Inputs().size() > 1) throw UsageError("list takes nothing more");
    const auto files = CreateFiles();
    const auto system = CreateSystem();
    for (const LocaleFile& file : ScanLocaleFiles(*files, *system)) {
        if (arguments.Json()) {
            streams.out << JsonObject()
                               .Add("file", file.FileName)
                               .Add("description", file.Description)
                               .Add("language", file.Language)
                               .Text();
        } else {
            streams.out << Shown(file.Language + "  " + file.Description + "  " + file.FileName, streams);
        }
        streams.out << '\n';
    }
    return Done;
}

std::string Told(const char* what, const std::vector<int>& ids) {
    std::string told;
    for (const int id : ids)
        told += (told.empty() ? std::string(what) + ": " : ", ") + std::to_string(id);
    return told.empty() ? told : told + "\n";
}

int Check(const Arguments& arguments, Streams& streams) {
    if (arguments.Inputs().size() != 2) throw UsageError("check wants one file");
    const std::string& path = arguments.Inputs()[1];
    const auto files = CreateFiles();
    const auto content = ReadLocaleContent(path, *files, *CreateSystem());
    if (!content) throw RefusedInput("\"" + path + "\" cannot be read");
    const LocaleHeader header = ReadLocaleHeader(*content);
    LocaleStrings strings;
    const bool ok = LoadLocaleStrings(*content, strings);
    JsonObject texts;
    std::vector<int> missing;
    std::vector<int> unused;
    for (int id = 1; id <= LocaleStrings::MaxId; ++id) {
        const std::string_view text = strings.Text(id);
        const bool used = IsLocaleNumberUsed(id);
        if (!text.empty()) texts.Add(std::to_string(id), text);
        if (used && text.empty()) missing.push_back(id);
        if (!used && !text.empty() && text != Filler) unused.push_back(id);
    }
    if (arguments.Json()) {
        streams.out << JsonObject()
                           .Add("file", path)
                           .Add("description", header.description)
                           .Add("language", header.language)
                           .Add("ok", ok)
                           .Add("strings", texts)
                           .Add("missing", missing)
                           .Add("unused", unused)
                           .Text()
                    << '\n';
    } else {
        streams.out << Shown(header.language + "  " + header.description, streams) << '\n'
                    << (ok ? "" : "a line without a number ends the reading early\n")
                    << Told("missing", missing) << Told("unused", unused);
    }
    return Done;
}

int Run(const Arguments& arguments, Streams& streams) {
    const std::string action = arguments.Inputs().empty() ? "" : arguments.Inputs()[0];
    if (action == "list") return List(arguments, streams);
    if (action == "check") return Check(arguments, streams);
    throw UsageError("list or check is wanted");
}

} // namespace

Command LocaleCommand() {
    return {"locale", "locale list | check FILE", {}, {}, Run};
}

} // namespace quorvane::cli
