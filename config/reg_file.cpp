#include "config/reg_file.h"

#include "config/registry.h"
#include "config/schema.h"
#include "config/tree.h"
#include "config/utf16.h"
#include "core/run_time_error.h"
#include "core/text.h"
#include "platform/shared/key_path.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <tuple>
#include <vector>

namespace quorvane {
namespace {

constexpr std::string_view Header = "Windows Registry Editor Version 5.00";
constexpr std::size_t LongestName = 255; // of a key
constexpr int DeepestKey = 512;
constexpr std::size_t LineWidth = 78; // of a list of bytes

// Types whose bytes are UTF-16 in the file: text, text with variables, several texts.
bool IsTextType(std::uint32_t type) {
    return type == 1 || type == 2 || type == 7;
}

struct Change {
    enum Kind { SetValue, DeleteValue, DeleteKey } kind = SetValue;
    Hive hive = Hive::CurrentUser;
    std::string key;
    std::string name;
    StoredValue value;
};

std::string Decode(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) return FromUtf16(bytes.substr(2), ByteOrder::LittleEndian);
    if (bytes.starts_with("\xFE\xFF")) return FromUtf16(bytes.substr(2), ByteOrder::BigEndian);
    return std::string(bytes.substr(bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0));
}

class Parser {
  public:
    Parser(std::string_view text, RegScope scope)
        : text_(text)
        , scope_(scope) {}

    std::vector<Change> Parse() {
        SkipBlank();
        if (Trimmed(Line()) != Header) Refuse("the file does not begin with \"" + std::string(Header) + "\"");
        for (SkipBlank(); !AtEnd(); SkipBlank()) {
            if (Peek() == '[') {
                ParseKey();
            } else {
                ParseValue();
            }
        }
        return std::move(changes_);
    }

  private:
    [[noreturn]] void Refuse(const std::string& what) const { throw RegFileError(line_, what); }

    bool AtEnd() const { return at_ >= text_.size(); }
    char Peek() const { return AtEnd() ? '\0' : text_[at_]; }
    char Next() {
        const char c = text_[at_++];
        if (c == '\n') ++line_;
        return c;
    }
    bool Accept(char wanted) {
        if (AtEnd() || Peek() != wanted) return false;
        Next();
        return true;
    }
    bool AtLineEnd() const { return AtEnd() || Peek() == '\n' || Peek() == '\r'; }

    static std::string_view Trimmed(std::string_view line) {
        const std::size_t first = line.find_first_not_of(" \t\r");
        if (first == std::string_view::npos) return {};
        return line.substr(first, line.find_last_not_of(" \t\r") - first + 1);
    }
    void SkipSpaces() {
        while (!AtEnd() && (Peek() == ' ' || Peek() == '\t'))
            Next();
    }
    // Blank lines, comments and the blanks at the start of a line.
    void SkipBlank() {
        while (!AtEnd()) {
            SkipSpaces();
            if (Peek() == ';') {
                while (!AtLineEnd())
                    Next();
            }
            if (!AtLineEnd() || AtEnd()) return;
            Next();
        }
    }
    // The rest of the line without its end, which stays.
    std::string_view Line() {
        const std::size_t start = at_;
        while (!AtEnd() && Peek() != '\n')
            Next();
        return text_.substr(start, at_ - start);
    }
    void ExpectLineEnd() {
        SkipSpaces();
        if (!AtLineEnd() && Peek() != ';') Refuse("more stands behind the end of the line's data");
    }

    void ParseKey() {
        const std::size_t start = at_ + 1;
        const std::size_t close = KeyEnd(start);
        if (close == std::string_view::npos) Refuse("the key has no closing bracket");
        std::string_view path = text_.substr(start, close - start);
        at_ = close + 1;
        ExpectLineEnd();
        const bool deleted = path.starts_with('-');
        if (deleted) path.remove_prefix(1);
        EnterKey(path);
        if (deleted) {
            changes_.push_back({Change::DeleteKey, hive_, key_, {}, {}});
            inKey_ = false;
        }
    }

    // The bracket that closes a key. A name may hold brackets and so may a comment behind the key: the first
    // one that only a comment follows, or else the last of the line.
    std::size_t KeyEnd(std::size_t start) const {
        const std::string_view line = text_.substr(0, text_.find('\n', start));
        std::size_t last = std::string_view::npos;
        for (std::size_t at = line.find(']', start); at != std::string_view::npos;
             at = line.find(']', at + 1)) {
            last = at;
            const std::size_t behind = line.find_first_not_of(" \t\r", at + 1);
            if (behind == std::string_view::npos || line[behind] == ';') break;
        }
        return last;
    }

