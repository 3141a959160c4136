#include "platform/linux/base/files.h"

#include "platform/headless.h"
#include "platform/linux/base/base_folders.h"
#include "platform/shared/name_pattern.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <utility>

namespace quorvane {
namespace {

class Descriptor {
  public:
    explicit Descriptor(int number)
        : number_(number) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Number() const { return number_; }
    void Close() {
        const int number = std::exchange(number_, -1);
        if (number >= 0) close(number);
    }

  private:
    int number_;
};

// The folders that a path leads through, itself included, as the system tells one from another.
class FolderChain {
  public:
    explicit FolderChain(const std::string& folder) {
        std::string path = folder;
        if (!path.starts_with('/')) {
            char here[PATH_MAX];
            if (getcwd(here, sizeof here)) path = std::string(here) + '/' + path;
        }
        path += '/';
        for (std::size_t at = path.find('/'); at != std::string::npos; at = path.find('/', at + 1)) {
            struct stat status {};
            if (stat(path.substr(0, at + 1).c_str(), &status) == 0)
                folders_.emplace_back(status.st_dev, status.st_ino);
        }
    }

    bool Holds(const struct stat& status) const {
        return std::find(folders_.begin(), folders_.end(), std::pair(status.st_dev, status.st_ino)) !=
               folders_.end();
    }

  private:
    std::vector<std::pair<dev_t, ino_t>> folders_;
};

enum class EntryKind { Folder, File, Neither };

// Sorts the entries of one folder. Only links, and entries of file systems that do not tell their kind, cost
// a call of their own.
class EntrySorter {
  public:
    EntrySorter(const std::string& folder, int descriptor)
        : folder_(folder)
        , descriptor_(descriptor) {}

    EntryKind KindOf(const dirent& entry) {
        if (entry.d_type == DT_DIR) return EntryKind::Folder;
        if (entry.d_type == DT_REG) return EntryKind::File;
        if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return EntryKind::Neither;
        struct stat status {};
        if (fstatat(descriptor_, entry.d_name, &status, 0) != 0) return EntryKind::Neither;
        if (S_ISREG(status.st_mode)) return EntryKind::File;
        if (!S_ISDIR(status.st_mode)) return EntryKind::Neither;
        if (!chain_) chain_.emplace(folder_);
        return chain_->Holds(status) ? EntryKind::Neither : EntryKind::Folder;
    }

