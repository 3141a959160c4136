#include "locale/locale_files.h"

#include "core/text.h"
#include "core/utf8.h"
#include "locale/locale_text.h"
#include "platform/files.h"
#include "platform/prompts.h"
#include "platform/system.h"

#include <algorithm>

namespace quorvane {
namespace {

bool IsUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t bytes = LetterBytes(text, at);
        if (bytes == 0) return false;
        at += bytes;
    }
    return true;
}

void AddLocaleFiles(const std::string& folder, Files& files, System& system, std::vector<LocaleFile>& found) {
    FolderListing listing;
    files.List(folder, "*.res", listing);
    for (std::size_t at = 0; at < listing.files.size(); ++at) {
        const std::string path = folder + files.Separator() + std::string(listing.files[at]);
        const LocaleHeader header = ReadLocaleHeader(ReadLocaleContent(path, files, system).value_or(""));
        found.push_back({path, header.language, header.description});
    }
}

const LocaleFile* FileOf(const std::vector<LocaleFile>& found, const std::string& language) {
    const auto at = std::find_if(found.begin(), found.end(),
                                 [&](const LocaleFile& file) { return SameName(file.Language, language); });
    return at == found.end() ? nullptr : &*at;
}

// A file that cannot be opened counts as an empty one.
bool LoadLocaleFile(const LocaleFile& file, Files& files, System& system, LocaleStrings& strings) {
    strings.SetRightToLeft(IsWrittenFromRightToLeft(file.Language));
    return LoadLocaleStrings(ReadLocaleContent(file.FileName, files, system).value_or(""), strings);
}

} // namespace

std::optional<std::string> ReadLocaleContent(const std::string& path, Files& files, System& system) {
    std::optional<std::string> content = files.Read(path);
    if (!content) return std::nullopt;
    constexpr std::string_view Mark = "\xEF\xBB\xBF";
    if (content->compare(0, Mark.size(), Mark) == 0) content->erase(0, Mark.size());
    return IsUtf8(*content) ? content : system.CodePageText(*content);
}

std::vector<LocaleFile> ScanLocaleFiles(Files& files, System& system) {
    const std::string program = files.ProgramDirectory();
    const std::string shared = files.SharedDirectory();
    std::vector<LocaleFile> found;
    AddLocaleFiles(program + files.Separator() + "locales", files, system, found);
    AddLocaleFiles(program, files, system, found);
    if (shared != program) AddLocaleFiles(shared + files.Separator() + "locales", files, system, found);
    return found;
}

void StartLocale(const std::vector<LocaleFile>& found, const std::string& language, Files& files,
                 System& system, Prompts& prompts, LocaleStrings& strings,
                 const std::function<void()>& terminate) {
    strings.SetLoaded(false);
    if (found.empty()) return;
    const LocaleFile* match = FileOf(found, language);
    if (match && LoadLocaleFile(*match, files, system, strings)) {
        strings.SetLoaded(true);
        return;
    }
    const std::string fault = match ? "Unable load locale file [" + match->FileName + "]"
                                    : "Default locale file (*.res) not present in application directory!";
    const Answer answer = prompts.Message("Error!\r\n" + fault + "\r\nTerminate application?", "Error!",
                                          message_style::Question);
    if (answer == Answer::Yes) terminate();
}

void ChangeLocale(const std::vector<LocaleFile>& found, const std::string& language, Files& files,
                  System& system, LocaleStrings& strings) {
    const LocaleFile* match = FileOf(found, language);
    strings.SetLoaded(match && LoadLocaleFile(*match, files, system, strings));
}

} // namespace quorvane
