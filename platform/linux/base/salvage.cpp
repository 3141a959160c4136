#include "platform/linux/base/salvage.h"

#include "platform/linux/base/settings_file.h"
#include "platform/linux/base/sqlite.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvane {
namespace {

// The layout is SQLite's own, told at sqlite.org/fileformat2.html: numbers have their high byte first, pages
// count from 1, and all our records lie in pages of index trees.

constexpr std::string_view Magic("SQLite format 3\0", 16);
constexpr std::size_t UsualPageSize = 4096;
constexpr std::uintmax_t LargestFile = 256U << 20; // beyond it a file is none of ours
constexpr unsigned char InteriorPage = 2;
constexpr unsigned char LeafPage = 10;

unsigned char ByteAt(std::string_view bytes, std::size_t at) {
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

std::uint64_t Number(std::string_view bytes, std::size_t at, std::size_t length) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < length; ++i)
        number = number << 8 | ByteAt(bytes, at + i);
    return number;
}

// A number in groups of seven bits; `at` moves behind it.
std::uint64_t TakeVarint(std::string_view bytes, std::size_t& at) {
    std::uint64_t number = 0;
    for (int i = 0; i < 9; ++i) {
        const unsigned char byte = ByteAt(bytes, at++);
        if (i == 8) return number << 8 | byte;
        number = number << 7 | (byte & 0x7F);
        if ((byte & 0x80) == 0) break;
    }
    return number;
}

struct Column {
    enum Kind { Other, Integer, Text, Blob } kind = Other;
    std::int64_t number = 0;
    std::string_view bytes;
};

std::optional<std::vector<Column>> Columns(std::string_view record) {
    constexpr std::size_t IntegerLengths[] = {0, 1, 2, 3, 4, 6, 8};
    std::size_t at = 0;
    const std::uint64_t headerSize = TakeVarint(record, at);
    if (headerSize > record.size()) return std::nullopt;
    std::size_t body = headerSize;
    std::vector<Column> columns;
    while (at < headerSize) {
        const std::uint64_t type = TakeVarint(record, at);
        Column column;
        std::size_t length = 0;
        if (type >= 12) {
            length = (type - 12) / 2;
            column.kind = type % 2 == 0 ? Column::Blob : Column::Text;
        } else if (type >= 1 && type <= 6) {
            length = IntegerLengths[type];
            column.kind = Column::Integer;
            const std::uint64_t sign = length > 0 && ByteAt(record, body) >= 0x80 ? ~std::uint64_t{0} : 0;
            column.number = static_cast<std::int64_t>(Number(record, body, length) |
                                                      (length < 8 ? sign << (length * 8) : 0));
        } else if (type == 8 || type == 9) {
            column.kind = Column::Integer;
            column.number = static_cast<std::int64_t>(type) - 8;
        } else if (type == 7) {
            length = 8;
        }
        if (length > record.size() - body) return std::nullopt;
        column.bytes = record.substr(body, length);
        columns.push_back(column);
        body += length;
    }
    return columns;
}

// The whole file in memory, as its pages.
class FileImage {
  public:
    explicit FileImage(std::string bytes)
        : bytes_(std::move(bytes)) {
        if (!bytes_.starts_with(Magic)) return;
        std::size_t size = Number(bytes_, 16, 2);
        if (size == 1) size = 65536;
        if (size >= 512 && (size & (size - 1)) == 0) pageSize_ = size;
        const std::size_t reserved = ByteAt(bytes_, 20);
        usable_ = pageSize_ - (reserved <= 32 ? reserved : 0);
    }

    std::size_t PageCount() const { return bytes_.size() / pageSize_; }

    // Empty for a number that is none of the file's.
    std::string_view Page(std::uint64_t number) const {
        if (number < 1 || number > PageCount()) return {};
        return std::string_view(bytes_).substr((number - 1) * pageSize_, pageSize_);
    }

    // The pages that hold nothing any more but what they held once.
    std::set<std::uint64_t> FreePages() const {
        std::set<std::uint64_t> free;
        std::uint64_t trunk = bytes_.starts_with(Magic) ? Number(bytes_, 32, 4) : 0;
        for (std::string_view page = Page(trunk); !page.empty() && free.insert(trunk).second;
             page = Page(trunk)) {
            const std::uint64_t count = std::min<std::uint64_t>(Number(page, 4, 4), usable_ / 4);
            for (std::uint64_t leaf = 0; leaf < count; ++leaf)
                free.insert(Number(page, 8 + leaf * 4, 4));
            trunk = Number(page, 0, 4);
        }
        return free;
    }

