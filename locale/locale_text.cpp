#include "locale/locale_text.h"

#include "core/text.h"
#include "core/utf8.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace quorvane {
namespace {

std::string WithBlanks(std::string_view text, std::string_view replaced) {
    std::string out(text);
    std::replace_if(
        out.begin(), out.end(), [&](char c) { return replaced.find(c) != std::string_view::npos; }, ' ');
    return out;
}

constexpr std::string_view Nul("\0", 1);
constexpr std::string_view NulAndTab("\0\t", 2);

bool IsBracketed(std::string_view line) {
    return !line.empty() && line.front() == '[' && line.find(']') != std::string_view::npos;
}

// The number at the start; only its digits count. One too great for the table stays too great.
int LeadingId(std::string_view text) {
    int id = 0;
    const std::size_t begin = std::min(text.find_first_not_of(' '), text.size());
    for (const char c : text.substr(begin)) {
        if (c < '0' || c > '9') break;
        id = std::min(id * 10 + (c - '0'), LocaleStrings::MaxId + 1);
    }
    return id;
}

// Calls `statement` with each line that is no comment until it answers false; whether it never did.
bool ForEachStatement(std::string_view content,
                      const std::function<bool(const std::string& line)>& statement) {
    while (!content.empty()) {
        const std::size_t end = std::min(content.find('\n'), content.size());
        std::string_view line = content.substr(0, end);
        content.remove_prefix(std::min(end + 1, content.size()));
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        const std::optional<std::string> cleaned = CleanLocaleLine(line);
        if (cleaned && !statement(*cleaned)) return false;
    }
    return true;
}

} // namespace

std::optional<std::string> CleanLocaleLine(std::string_view line) {
    if (Trim(WithBlanks(line, Nul)).substr(0, 1) == "#") return std::nullopt;
    std::size_t comment = line.find(" #");
    if (comment == std::string_view::npos) comment = line.find("#\t");
    if (comment == std::string_view::npos) return std::string(line);
    const std::string_view text = line.substr(0, comment);
    return std::string(Trim(WithBlanks(FirstLetters(text, CountLetters(text) - 1), NulAndTab)));
}

LocaleHeader ReadLocaleHeader(std::string_view content) {
    LocaleHeader header;
    ForEachStatement(content, [&](const std::string& line) {
        if (!IsBracketed(line)) return true;
        const std::string_view inside = std::string_view(line).substr(1, line.find(']') - 1);
        const std::size_t equals = inside.find('=');
        const std::size_t semicolon = inside.find(';');
        if (semicolon == std::string_view::npos) return false;
        header.language = inside.substr(semicolon + 1);
        if (equals < semicolon) header.description = inside.substr(equals + 1, semicolon - equals - 1);
        return false;
    });
    return header;
}

bool IsWrittenFromRightToLeft(std::string_view language) {
    // Arabic, Dhivehi, Persian, Hebrew, Pashto, Sindhi, Uyghur, Urdu, Yiddish, by ISO 639-1.
    static constexpr std::string_view Codes[] = {"ar", "dv", "fa", "he", "ps", "sd", "ug", "ur", "yi"};
    const std::string code = FoldedName(language.substr(0, language.find_first_of("-_")));
    return std::find(std::begin(Codes), std::end(Codes), code) != std::end(Codes);
}

bool LoadLocaleStrings(std::string_view content, LocaleStrings& strings) {
    return ForEachStatement(content, [&](const std::string& line) {
        if (IsBracketed(line)) return true;
        const std::size_t equals = std::min(line.find('='), line.size());
        const int id = LeadingId(std::string_view(line).substr(0, equals));
        if (id == 0) return false;
        strings.Set(id, line.substr(std::min(equals + 1, line.size())));
        return true;
    });
}

} // namespace quorvane
