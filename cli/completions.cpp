#include "cli/completions.h"

#include "core/text.h"

#include <algorithm>
#include <string_view>

namespace quorvane::cli {
namespace {

std::vector<std::string> OptionsOf(const Command& command) {
    std::vector<std::string> options{"--json"};
    for (const auto& names : {command.valuedOptions, command.flagOptions}) {
        for (const std::string& name : names)
            options.push_back((name.size() == 1 ? "-" : "--") + name);
    }
    return options;
}

// By what the usage line calls its value.
bool TakesFile(const Command& command, const std::string& option) {
    const std::string_view usage = command.usage;
    return usage.find(option + " FILE") != std::string_view::npos ||
           usage.find(option + " F]") != std::string_view::npos;
}

std::string Joined(const std::vector<std::string>& words) {
    std::string joined;
    for (const std::string& word : words)
        joined += (joined.empty() ? "" : " ") + word;
    return joined;
}

std::string NamesOf(const std::vector<Command>& commands) {
    std::vector<std::string> names{"help"};
    for (const Command& command : commands)
        names.push_back(command.name);
    return Joined(names);
}

// "    NAME) verbs=BEGINwordsEND options=BEGINwordsEND ;;" for each command, as bash and zsh both write it.
std::string Cases(const std::vector<Command>& commands, const char* begin, const char* end) {
    std::string cases;
    for (const Command& command : commands) {
        cases += std::string("    ") + command.name + ") verbs=" + begin + Joined(VerbsOf(command)) + end +
                 " options=" + begin + Joined(OptionsOf(command)) + end + " ;;\n";
    }
    return cases;
}

} // namespace

std::vector<std::string> VerbsOf(const Command& command) {
    const std::string usage = std::string(command.usage).substr(std::string_view(command.name).size());
    std::vector<std::string> verbs;
    for (const std::string& alternative : Split(Replace(usage, " | ", "\n"), '\n')) {
        const std::string words(Trim(alternative));
        for (const std::string& word : Split(words.substr(0, words.find(' ')), '|')) {
            const bool plain =
                std::all_of(word.begin(), word.end(), [](char c) { return c >= 'a' && c <= 'z'; });
            if (plain && !word.empty()) verbs.push_back(word);
        }
    }
    return verbs;
}

std::string BashCompletions(const std::vector<Command>& commands) {
    return "# bash completion for quorvanectl, written by \"quorvanectl completions bash\".\n"
           "_quorvanectl() {\n"
           "    local word=${COMP_WORDS[COMP_CWORD]} verbs= options=\n"
           "    COMPREPLY=()\n"
           "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
           "        COMPREPLY=($(compgen -W \"" +
           NamesOf(commands) +
           "\" -- \"$word\"))\n"
           "        return\n"
           "    fi\n"
           "    case ${COMP_WORDS[1]} in\n" +
           Cases(commands, "\"", "\"") +
           "    esac\n"
           "    if [[ $word == -* ]]; then\n"
           "        COMPREPLY=($(compgen -W \"$options\" -- \"$word\"))\n"
           "    elif [ \"$COMP_CWORD\" -eq 2 ] && [ -n \"$verbs\" ]; then\n"
           "        COMPREPLY=($(compgen -W \"$verbs\" -- \"$word\"))\n"
           "    else\n"
           "        local IFS=$'\\n'\n"
           "        COMPREPLY=($(compgen -f -- \"$word\"))\n"
           "    fi\n"
           "}\n"
           "complete -o filenames -F _quorvanectl quorvanectl\n";
}

std::string ZshCompletions(const std::vector<Command>& commands) {
    return "#compdef quorvanectl\n"
           "# Written by \"quorvanectl completions zsh\".\n"
           "local -a verbs options\n"
           "if (( CURRENT == 2 )); then\n"
           "    compadd -- " +
           NamesOf(commands) +
           "\n"
           "    return\n"
           "fi\n"
           "case $words[2] in\n" +
           Cases(commands, "(", ")") +
           "esac\n"
           "if [[ $PREFIX == -* ]]; then\n"
           "    compadd -- $options\n"
           "elif (( CURRENT == 3 && $#verbs )); then\n"
           "    compadd -- $verbs\n"
           "else\n"
           "    _files\n"
           "fi\n";
}

std::string FishCompletions(const std::vector<Command>& commands) {
    std::string text = "# Written by \"quorvanectl completions fish\".\n";
    const std::string line = "complete -c quorvanectl ";
    text += line + "-n __fish_use_subcommand -f -a '" + NamesOf(commands) + "'\n";
    for (const Command& command : commands) {
        const std::string seen = std::string("__fish_seen_subcommand_from ") + command.name;
        const std::string verbs = Joined(VerbsOf(command));
        if (!verbs.empty())
            text += line + "-n '" + seen + "; and not __fish_seen_subcommand_from " + verbs + "' -f -a '" +
                    verbs + "'\n";
        const std::string option = line + "-n '" + seen + "' ";
        text += option + "-l json\n";
        for (const std::string& name : command.valuedOptions)
            text += option + "-l " + name + (TakesFile(command, "--" + name) ? " -r -F\n" : " -x\n");
        for (const std::string& name : command.flagOptions)
            text += option + (name.size() == 1 ? "-s " : "-l ") + name + "\n";
    }
    return text;
}

std::string ManUsage(const std::vector<Command>& commands) {
    std::string text = ".nf\n";
    for (const Command& command : commands)
        text += "quorvanectl " + Replace(Replace(command.usage, "\\", "\\e"), "-", "\\-") + "\n";
    return text + ".fi\n";
}

} // namespace quorvane::cli
