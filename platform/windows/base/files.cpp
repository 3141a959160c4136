#include "platform/windows/base/files.h"

#include "platform/shared/name_pattern.h"
#include "platform/windows/base/wide.h"
#include "platform/windows/base/win32.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quorvane {
namespace {

class FileHandle {
  public:
    explicit FileHandle(HANDLE handle)
        : handle_(handle) {}
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    ~FileHandle() { Close(); }

    HANDLE Get() const { return handle_; }
    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    void Close() {
        if (IsOpen()) CloseHandle(handle_);
        handle_ = INVALID_HANDLE_VALUE;
    }

  private:
    HANDLE handle_;
};

// The system's own sentence for an error, without its end.
std::string SystemWords(DWORD error) {
    wchar_t words[512]{};
    FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, words,
                   static_cast<DWORD>(std::size(words)), nullptr);
    std::wstring text = words;
    while (!text.empty() && std::wstring_view(L". \r\n").find(text.back()) != std::wstring_view::npos)
        text.pop_back();
    return text.empty() ? "error " + std::to_string(error) : Utf8(text);
}

class TemporaryFile final : public FileWriter {
  public:
    TemporaryFile(std::wstring target, std::wstring temporary)
        : target_(std::move(target))
        , temporary_(std::move(temporary))
        , file_(CreateFileW(temporary_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    ~TemporaryFile() override {
        const bool leftOver = file_.IsOpen();
        file_.Close();
        if (leftOver) DeleteFileW(temporary_.c_str());
    }

    bool IsOpen() const { return file_.IsOpen(); }

    bool WriteAt(std::uint64_t place, const void* bytes, std::size_t count) override {
        const char* from = static_cast<const char*>(bytes);
        while (whole_ && count > 0) {
            const DWORD piece = static_cast<DWORD>(std::min<std::size_t>(count, 1U << 26));
            OVERLAPPED at{};
            at.Offset = static_cast<DWORD>(place);
            at.OffsetHigh = static_cast<DWORD>(place >> 32);
            DWORD written = 0;
            Hold(WriteFile(file_.Get(), from, piece, &written, &at) && written > 0);
            from += written;
            place += written;
            count -= written;
        }
        return whole_;
    }

    bool Commit() override {
        if (!file_.IsOpen()) return false;
        if (whole_) Hold(FlushFileBuffers(file_.Get()));
        file_.Close();
        if (whole_)
            Hold(MoveFileExW(temporary_.c_str(), target_.c_str(),
                             MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
        if (!whole_) DeleteFileW(temporary_.c_str());
        return whole_;
    }

    std::string Why() const override { return SystemWords(error_); }

  private:
    void Hold(bool done) {
        if (!done) error_ = GetLastError();
        whole_ = done;
    }

    std::wstring target_;
    std::wstring temporary_;
    FileHandle file_;
    DWORD error_ = ERROR_SUCCESS;
    bool whole_ = true;
};

// The names beside `target`, without the number of the process. A name of the full length that a folder takes
// is cut.
std::wstring StemBeside(const std::wstring& target) {
    constexpr std::size_t LongestName = 240;
    const std::size_t start = target.find_last_of(L"\\/") + 1;
    return target.substr(0, start + std::min(LongestName, target.size() - start)) + L".~";
}

// Removes what processes left behind that died while they wrote. What is being written is not shared and
// stays.
void RemoveLeftOvers(const std::wstring& stem) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW((stem + L"*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    const std::wstring folder = stem.substr(0, stem.find_last_of(L"\\/") + 1);
    do {
        const std::wstring_view name = found.cFileName;
        const std::size_t digits = name.rfind(L'~') + 1;
        if (digits < name.size() && name.find_first_not_of(L"0123456789", digits) == name.npos)
            DeleteFileW((folder + std::wstring(name)).c_str());
    } while (FindNextFileW(search, &found));
    FindClose(search);
}

// A folder's own handle, links followed.
HANDLE OpenFolder(const std::wstring& folder) {
    return CreateFileW(folder.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                       OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

std::optional<FolderIdentity> IdentityOf(const std::wstring& folder) {
    const FileHandle handle(OpenFolder(folder));
    BY_HANDLE_FILE_INFORMATION known{};
    if (!handle.IsOpen() || !GetFileInformationByHandle(handle.Get(), &known)) return std::nullopt;
    const std::uint64_t number = (std::uint64_t{known.nFileIndexHigh} << 32) | known.nFileIndexLow;
    return FolderIdentity(known.dwVolumeSerialNumber, number);
}

// Where a folder really lies, links resolved; empty where the system does not tell.
std::wstring RealPath(const std::wstring& folder) {
    const FileHandle handle(OpenFolder(folder));
    if (!handle.IsOpen()) return {};
    const DWORD room = GetFinalPathNameByHandleW(handle.Get(), nullptr, 0, 0);
    std::wstring path(room, L'\0');
    path.resize(GetFinalPathNameByHandleW(handle.Get(), path.data(), room, 0));
    return path;
}

// Whether a link in `folder` leads to that folder or to one above it.
bool LeadsBack(const std::wstring& folder, const wchar_t* name) {
    std::wstring target = RealPath(folder + L"\\" + name);
    std::wstring here = RealPath(folder);
    if (target.empty()) return true;
    target += L"\\";
    here += L"\\";
    return here.size() >= target.size() &&
           CompareStringOrdinal(here.data(), static_cast<int>(target.size()), target.data(),
                                static_cast<int>(target.size()), TRUE) == CSTR_EQUAL;
}

bool IsFolder(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

} // namespace

bool WindowsFiles::List(const std::string& folder, std::string_view pattern, FolderListing& out) {
    out.folders.Clear();
    out.files.Clear();
    out.identity.reset();
    if (folder.empty()) return false;
    std::wstring path = WidePath(folder);
    while (path.ends_with(L'\\') || path.ends_with(L'/'))
        path.pop_back();

    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileExW((path + L"\\*").c_str(), FindExInfoBasic, &found,
                                           FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
    if (search == INVALID_HANDLE_VALUE) return false;
    out.identity = IdentityOf(path);
    const NamePattern fits(pattern);
    do {
        const std::wstring_view wideName = found.cFileName;
        if (wideName == L"." || wideName == L"..") continue;
        const std::string name = Utf8(wideName);
        if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) {
            if (fits.Fits(name)) out.files.Add(name);
        } else if (!(found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) ||
                   !LeadsBack(path, found.cFileName)) {
            out.folders.Add(name);
        }
    } while (FindNextFileW(search, &found));
    const bool complete = GetLastError() == ERROR_NO_MORE_FILES;
    FindClose(search);
    return complete;
}

bool WindowsFiles::Exists(const std::string& path) {
    return GetFileAttributesW(WidePath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::optional<std::string> WindowsFiles::Read(const std::string& path) {
    const FileHandle file(CreateFileW(WidePath(path).c_str(), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file.IsOpen()) return std::nullopt;
    std::string content;
    std::string piece(1U << 16, '\0');
    DWORD count = 0;
    do {
        if (!ReadFile(file.Get(), piece.data(), static_cast<DWORD>(piece.size()), &count, nullptr))
            return std::nullopt;
        content.append(piece, 0, count);
    } while (count > 0);
    return content;
}

std::unique_ptr<FileWriter> WindowsFiles::Replace(const std::string& path, std::string& why) {
    const std::wstring target = WidePath(path);
    if (IsFolder(target)) {
        why = "not a regular file";
        return nullptr;
    }
    const std::wstring stem = StemBeside(target);
    RemoveLeftOvers(stem);
    auto writer = std::make_unique<TemporaryFile>(target, stem + std::to_wstring(GetCurrentProcessId()));
    if (writer->IsOpen()) return writer;
    why = SystemWords(GetLastError());
    return nullptr;
}

bool WindowsFiles::MakeFolder(const std::string& path) {
    const std::wstring wide = WidePath(path);
    if (IsFolder(wide) || CreateDirectoryW(wide.c_str(), nullptr)) return true;
    if (GetLastError() != ERROR_PATH_NOT_FOUND) return false;
    const std::size_t last = path.find_last_of("\\/");
    return last != std::string::npos && last > 0 && MakeFolder(path.substr(0, last)) &&
           CreateDirectoryW(wide.c_str(), nullptr);
}

bool WindowsFiles::Delete(const std::string& path) {
    return DeleteFileW(WidePath(path).c_str());
}

std::string WindowsFiles::ProgramDirectory() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    const std::size_t last = path.find_last_of(L'\\');
    return Utf8(path.substr(0, last == std::wstring::npos ? 0 : last));
}

} // namespace quorvane