    void EnterKey(std::string_view path) {
        const auto [hiveName, below] = FirstKeyName(path);
        const std::string folded = LowerCase(hiveName);
        if (folded == "hkey_current_user" || folded == "hkcu") {
            hive_ = Hive::CurrentUser;
        } else if (folded == "hkey_users" || folded == "hku") {
            hive_ = Hive::Users;
        } else {
            Refuse("the key [" + std::string(path) + "] does not lie in HKEY_CURRENT_USER");
        }
        key_.clear();
        int depth = 0;
        for (auto [name, rest] = FirstKeyName(below); !name.empty();
             std::tie(name, rest) = FirstKeyName(rest)) {
            if (name.size() > LongestName) Refuse("a name in the key is longer than 255 bytes");
            if (++depth > DeepestKey) Refuse("the key lies deeper than 512 levels");
            key_.append(key_.empty() ? "" : "\\").append(name);
        }
        const bool ours = hive_ == Hive::CurrentUser &&
                          LowerCase(key_ + "\\").starts_with(LowerCase(std::string(RootKey) + "\\"));
        if (scope_ == RegScope::Program && !ours) {
            Refuse("the key [" + std::string(path) + "] does not lie in [HKEY_CURRENT_USER\\" +
                   std::string(RootKey) + "]");
        }
        if (key_.empty()) Refuse("the key [" + std::string(path) + "] names a whole hive");
        inKey_ = true;
    }

    void ParseValue() {
        Change change{Change::SetValue, hive_, key_, {}, {}};
        if (!Accept('@')) {
            if (Peek() != '"') Refuse("neither a [key] nor a \"name\" begins here");
            change.name = ParseQuoted();
        }
        if (!inKey_) Refuse("the value stands below no key");
        SkipSpaces();
        if (!Accept('=')) Refuse("there is no \"=\" behind the name");
        SkipSpaces();
        if (Accept('-')) {
            change.kind = Change::DeleteValue;
        } else {
            change.value = ParseData();
        }
        ExpectLineEnd();
        changes_.push_back(std::move(change));
    }

    StoredValue ParseData() {
        if (Peek() == '"') {
            std::string text = ParseQuoted();
            if (!text.empty()) text.push_back('\0');
            return {ValueType::Text, std::move(text)};
        }
        const std::string kind = LowerCase(Word());
        if (kind == "dword") return {ValueType::Integer, IntegerData(ParseDword())};
        if (kind == "hex") return TypedBytes(3);
        if (kind.starts_with("hex(") && kind.ends_with(")")) {
            const std::string_view digits = std::string_view(kind).substr(4, kind.size() - 5);
            std::uint32_t type = 0;
            const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), type, 16);
            if (result.ec == std::errc() && result.ptr == digits.data() + digits.size())
                return TypedBytes(type);
        }
        Refuse("the data is neither a text in quotation marks nor dword: nor hex:");
    }

    // What stands in front of the colon, which is taken as well.
    std::string Word() {
        std::string word;
        while (!AtLineEnd() && Peek() != ':')
            word.push_back(Next());
        Accept(':');
        return word;
    }

    std::string ParseQuoted() {
        const int firstLine = line_;
        std::string text;
        Next();
        while (!AtEnd()) {
            const char c = Next();
            if (c == '"') return text;
            if (c != '\\') {
                text.push_back(c);
            } else if (Peek() == '\\' || Peek() == '"') {
                text.push_back(Next());
            } else {
                Refuse("a \\ in a text stands in front of another \\ or of a quotation mark only");
            }
        }
        throw RegFileError(firstLine, "the text has no closing quotation mark");
    }

    static std::optional<std::uint32_t> HexDigit(char c) {
        if (c >= '0' && c <= '9') return c - '0';
        if (c >= 'a' && c <= 'f') return c - 'a' + 10;
        if (c >= 'A' && c <= 'F') return c - 'A' + 10;
        return std::nullopt;
    }

    std::int32_t ParseDword() {
        SkipSpaces();
        std::uint32_t value = 0;
        int digits = 0;
        for (auto digit = HexDigit(Peek()); digit; digit = HexDigit(Peek())) {
            if (++digits > 8) Refuse("a dword has at most eight digits");
            value = value << 4 | *digit;
            Next();
        }
        if (digits == 0) Refuse("a dword wants hexadecimal digits");
        return static_cast<std::int32_t>(value);
    }

    StoredValue TypedBytes(std::uint32_t type) {
        std::string bytes = ParseBytes();
        if (IsTextType(type)) {
            if (bytes.size() % 2 != 0) Refuse("a text has two bytes for each character");
            bytes = FromUtf16(bytes, ByteOrder::LittleEndian);
            if (!bytes.empty() && bytes.back() != '\0') bytes.push_back('\0');
        }
        return {static_cast<ValueType>(type), std::move(bytes)};
    }

    // Pairs of digits with commas between them; a "\" continues the list on the next line.
    std::string ParseBytes() {
        std::string bytes;
        while (true) {
            SkipSpaces();
            if (Accept('\\')) {
                SkipSpaces();
                if (!AtLineEnd()) Refuse("a \\ in a list of bytes ends its line");
                Accept('\r');
                Accept('\n');
                continue;
            }
            if (AtLineEnd() || Peek() == ';') return bytes;
            std::uint32_t byte = 0;
            int digits = 0;
            for (auto digit = HexDigit(Peek()); digit && digits < 3; digit = HexDigit(Peek())) {
                byte = byte << 4 | *digit;
                ++digits;
                Next();
            }
            if (digits < 1 || digits > 2) Refuse("a byte has two hexadecimal digits");
            bytes.push_back(static_cast<char>(byte));
            SkipSpaces();
            if (!Accept(',') && !AtLineEnd() && Peek() != ';') Refuse("a comma parts the bytes of a list");
        }
    }

    std::string_view text_;
    RegScope scope_;
    std::size_t at_ = 0;
    int line_ = 1;
    bool inKey_ = false;
    Hive hive_ = Hive::CurrentUser;
    std::string key_;
    std::vector<Change> changes_;
};

