#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvane {

// Names in one block, each followed by a zero byte: a folder of a hundred thousand files costs two
// allocations.
class NameList {
  public:
    void Add(std::string_view name) {
        starts_.push_back(static_cast<std::uint32_t>(bytes_.size()));
        bytes_.append(name).push_back('\0');
    }
    std::size_t size() const { return starts_.size(); }
    std::string_view operator[](std::size_t index) const { return bytes_.data() + starts_[index]; }
    void Clear() {
        starts_.clear();
        bytes_.clear();
    }

  private:
    std::string bytes_;
    std::vector<std::uint32_t> starts_;
};

// Tells a folder from every other of the machine, whatever path leads to it.
using FolderIdentity = std::pair<std::uint64_t, std::uint64_t>;

struct FolderListing {
    NameList folders;
    NameList files;
    std::optional<FolderIdentity> identity; // where the system tells it
};

// A new content for a file, written beside it and moved over it by Commit. Until then, and where Commit fails
// or is never reached, the old file stays whole.
class FileWriter {
  public:
    virtual ~FileWriter() = default;
    // On from where the last Write ended.
    bool Write(const void* bytes, std::size_t count) {
        const std::uint64_t place = std::exchange(next_, next_ + count);
        return WriteAt(place, bytes, count);
    }
    // `place` counts bytes from the beginning. What is never written is zero.
    virtual bool WriteAt(std::uint64_t place, const void* bytes, std::size_t count) = 0;
    virtual bool Commit() = 0;
    // Why a Write or Commit failed, in words for a person.
    virtual std::string Why() const = 0;

  private:
    std::uint64_t next_ = 0;
};

// Paths are UTF-8 in the platform's own form.
class Files {
  public:
    virtual ~Files() = default;

    // The separator of this platform, '\\' or '/'.
    virtual char Separator() const = 0;

    // The direct subfolders of `folder` and the files in it that fit `pattern`, a text for NamePattern
    // (platform/name_pattern.h). Files of every attribute count, a name that fits two patterns stands once. A
    // link that leads back to a folder above is left out. False where the folder cannot be read; `out` then
    // holds what could be.
    virtual bool List(const std::string& folder, std::string_view pattern, FolderListing& out) = 0;

    virtual bool Exists(const std::string& path) = 0; // a file or a folder
    virtual std::optional<std::string> Read(const std::string& path) = 0;
    // Null, with the reason in `why`, where the folder cannot be written or something else than a file stands
    // there. What a process left beside it that died while it wrote is removed.
    virtual std::unique_ptr<FileWriter> Replace(const std::string& path, std::string& why) = 0;
    virtual bool MakeFolder(const std::string& path) = 0; // with its parents; true where it stands already
    virtual bool Delete(const std::string& path) = 0;     // a file

    // Where the program lies, and where the files go that it writes by default: the same folder on Windows,
    // the user's data folder on Linux. Without a separator at the end.
    virtual std::string ProgramDirectory() = 0;
    virtual std::string WritableDirectory() = 0;
    // Where the files lie that an installation brings along: the program's folder on Windows, the folder of
    // shared data beside it on Linux. Without a separator at the end.
    virtual std::string SharedDirectory() = 0;
};

} // namespace quorvane
