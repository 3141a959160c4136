#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// What was asked of the services of one platform, a line a call, in the order of asking:
// "desktop.SetWallpaper /home/ann/Wallpaper.bmp".
struct CallLog {
    std::vector<std::string> lines;

    void Add(std::string line) { lines.push_back(std::move(line)); }

    // How many lines begin with `start`.
    int Count(std::string_view start) const {
        return static_cast<int>(std::count_if(lines.begin(), lines.end(), [start](const std::string& line) {
            return line.starts_with(start);
        }));
    }
    bool Has(std::string_view start) const { return Count(start) > 0; }
    void Clear() { lines.clear(); }
};

} // namespace quorvane
