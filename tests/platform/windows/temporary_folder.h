#pragma once

#include "platform/windows/base/wide.h"

#include <filesystem>
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
        Erase();
        CreateDirectoryW(WithoutLimit().c_str(), nullptr);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { Erase(); }

    std::string path;

  private:
    // What a test leaves may lie deeper than the classic limit of a path's length.
    std::wstring WithoutLimit() const { return L"\\\\?\\" + Wide(path); }

    void Erase() const {
        std::error_code ignored;
        std::filesystem::remove_all(WithoutLimit(), ignored);
    }
};

} // namespace quorvane
