#pragma once

#include "core/locale_strings.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvane {

class Files;
class Prompts;
class System;

// One file of translated texts.
struct LocaleFile {
    std::string FileName; // full path
    std::string Language; // its code, "EN"
    std::string Description;
};

// A locale file's content as UTF-8: one that is not valid UTF-8 is read in the system's code page. Nothing
// where it cannot be read.
std::optional<std::string> ReadLocaleContent(const std::string& path, Files& files, System& system);

// All locale files (*.res), first those in the folder "locales" beside the program, then those beside the
// program itself, then those in "locales" of the folder for what goes with the program, where that is another
// one.
std::vector<LocaleFile> ScanLocaleFiles(Files& files, System& system);

// Reads the first file of the language (letter case and blanks aside) into the table, as the start of the
// program does, with its questions, and sets whether the table is loaded. `terminate` is called where the
// person wants the program to end.
void StartLocale(const std::vector<LocaleFile>& found, const std::string& language, Files& files,
                 System& system, Prompts& prompts, LocaleStrings& strings,
                 const std::function<void()>& terminate);

// The same without a question, when the person chooses another language. Texts of the old one stay where the
// new file has none.
void ChangeLocale(const std::vector<LocaleFile>& found, const std::string& language, Files& files,
                  System& system, LocaleStrings& strings);

} // namespace quorvane
