#include "calendar/dates.h"
#include "cli/batch.h"
#include "cli/commands.h"
#include "cli/moment.h"
#include "core/date_text.h"
#include "core/numbers.h"
#include "core/text.h"
#include "notes/markup.h"
#include "platform/headless.h"
#include "platform/store.h"
#include "platform/system.h"

#include <ostream>

namespace quorvane::cli {
namespace {

NoteValues ValuesOf(const Arguments& arguments) {
    const auto system = CreateSystem();
    const auto store = CreateScratchStore();
    const RegionalValues regional = ReadRegionalValues(*store, *system);
    return {.time = GeneralDateText(MomentOf(arguments), regional.sShortDate.value_or("")),
            .name = arguments.Value("name").value_or(system->UserName()),
            .host = arguments.Value("host").value_or(system->ComputerName()),
            .decimalSign = regional.sDecimal};
}

std::string JsonOf(const std::string& source, const NoteLook& look) {
    return JsonObject()
        .Add("source", source)
        .Add("text", look.text)
        .Add("font", look.font)
        .Add("size", static_cast<double>(look.size))
        .Add("bold", look.bold)
        .Add("italic", look.italic)
        .Add("underline", look.underline)
        .Add("strikethrough", look.strikethrough)
        .Add("forecolor", look.forecolor)
        .Add("backcolor", look.backcolor)
        .Add("alpha", static_cast<int>(look.alpha))
        .Add("link", look.link)
        .Add("ticking", look.ticking)
        .Add("display", NoteDisplayText(source))
        .Text();
}

// The look behind a text that is printed: what differs from a note without tokens.
std::string LookText(const NoteLook& look) {
    const NoteLook plain;
    std::string told;
    const auto tell = [&](bool differs, const std::string& words) {
        if (differs) told += (told.empty() ? "" : ", ") + words;
    };
    tell(!look.font.empty(), "font" + std::string(look.font.starts_with(' ') ? "" : " ") + look.font);
    tell(look.size != plain.size, NumberText(static_cast<double>(look.size)) + " points");
    tell(look.bold, "bold");
    tell(look.italic, "italic");
    tell(look.underline, "underlined");
    tell(look.strikethrough, "struck through");
    tell(look.forecolor != plain.forecolor, "colour " + std::to_string(look.forecolor));
    tell(look.backcolor != plain.backcolor, "on " + std::to_string(look.backcolor));
    tell(look.alpha != plain.alpha, "opacity " + std::to_string(look.alpha) + " of 255");
    tell(!look.link.empty(), "link " + look.link);
    tell(look.ticking, "read anew each second");
    return told.empty() ? told : " [" + told + "]";
}

// A result of a batch is one line.
void Print(const NoteLook& look, char lineEnd, Streams& streams) {
    const std::string text = look.text + LookText(look);
    for (const std::string& line : Split(Replace(text, "\r\n", "\n"), '\n'))
        streams.out << Shown(line, streams) << lineEnd;
    if (lineEnd != '\n') streams.out << '\n';
}

int TellNote(const Arguments& arguments, Streams& streams) {
    const NoteValues values = ValuesOf(arguments);
    const std::string& input = arguments.OnlyInput("a note's text");
    return ForEachInput(arguments, input, "source", streams, [&](const std::string& source) {
        const NoteLook look = Set_Text(source, values);
        if (arguments.Json()) {
            streams.out << JsonOf(source, look) << '\n';
        } else {
            Print(look, input == "-" ? ' ' : '\n', streams);
        }
        return Done;
    });
}

} // namespace

Command NoteCommand() {
    return {"note",
            "note [--json] [--at T] [--name LOGON] [--host HOST] TEXT|-",
            {"at", "name", "host"},
            {},
            TellNote};
}

} // namespace quorvane::cli