int Apply(const Change& change, Store& store) {
    const StoreKey key{"", change.hive, change.key};
    switch (change.kind) {
    case Change::SetValue:
        return store.Set(key, change.name, change.value);
    case Change::DeleteValue: {
        const int error = store.DeleteValue(key, change.name);
        return error == store_error::NotFound ? store_error::None : error;
    }
    case Change::DeleteKey: {
        const bool gone = RegDeleteTree(store, "", change.hive, change.key) != 0;
        return gone || store.LastError() == store_error::NotFound ? store_error::None : store.LastError();
    }
    }
    return store_error::None;
}

// What can stand between quotation marks on one line.
bool IsPlainText(const StoredValue& value) {
    if (value.type != ValueType::Text) return false;
    if (value.data.empty()) return true;
    if (value.data.size() == 1 || value.data.back() != '\0') return false;
    return std::none_of(value.data.begin(), value.data.end() - 1, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 || byte == 0x7F;
    });
}

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') quoted.push_back('\\');
        quoted.push_back(c);
    }
    return quoted + '"';
}

void AppendHex(std::string& out, std::uint32_t value, int digits) {
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4) {
        out.push_back("0123456789abcdef"[value >> shift & 0xF]);
    }
}

void AppendBytes(std::string& line, std::uint32_t type, std::string_view bytes, std::string& out) {
    line += "hex(";
    char digits[8];
    line.append(digits, std::to_chars(digits, digits + sizeof digits, type, 16).ptr);
    line += "):";
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        if (line.size() + 3 > LineWidth) {
            out += line + "\\\r\n";
            line = "  ";
        }
        AppendHex(line, static_cast<unsigned char>(bytes[at]), 2);
        if (at + 1 < bytes.size()) line.push_back(',');
    }
}

void AppendValue(std::string& out, const std::string& name, const StoredValue& value) {
    std::string line = (name.empty() ? "@" : Quoted(name)) + "=";
    const auto type = static_cast<std::uint32_t>(value.type);
    if (IsPlainText(value)) {
        line +=
            Quoted(std::string_view(value.data).substr(0, value.data.empty() ? 0 : value.data.size() - 1));
    } else if (value.type == ValueType::Integer && value.data.size() == 4) {
        line += "dword:";
        AppendHex(line, static_cast<std::uint32_t>(DataInteger(value.data)), 8);
    } else {
        AppendBytes(line, type, IsTextType(type) ? ToUtf16(value.data) : value.data, out);
    }
    out += line + "\r\n";
}

} // namespace

void ImportRegFile(std::string_view bytes, Store& store, RegScope scope) {
    const std::string text = Decode(bytes);
    const std::vector<Change> changes = Parser(text, scope).Parse();
    StoreBatch batch(store);
    int error = store_error::None;
    for (const Change& change : changes) {
        if (const int refused = Apply(change, store)) error = refused;
    }
    if (const int refused = batch.End()) error = refused;
    if (error) throw RunTimeError(error, "The settings could not be written");
}

std::string ExportRegFile(Store& store, std::string_view key, RegEncoding encoding) {
    std::string text = std::string(Header) + "\r\n";
    std::string current;
    StoreBatch batch(store);
    VisitTree(store, Hive::CurrentUser, std::string(key),
              [&](const std::string& at, const std::string& name, const StoredValue& value) {
                  if (at != current) text += "\r\n[HKEY_CURRENT_USER\\" + at + "]\r\n";
                  current = at;
                  AppendValue(text, name, value);
              });
    if (encoding == RegEncoding::Utf8) return text;
    return "\xFF\xFE" + ToUtf16(text);
}

} // namespace quorvane
