#pragma once

#include "platform/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace quorvane {

using Names = std::vector<std::string>;

inline Names Sorted(const NameList& names) {
    Names sorted;
    for (std::size_t i = 0; i < names.size(); ++i)
        sorted.emplace_back(names[i]);
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

inline bool StoreFile(Files& files, const std::string& path, const std::string& content) {
    std::string why;
    const auto writer = files.Replace(path, why);
    return writer && writer->Write(content.data(), content.size()) && writer->Commit();
}

// What the files of every platform must do. A platform's test gives a class with
//     Files& Service();
//     std::string Root();   // an empty folder, without a separator at the end
// and instantiates:
//     INSTANTIATE_TYPED_TEST_SUITE_P(Memory, FilesContract, MemoryFilesMaker);
template<typename Maker>
class FilesContract : public testing::Test {
  protected:
    // "a/b" below the root, with the separators of the platform.
    std::string Path(std::string below) {
        std::replace(below.begin(), below.end(), '/', files_.Separator());
        return maker_.Root() + files_.Separator() + below;
    }
    bool Store(const std::string& below, const std::string& content) {
        return StoreFile(files_, Path(below), content);
    }

    Maker maker_;
    Files& files_ = maker_.Service();
    FolderListing listing_;
};

TYPED_TEST_SUITE_P(FilesContract);

TYPED_TEST_P(FilesContract, ListsByPatternWhateverTheCase) {
    EXPECT_FALSE(this->files_.List(this->Path("gone"), "*.*", this->listing_));
    EXPECT_FALSE(this->files_.List("", "*.*", this->listing_)) << "no name is no folder";
    EXPECT_TRUE(this->files_.MakeFolder(this->Path("a/б")));
    EXPECT_TRUE(this->files_.MakeFolder(this->Path("a/б"))) << "it stands already";
    for (const char* name : {"one.JPG", "Ж.png", ".hidden.jpg", "no point", "long.jpeg"})
        ASSERT_TRUE(this->Store(std::string("a/") + name, name));
    EXPECT_TRUE(this->files_.List(this->Path("a"), "*.jpg;*.JPG;o*;ж.*", this->listing_));
    EXPECT_EQ(Sorted(this->listing_.files), (Names{".hidden.jpg", "one.JPG", "Ж.png"}));
    EXPECT_EQ(Sorted(this->listing_.folders), Names{"б"}) << "no pattern counts for folders";
    EXPECT_TRUE(this->files_.List(this->Path("a/"), "*.*", this->listing_)) << "as good as none at the end";
    EXPECT_EQ(this->listing_.files.size(), 5U);
    EXPECT_FALSE(this->files_.List(this->Path("a/one.JPG"), "*.*", this->listing_)) << "a file is no folder";
    EXPECT_EQ(this->listing_.files.size(), 0U);
}

TYPED_TEST_P(FilesContract, TellsOneFolderFromAnother) {
    this->files_.MakeFolder(this->Path("a/b"));
    ASSERT_TRUE(this->files_.List(this->Path("a"), "*.*", this->listing_));
    const auto first = this->listing_.identity;
    ASSERT_TRUE(first);
    this->files_.List(this->Path("a/b"), "*.*", this->listing_);
    EXPECT_NE(this->listing_.identity, first);
    this->files_.List(this->Path("a/"), "*.*", this->listing_);
    EXPECT_EQ(this->listing_.identity, first);
    this->files_.List(this->Path("gone"), "*.*", this->listing_);
    EXPECT_FALSE(this->listing_.identity);
}

TYPED_TEST_P(FilesContract, ReplacesWholeOrNotAtAll) {
    Files& files = this->files_;
    const std::string path = this->Path("Обои.bmp");
    EXPECT_FALSE(this->Store("none/x", "no folder to be in"));
    EXPECT_EQ(files.Read(path), std::nullopt);
    ASSERT_TRUE(this->Store("Обои.bmp", "old"));
    {
        std::string why;
        const auto abandoned = files.Replace(path, why);
        ASSERT_TRUE(abandoned) << why;
        EXPECT_TRUE(abandoned->Write("half", 4));
        EXPECT_EQ(files.Read(path), "old") << "until it is committed";
    }
    EXPECT_EQ(files.Read(path), "old");
    EXPECT_TRUE(this->Store("Обои.bmp", std::string("\0new", 4)));
    EXPECT_EQ(files.Read(path), std::string("\0new", 4));
    EXPECT_TRUE(files.List(this->maker_.Root(), "*", this->listing_));
    EXPECT_EQ(this->listing_.files.size(), 1U) << "nothing temporary stays behind";
}

TYPED_TEST_P(FilesContract, ReadsAndDeletesFilesAlone) {
    Files& files = this->files_;
    files.MakeFolder(this->Path("a"));
    this->Store("a/x", "");
    EXPECT_TRUE(files.Exists(this->Path("a")));
    EXPECT_TRUE(files.Exists(this->Path("a/x")));
    EXPECT_EQ(files.Read(this->Path("a/x")), "");
    EXPECT_EQ(files.Read(this->Path("a")), std::nullopt);
    EXPECT_FALSE(files.Delete(this->Path("a")));
    EXPECT_TRUE(files.Delete(this->Path("a/x")));
    EXPECT_FALSE(files.Delete(this->Path("a/x")));
    EXPECT_FALSE(files.Exists(this->Path("a/x")));
}

REGISTER_TYPED_TEST_SUITE_P(FilesContract, ListsByPatternWhateverTheCase, TellsOneFolderFromAnother,
                            ReplacesWholeOrNotAtAll, ReadsAndDeletesFilesAlone);

} // namespace quorvane
