#pragma once

#include "platform/store.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace quorvane {

// Registry text files of version 5.00: "[key]" lines, and below each "name"=data lines. Read in UTF-8, with
// or without a byte-order mark, and in UTF-16 with one.

// What is wrong and in which line, in words for a person.
class RegFileError : public std::runtime_error {
  public:
    RegFileError(int line, const std::string& what)
        : std::runtime_error("line " + std::to_string(line) + ": " + what)
        , line_(line) {}
    int Line() const { return line_; }

  private:
    int line_;
};

enum class RegScope {
    Program,  // only keys of the program's own tree
    UserHives // every key of the two hives that a store has
};

// Does what the file says: sets values, deletes values ("name"=-) and whole keys ([-key]). An empty text is
// stored with no data at all, as the program itself stores it. Throws RegFileError with nothing changed where
// the file is not understood; RunTimeError where the store refuses.
void ImportRegFile(std::string_view bytes, Store& store, RegScope scope);

enum class RegEncoding { Utf8, Utf16 };

// Every value below `key` of the current user as such a file, with the byte-order mark that the encoding
// wants: none in UTF-8.
std::string ExportRegFile(Store& store, std::string_view key, RegEncoding encoding);

} // namespace quorvane