  private:
    const std::string& folder_;
    int descriptor_;
    std::optional<FolderChain> chain_; // known once a link needs it
};

bool IsSelfOrParent(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

// Where a path leads once its links are followed, so that replacing a file through a link keeps the link.
std::string FollowLinks(const std::string& path) {
    char resolved[PATH_MAX];
    return realpath(path.c_str(), resolved) ? std::string(resolved) : path;
}

// What is written beside a file is locked by whoever writes it, so that what a dead process left behind can
// be told from what is being written.
constexpr int MostBeside = 100;

// The hidden names beside `target`, without their numbers. A name of the full length that a folder takes is
// cut, in front of a character.
std::string StemBeside(const std::string& target) {
    constexpr std::size_t LongestName = 240;
    const std::size_t start = target.rfind('/') + 1;
    std::string name = target.substr(start, LongestName);
    if (target.size() - start > LongestName) {
        while (!name.empty() && (target[start + name.size()] & 0xC0) == 0x80)
            name.pop_back();
    }
    return target.substr(0, start) + "." + name + ".new-";
}

bool IsFileAt(int descriptor, const std::string& path) {
    struct stat own {
    }, there{};
    return fstat(descriptor, &own) == 0 && lstat(path.c_str(), &there) == 0 && own.st_dev == there.st_dev &&
           own.st_ino == there.st_ino;
}

// Removes what stands at `path` if nobody writes it; false where there is nothing.
bool RemoveLeftOver(const std::string& path) {
    const Descriptor file(open(path.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (file.Number() < 0) return errno != ENOENT;
    if (flock(file.Number(), LOCK_EX | LOCK_NB) == 0 && IsFileAt(file.Number(), path)) unlink(path.c_str());
    return true;
}

// A new hidden file in the folder of `target`, its path in `temporary`; -1 where none can be made. It gets
// the rights of any new file, not the narrow ones of a temporary one: others may have to read the wallpaper.
int OpenBeside(const std::string& target, std::string& temporary) {
    const std::string stem = StemBeside(target);
    for (int number = 1; number <= MostBeside && RemoveLeftOver(stem + std::to_string(number)); ++number) {
    }
    for (int number = 1; number <= MostBeside; ++number) {
        temporary = stem + std::to_string(number);
        const int descriptor = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor < 0 && errno == EEXIST) continue;
        if (descriptor < 0) return -1;
        // Some file systems know no locks; where another took the file for a left-over, the next name serves.
        const bool taken = flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
        if (!taken && IsFileAt(descriptor, temporary)) return descriptor;
        close(descriptor);
    }
    errno = EEXIST;
    return -1;
}

class LinuxFileWriter final : public FileWriter {
  public:
    LinuxFileWriter(int descriptor, std::string temporary, std::string target)
        : descriptor_(descriptor)
        , temporary_(std::move(temporary))
        , target_(std::move(target)) {}

    ~LinuxFileWriter() override {
        if (!temporary_.empty()) unlink(temporary_.c_str());
    }

    bool WriteAt(std::uint64_t place, const void* bytes, std::size_t count) override {
        const char* at = static_cast<const char*>(bytes);
        while (whole_ && count > 0) {
            const ssize_t written = pwrite(descriptor_.Number(), at, count, static_cast<off_t>(place));
            if (written >= 0) {
                at += written;
                place += static_cast<std::uint64_t>(written);
                count -= static_cast<std::size_t>(written);
            } else if (errno != EINTR) {
                Fail();
            }
        }
        return whole_;
    }

    // The medium is not waited for: after a power failure the file may be the old one, which loses nothing
    // that the next change does not bring back. A refusal that comes only with the closing counts; a second
    // descriptor is closed for it, as the first one holds the lock until the file has its name.
    bool Commit() override {
        if (temporary_.empty()) return false;
        if (close(dup(descriptor_.Number())) != 0) Fail();
        if (whole_ && rename(temporary_.c_str(), target_.c_str()) != 0) Fail();
        if (whole_) temporary_.clear();
        descriptor_.Close();
        return whole_;
    }

    std::string Why() const override { return std::strerror(error_); }

  private:
    void Fail() {
        if (whole_) error_ = errno;
        whole_ = false;
    }

    Descriptor descriptor_;
    std::string temporary_; // empty once it has been moved
    std::string target_;
    int error_ = 0; // the first
    bool whole_ = true;
};

} // namespace

bool LinuxFiles::List(const std::string& folder, std::string_view pattern, FolderListing& out) {
    out.folders.Clear();
    out.files.Clear();
    out.identity.reset();
    DIR* listing = opendir(folder.c_str());
    if (!listing) return false;
    struct stat status {};
    if (fstat(dirfd(listing), &status) == 0) out.identity.emplace(status.st_dev, status.st_ino);
    EntrySorter sorter(folder, dirfd(listing));
    const NamePattern fits(pattern);
    const dirent* entry = nullptr;
    while (errno = 0, (entry = readdir(listing)) != nullptr) {
        if (IsSelfOrParent(entry->d_name)) continue;
        const EntryKind kind = sorter.KindOf(*entry);
        if (kind == EntryKind::Folder) out.folders.Add(entry->d_name);
        if (kind == EntryKind::File && fits.Fits(entry->d_name)) out.files.Add(entry->d_name);
    }
    const bool whole = errno == 0;
    closedir(listing);
    return whole;
}

bool LinuxFiles::Exists(const std::string& path) {
    return access(path.c_str(), F_OK) == 0;
}

std::optional<std::string> LinuxFiles::Read(const std::string& path) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (file.Number() < 0 || fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    std::string content(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t filled = 0;
    for (;;) {
        // One byte more than the file was said to hold: it may grow, or hold more than it says, as those of
        // /proc do.
        if (filled == content.size()) content.resize(filled + std::max<std::size_t>(filled / 2, 4096));
        const ssize_t count = read(file.Number(), content.data() + filled, content.size() - filled);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) break;
        filled += static_cast<std::size_t>(count);
    }
    content.resize(filled);
    return content;
}

std::unique_ptr<FileWriter> LinuxFiles::Replace(const std::string& path, std::string& why) {
    const std::string target = FollowLinks(path);
    struct stat old {};
    const bool replaces = stat(target.c_str(), &old) == 0;
    if (replaces && !S_ISREG(old.st_mode)) {
        why = "not a regular file";
        return nullptr;
    }
    std::string temporary;
    const int descriptor = OpenBeside(target, temporary);
    if (descriptor < 0) {
        why = std::strerror(errno);
        return nullptr;
    }
    if (replaces) std::ignore = fchmod(descriptor, old.st_mode & 07777);
    return std::make_unique<LinuxFileWriter>(descriptor, temporary, target);
}

bool LinuxFiles::MakeFolder(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) return S_ISDIR(status.st_mode);
    const std::size_t last = path.find_last_not_of('/');
    const std::size_t cut = last == std::string::npos ? last : path.rfind('/', last);
    if (cut != std::string::npos && cut > 0 && !MakeFolder(path.substr(0, cut))) return false;
    return mkdir(path.c_str(), 0777) == 0 || errno == EEXIST;
}

bool LinuxFiles::Delete(const std::string& path) {
    return unlink(path.c_str()) == 0;
}

std::string LinuxFiles::ProgramDirectory() {
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    const std::string_view program(path, length > 0 ? static_cast<std::size_t>(length) : 0);
    const std::size_t last = program.rfind('/');
    return last == std::string_view::npos ? "." : std::string(program.substr(0, last));
}

std::string LinuxFiles::WritableDirectory() {
    return DataFolder() + "/quorvane";
}

std::string LinuxFiles::SharedDirectory() {
    const std::string program = ProgramDirectory();
    return program.substr(0, program.rfind('/')) + "/share/quorvane";
}

std::unique_ptr<Files> CreateFiles() {
    return std::make_unique<LinuxFiles>();
}

} // namespace quorvane