    // The record of a cell, whose length stands at `at`; parts of a long one lie in pages of their own.
    std::optional<std::string> Record(std::string_view page, std::size_t at) const {
        const std::uint64_t length = TakeVarint(page, at);
        if (length > bytes_.size()) return std::nullopt;
        const std::uint64_t most = (usable_ - 12) * 64 / 255 - 23;
        const std::uint64_t least = (usable_ - 12) * 32 / 255 - 23;
        std::uint64_t here = length;
        if (length > most) {
            here = least + (length - least) % (usable_ - 4);
            if (here > most) here = least;
        }
        if (at + here > page.size()) return std::nullopt;
        std::string record(page.substr(at, here));
        std::uint64_t next = length > here ? Number(page, at + here, 4) : 0;
        while (record.size() < length) {
            const std::string_view overflow = Page(next);
            if (overflow.empty()) return std::nullopt;
            record += overflow.substr(4, std::min<std::uint64_t>(usable_ - 4, length - record.size()));
            next = Number(overflow, 0, 4);
        }
        if (next != 0) return std::nullopt; // the chain is not the one that was written
        return record;
    }

  private:
    std::string bytes_;
    std::size_t pageSize_ = UsualPageSize;
    std::size_t usable_ = UsualPageSize;
};

// With what the log holds where the database opens, and else the bare file.
std::string ImageOf(const std::string& file) {
    sqlite3* raw = nullptr;
    const int opened = sqlite3_open_v2(FileUri(file, "mode=ro").c_str(), &raw,
                                       SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, nullptr);
    const Database database(raw);
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> image(
        opened == SQLITE_OK ? sqlite3_serialize(raw, "main", &size, 0) : nullptr, sqlite3_free);
    if (image && size > 0)
        return {reinterpret_cast<const char*>(image.get()), static_cast<std::size_t>(size)};
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

using Spellings = std::map<std::string, std::string, std::less<>>; // of keys, by their folded path

// A row of the table of keys: path, parent, hive, name, shown.
void NoteSpelling(const std::vector<Column>& row, Spellings& spellings) {
    if (row.size() == 5 && row[0].kind == Column::Text && row[2].kind == Column::Integer &&
        row[4].kind == Column::Text)
        spellings.emplace(row[0].bytes, row[4].bytes);
}

// A row of the table of values: path, folded, name, type, data.
std::optional<StoreEntry> EntryOf(const std::vector<Column>& row, const Spellings& spellings) {
    if (row.size() != 5 || row[0].kind != Column::Text || row[2].kind != Column::Text ||
        row[3].kind != Column::Integer || row[4].kind != Column::Blob)
        return std::nullopt;
    StoreEntry entry;
    const std::size_t hiveEnd = row[0].bytes.find('\\');
    if (hiveEnd == std::string_view::npos) return std::nullopt;
    const std::string_view hive = row[0].bytes.substr(0, hiveEnd);
    for (const Hive each : {Hive::CurrentUser, Hive::Users}) {
        if (hive != std::to_string(static_cast<std::uint32_t>(each))) continue;
        const auto spelling = spellings.find(row[0].bytes);
        entry.hive = each;
        entry.key = spelling != spellings.end() ? spelling->second : row[0].bytes.substr(hiveEnd + 1);
        entry.name = row[2].bytes;
        entry.value = {static_cast<ValueType>(row[3].number), std::string(row[4].bytes)};
        return entry;
    }
    return std::nullopt;
}

} // namespace

std::vector<StoreEntry> SalvageEntries(const std::string& file) {
    std::error_code error;
    if (std::filesystem::file_size(file, error) > LargestFile || error) return {};
    const FileImage image(ImageOf(file));
    const std::set<std::uint64_t> free = image.FreePages();
    std::vector<std::string> records;
    for (std::uint64_t number = 2; number <= image.PageCount(); ++number) {
        const std::string_view page = image.Page(number);
        const unsigned char kind = ByteAt(page, 0);
        if ((kind != InteriorPage && kind != LeafPage) || free.contains(number)) continue;
        const std::size_t pointers = kind == LeafPage ? 8 : 12;
        const std::size_t cells = std::min<std::size_t>(Number(page, 3, 2), page.size() / 2);
        for (std::size_t cell = 0; cell < cells; ++cell) {
            const std::size_t start = Number(page, pointers + cell * 2, 2) + (kind == LeafPage ? 0 : 4);
            if (auto record = image.Record(page, start)) records.push_back(std::move(*record));
        }
    }
    Spellings spellings;
    std::vector<StoreEntry> entries;
    for (const bool values : {false, true}) {
        for (const std::string& record : records) {
            const auto row = Columns(record);
            if (!row) continue;
            if (!values) {
                NoteSpelling(*row, spellings);
            } else if (const auto entry = EntryOf(*row, spellings)) {
                entries.push_back(*entry);
            }
        }
    }
    return entries;
}

} // namespace quorvane
