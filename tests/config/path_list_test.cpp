#include "config/global_record.h"
#include "config/vk_mapping.h"

#include <gtest/gtest.h>

#include <set>

namespace quorvane {
namespace {

TEST(PathList, KeepsEveryPathWhereItWasAdded) {
    PathList list;
    const std::string longName(200'000, 'x'); // longer than several chunks
    const std::string exactName(64 * 1024 - 2, 'y');
    list.Add("/a/", "first");
    list.Add("/", longName);
    list.Add("/", exactName);
    for (int i = 0; i < 20'000; ++i)
        list.Add("/pictures/summer/", std::to_string(i) + ".jpg");
    EXPECT_EQ(list.Count(), 20'003);
    EXPECT_EQ(list.Capacity(), 25'000);
    EXPECT_EQ(list[0], "");
    EXPECT_EQ(list[1], "/a/first");
    EXPECT_EQ(list[2], "/" + longName);
    EXPECT_EQ(list[3], "/" + exactName);
    for (int i = 0; i < 20'000; ++i)
        ASSERT_EQ(list[i + 4], "/pictures/summer/" + std::to_string(i) + ".jpg");
    EXPECT_THROW(list[20'004], RunTimeError);
    EXPECT_THROW(list[-1], RunTimeError);

    list.Add("/a/", "second");
    list.Add("/a/b/", "third");
    EXPECT_EQ(list[20'004], "/a/second");
    EXPECT_EQ(list[20'005], "/a/b/third");

    list.Clear();
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.Capacity(), 0);
    EXPECT_THROW(list[1], RunTimeError);
    list.Add("", "again");
    EXPECT_EQ(list[1], "again");
}

TEST(OneBased, CountsFromOne) {
    GlobalRecord record;
    record.FavoritesSources.Add({"/a", true});
    record.FavoritesSources.Add({"/b", false});
    record.FavoritesSources.Add({"/c", true});
    EXPECT_EQ(record.FavoritesSrcCnt(), 3);
    record.FavoritesSources.Remove(2);
    EXPECT_EQ(record.FavoritesSources[2].Path, "/c");
    EXPECT_THROW(record.FavoritesSources[0], RunTimeError);
    EXPECT_THROW(record.FavoritesSources[3], RunTimeError);
    EXPECT_THROW(record.FavoritesSources.Remove(3), RunTimeError);
    record.FavoritesSources.Resize(-1);
    EXPECT_EQ(record.FavoritesSrcCnt(), 0);
}

TEST(VkMapping, NamesEachKeyOnceAndLettersAsThemselves) {
    std::set<std::int32_t> codes;
    std::set<std::string_view> names;
    for (const VkMapping& row : VK_MAPPING) {
        codes.insert(row.ID);
        names.insert(row.Name);
        const bool isLetter = (row.ID >= '0' && row.ID <= '9') || (row.ID >= 'A' && row.ID <= 'Z');
        EXPECT_TRUE(!isLetter || row.Name == std::string(1, static_cast<char>(row.ID))) << row.Name;
    }
    EXPECT_EQ(codes.size(), VK_MAPPING.size());
    EXPECT_EQ(names.size(), VK_MAPPING.size());
    EXPECT_EQ(VK_MAPPING[VK_MAP_COUNT].ID, 145) << "the last";
}

} // namespace
} // namespace quorvane
