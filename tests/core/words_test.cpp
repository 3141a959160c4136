#include "core/words.h"

#include "core/locale_strings.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(Words, ReadAsTheTableOfTheLanguageSays) {
    LocaleStrings table;
    Words exit("E&xit", 9);
    Words apply("&Apply", 122);
    Words name("Quorvane II");
    const auto read = [&] {
        exit.Localise(table);
        apply.Localise(table);
        name.Localise(table);
        return exit.Text() + "|" + apply.Text() + "|" + name.Text();
    };
    table.Set(122, "&Übernehmen");
    EXPECT_EQ(read(), "E&xit|&Apply|Quorvane II") << "nothing is loaded";
    table.SetLoaded(true);
    EXPECT_EQ(read(), "|&Übernehmen|Quorvane II") << "an old number that the file lacks reads as nothing";
    table.Set(9, "Be&enden");
    table.Set(122, "");
    EXPECT_EQ(read(), "Be&enden|&Apply|Quorvane II") << "a late one keeps its built-in words";
    table.SetLoaded(false);
    EXPECT_EQ(read(), "E&xit|&Apply|Quorvane II");
}

TEST(Words, TakeTheirArgumentsInAnyLanguage) {
    LocaleStrings table;
    Words words("Assigned: [%1] for %2, 100%", 200, {"50%1.scr", "Ann"});
    EXPECT_EQ(words.Text(), "Assigned: [50%1.scr] for Ann, 100%");
    table.SetLoaded(true);
    table.Set(200, "%2: %1%3%");
    EXPECT_TRUE(words.Localise(table));
    EXPECT_EQ(words.Text(), "Ann: 50%1.scr%");
    EXPECT_FALSE(words.Localise(table)) << "the same again";
}

} // namespace
} // namespace quorvane
