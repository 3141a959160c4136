#include "platform/linux/desktop/wallpaper_copies.h"

#include "platform/files.h"
#include "platform/linux/desktop/bitmap_rows.h"

#include <chrono>
#include <filesystem>
#include <fstream>

namespace quorvane {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view Prefix = "wallpaper-";
constexpr std::string_view Ending = ".bmp";
constexpr const char* LastTaken = "wallpaper-last"; // the note that names it

// By the time of day, so that a name is new also where the folder was emptied.
std::string NewName() {
    using namespace std::chrono;
    const auto now = duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
    return std::string(Prefix) + std::to_string(now) + std::string(Ending);
}

bool IsCopy(const std::string& name) {
    return name.starts_with(Prefix) && name.ends_with(Ending);
}

bool CopyPart(const std::string& file, PixelSize size, const std::string& to, Files& files) {
    const auto rows = BitmapRows::Open(file);
    const auto part = rows ? WithoutBorder(rows->Size(), size) : std::nullopt;
    if (!part || rows->Size() == size) return false;
    std::string why; // the whole file is given then
    const auto writer = files.Replace(to, why);
    return writer && CutBitmap(*rows, *part, *writer) && writer->Commit();
}

// A second name of the same bytes where the file system allows it, since the wallpaper's own file is always
// replaced and never written into; a copy otherwise.
bool CopyWhole(const std::string& file, const std::string& to) {
    std::error_code error;
    fs::create_hard_link(file, to, error);
    if (!error) return true;
    error.clear();
    return fs::copy_file(file, to, error);
}

} // namespace

std::string WallpaperCopies::Make(const std::string& file, PixelSize cutTo) {
    files_.MakeFolder(folder_);
    const std::string copy = folder_ + "/" + NewName();
    return CopyPart(file, cutTo, copy, files_) || CopyWhole(file, copy) ? copy : file;
}

void WallpaperCopies::Settle(const std::string& copy, bool taken) {
    const std::string note = folder_ + "/" + LastTaken;
    std::string last;
    std::ifstream(note) >> last;
    const std::string current = fs::path(copy).filename().string();
    if (taken) std::ofstream(note, std::ios::trunc) << current << '\n';
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder_, error)) {
        const std::string name = entry.path().filename().string();
        if (IsCopy(name) && name != current && name != last) fs::remove(entry.path(), error);
    }
}

} // namespace quorvane
