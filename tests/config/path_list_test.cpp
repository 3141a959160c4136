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
    const std::string_view first = list[1];
    list.Add("/", longName);
    list.Add("/", exactName);
    for (int i = 0; i < 20'000; ++i)
        list.Add("/pictures/summer/", std::to_string(i) + ".jpg");
    EXPECT_EQ(list.Count(), 20'003);
    EXPECT_EQ(list.Capacity(), 25'000);
    EXPECT_EQ(list[0], "");
    EXPECT_EQ(first, "/a/first");
    EXPECT_EQ(list[2], "/" + longName);
    EXPECT_EQ(list[3], "/" + exactName);
    for (int i = 0; i < 20'000; ++i) {
        ASSERT_EQ(list[i + 4], "/pictures/summer/" + std::to_string(i) + ".jpg");
    }
    EXPECT_THROW(list[20'004], RunTimeError);
    EXPECT_THROW(list[-1], RunTimeError);

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

TEST(VkMapping, RowsThatTellTheOrder) {
    const struct {
        int row;
        std::int32_t code;
        std::string_view name;
    } rows[] = {{0, 8, "BACKSPACE"},
                {16, 44, "PRINT SCREEN"},
                {19, 48, "0"},
                {28, 57, "9"},
                {29, 65, "A"},
                {54, 90, "Z"},
                {57, 95, "Computer Sleep"},
                {58, 96, "Numeric pad 0"},
                {68, 106, "*"},
                {69, 107, "+"},
                {70, 109, "-"},
                {71, 110, "."},
                {72, 111, "/"},
                {73, 112, "F1"},
                {84, 123, "F12"},
                {85, 144, "NUM LOCK"},
                {86, 145, "SCROLL LOCK"}};
    for (const auto& row : rows) {
        EXPECT_EQ(VK_MAPPING[static_cast<std::size_t>(row.row)].ID, row.code) << row.name;
        EXPECT_EQ(VK_MAPPING[static_cast<std::size_t>(row.row)].Name, row.name);
    }
    std::set<std::int32_t> codes;
    for (const VkMapping& row : VK_MAPPING)
        codes.insert(row.ID);
    EXPECT_EQ(codes.size(), VK_MAPPING.size());
    EXPECT_FALSE(codes.contains(108));
}

} // namespace
} // namespace quorvane
