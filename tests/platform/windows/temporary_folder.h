#pragma once

#include "platform/windows/base/wide.h"

#include <string>
#include <windows.h>

namespace quorvane {

// A folder with a name beyond ASCII, gone with its object. `path` is UTF-8.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        static int number = 0;
        wchar_t place[MAX_PATH + 1]{};
        GetTempPathW(MAX_PATH, place);
        path = Utf8(place) + "quorvane-Жé-" + std::to_string(++number);
        Erase(WithoutLimit());
        CreateDirectoryW(WithoutLimit().c_str(), nullptr);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { Erase(WithoutLimit()); }

    std::string path;

  private:
    // What a test leaves may lie deeper than the classic limit of a path's length.
    std::wstring WithoutLimit() const { return L"\\\\?\\" + Wide(path); }

    static void Erase(const std::wstring& folder) {
        WIN32_FIND_DATAW found{};
        const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
        if (search == INVALID_HANDLE_VALUE) return;
        do {
            const std::wstring name = found.cFileName;
            if (name == L"." || name == L"..") continue;
            const std::wstring whole = folder + L"\\" + name;
            if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
                Erase(whole);
            } else {
                DeleteFileW(whole.c_str());
            }
        } while (FindNextFileW(search, &found));
        FindClose(search);
        RemoveDirectoryW(folder.c_str());
    }
};

} // namespace quorvane
