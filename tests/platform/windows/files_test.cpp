#include "platform/windows/base/files.h"
#include "tests/contracts/files_contract.h"
#include "tests/platform/windows/temporary_folder.h"

#include <windows.h>

namespace quorvane {
namespace {

class WindowsFilesMaker {
  public:
    Files& Service() { return files_; }
    std::string Root() const { return folder_.path; }

  private:
    TemporaryFolder folder_;
    WindowsFiles files_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Windows, FilesContract, WindowsFilesMaker);

TEST(WindowsFiles, EveryAttributeIsListedAndShortNamesDoNotCount) {
    const TemporaryFolder folder;
    WindowsFiles files;
    FolderListing listing;
    ASSERT_TRUE(StoreFile(files, folder.path + "\\hidden.jpg", "x"));
    ASSERT_TRUE(StoreFile(files, folder.path + "\\long.jpeg", "x"));
    const std::wstring hidden = Wide(folder.path + "\\hidden.jpg");
    SetFileAttributesW(hidden.c_str(),
                       FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_SYSTEM);
    EXPECT_TRUE(files.List(folder.path, "*.jpg", listing));
    EXPECT_EQ(Sorted(listing.files), Names{"hidden.jpg"});
    SetFileAttributesW(hidden.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST(WindowsFiles, AFileThatIsHeldStaysAsItIs) {
    const TemporaryFolder folder;
    WindowsFiles files;
    std::string why;
    EXPECT_EQ(files.Replace(folder.path, why), nullptr);
    EXPECT_EQ(why, "not a regular file");
    const std::string path = folder.path + "\\held.bmp";
    ASSERT_TRUE(StoreFile(files, path, "old"));
    const HANDLE guard = CreateFileW(Wide(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_FALSE(StoreFile(files, path, "other")) << "another program holds it";
    CloseHandle(guard);
    EXPECT_EQ(files.Read(path), "old");
}

TEST(WindowsFiles, ReachesBeyondTheClassicLimit) {
    const TemporaryFolder folder;
    WindowsFiles files;
    std::string deep = folder.path;
    for (int i = 0; i < 6; ++i)
        deep += "\\" + std::string(60, 'd');
    ASSERT_TRUE(files.MakeFolder(deep));
    EXPECT_TRUE(StoreFile(files, deep + "\\file.txt", "x"));
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
