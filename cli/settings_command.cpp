#include "cli/commands.h"
#include "cli/record_commands.h"
#include "cli/settings_source.h"

#include "config/reg_file.h"
#include "config/schema.h"
#include "platform/files.h"
#include "platform/headless.h"

namespace quorvane::cli {
namespace {

using commands::ExpectInputs;
using commands::InputAt;

int Export(const Arguments& arguments, Streams&) {
    ExpectInputs(arguments, 2);
    const std::string& path = InputAt(arguments, 1, "FILE");
    const auto files = CreateFiles();
    const auto store = OpenSettings(arguments, *files);
    const RegEncoding encoding = arguments.Has("utf16") ? RegEncoding::Utf16 : RegEncoding::Utf8;
    const std::string content = ExportRegFile(*store, RootKey, encoding);
    std::string why;
    const auto writer = files->Replace(path, why);
    const bool written = writer && writer->Write(content.data(), content.size()) && writer->Commit();
    if (!written)
        throw RefusedInput("the file \"" + path + "\" cannot be written (" + (writer ? writer->Why() : why) +
                           ")");
    return Done;
}

} // namespace

Command SettingsCommand() {
    Command command = FromRecordCommand(commands::SettingsCommand());
    command.valuedOptions.insert(command.valuedOptions.end(), SettingsOptions.begin(), SettingsOptions.end());
    command.flagOptions.push_back("utf16");
    command.run = [inner = command.run](const Arguments& arguments, Streams& streams) {
        const std::vector<std::string>& inputs = arguments.Inputs();
        return !inputs.empty() && inputs[0] == "export" ? Export(arguments, streams)
                                                        : inner(arguments, streams);
    };
    return command;
}

} // namespace quorvane::cli
