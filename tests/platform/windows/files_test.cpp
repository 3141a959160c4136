#include "platform/windows/base/files.h"
#include "tests/platform/windows/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>
#include <windows.h>

namespace quorvane {
namespace {

using Names = std::vector<std::string>;

Names Sorted(const NameList& names) {
    Names result;
    for (std::size_t i = 0; i < names.size(); ++i)
        result.emplace_back(names[i]);
    std::sort(result.begin(), result.end());
    return result;
}

bool Put(Files& files, const std::string& path, const std::string& content) {
    std::string why;
    const auto writer = files.Replace(path, why);
    return writer && writer->Write(content.data(), content.size()) && writer->Commit();
}

TEST(WindowsFiles, ListsByPatternAndEveryAttribute) {
    const TemporaryFolder folder;
    WindowsFiles files;
    FolderListing listing;
    EXPECT_FALSE(files.List(folder.path + "\\gone", "*.*", listing));
    EXPECT_FALSE(files.List("", "*.*", listing));
    EXPECT_TRUE(files.MakeFolder(folder.path + "\\a\\б"));
    EXPECT_TRUE(files.MakeFolder(folder.path + "\\a\\б")) << "it stands already";
    for (const char* name : {"one.JPG", "Ж.png", "hidden.jpg", "no point", "long.jpeg"}) {
        ASSERT_TRUE(Put(files, folder.path + "\\a\\" + name, name));
    }
    SetFileAttributesA((folder.path + "\\a\\hidden.jpg").c_str(),
                       FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(files.List(folder.path + "\\a", "*.jpg;o*;ж.*", listing));
    EXPECT_EQ(Sorted(listing.files), (Names{"hidden.jpg", "one.JPG", "Ж.png"})) << "short names do not count";
    EXPECT_EQ(Sorted(listing.folders), Names{"б"});
    EXPECT_TRUE(files.List(folder.path + "\\a\\", "*.*", listing));
    EXPECT_EQ(listing.files.size(), 5U);
    SetFileAttributesA((folder.path + "\\a\\hidden.jpg").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST(WindowsFiles, ReplacesWholeOrNotAtAll) {
    const TemporaryFolder folder;
    WindowsFiles files;
    const std::string path = folder.path + "\\Обои.bmp";
    EXPECT_FALSE(Put(files, folder.path + "\\none\\x", "no folder to be in"));
    std::string why;
    EXPECT_EQ(files.Replace(folder.path, why), nullptr);
    EXPECT_EQ(why, "not a regular file");
    ASSERT_TRUE(Put(files, path, "old"));
    {
        const auto abandoned = files.Replace(path, why);
        ASSERT_TRUE(abandoned);
        EXPECT_TRUE(abandoned->Write("half", 4));
        EXPECT_EQ(files.Read(path), "old") << "until it is committed";
    }
    EXPECT_EQ(files.Read(path), "old");
    EXPECT_TRUE(Put(files, path, std::string("\0new", 4)));
    EXPECT_EQ(files.Read(path), std::string("\0new", 4));

    const HANDLE guard = CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_FALSE(Put(files, path, "other")) << "another program holds it";
    CloseHandle(guard);
    EXPECT_EQ(files.Read(path), std::string("\0new", 4));

    FolderListing listing;
    EXPECT_TRUE(files.List(folder.path, "*", listing));
    EXPECT_EQ(listing.files.size(), 1U) << "nothing temporary stays behind";
    EXPECT_TRUE(files.Delete(path));
    EXPECT_FALSE(files.Delete(path));
    EXPECT_FALSE(files.Exists(path));
    EXPECT_EQ(files.Read(path), std::nullopt);
    EXPECT_TRUE(files.Exists(folder.path));
}

TEST(WindowsFiles, ReachesBeyondTheClassicLimit) {
    const TemporaryFolder folder;
    WindowsFiles files;
    std::string deep = folder.path;
    for (int i = 0; i < 6; ++i)
        deep += "\\" + std::string(60, 'd');
    ASSERT_TRUE(files.MakeFolder(deep));
    EXPECT_TRUE(Put(files, deep + "\\file.txt", "x"));
    EXPECT_EQ(files.Read(deep + "\\file.txt"), "x");
    FolderListing listing;
    EXPECT_TRUE(files.List(deep, "*.txt", listing));
    EXPECT_EQ(listing.files.size(), 1U);
}

TEST(WindowsFiles, KnowsWhereTheProgramLies) {
    WindowsFiles files;
    EXPECT_TRUE(files.Exists(files.ProgramDirectory() + "\\test_platform_windows.exe"));
    EXPECT_EQ(files.WritableDirectory(), files.ProgramDirectory());
}

} // namespace
} // namespace quorvane
