#include "locale/locale_files.h"
#include "locale/locale_text.h"
#include "platform/memory/memory_platform.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvane {
namespace {

using namespace std::string_literals;

TEST(LocaleText, CommentsTakeTheLetterInFrontOfThemAlong) {
    const struct {
        std::string line, cleaned;
    } rows[] = {
        {"12=Hello", "12=Hello"},
        {"12=Hello #c", "12=Hell"},
        {"12=Hello  #c", "12=Hello"},
        {"12=Größe #c", "12=Größ"}, // a letter, not a byte
        {"12=Hello#\tx", "12=Hell"},
        {"12=a#b", "12=a#b"},
        {"  12=kept whole ", "  12=kept whole "},
        {"12=\0x\ty  #"s, "12= x y"},
        {" #", " comment"},
        {"\0 # at the beginning"s, " comment"},
        {"x #", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(CleanLocaleLine(row.line).value_or(" comment"), row.cleaned) << row.line;
}

TEST(LocaleText, StringsAreReadToTheEndOrToTheFirstWithoutANumber) {
    LocaleStrings strings;
    EXPECT_TRUE(
        LoadLocaleStrings("# banner\r\n[LOCALE=English;EN]\r\n1=Settings\r\n2=a=b\n[section]\n1=again\r\n"
                          "4096=last\n4097=beyond\n99999999999999=far beyond\n 3 x=blank in front\n4=",
                          strings));
    EXPECT_EQ(strings.Text(1), "again");
    EXPECT_EQ(strings.Text(2), "a=b");
    EXPECT_EQ(strings.Text(3), "blank in front");
    EXPECT_EQ(strings.Text(4096), "last");
    for (const char* const ending : {"abc=x", "0=x", "", "-5=x"}) {
        LocaleStrings partly;
        EXPECT_FALSE(LoadLocaleStrings("5=five\n"s + ending + "\n6=six\n", partly)) << ending;
        EXPECT_EQ(partly.Text(5), "five");
        EXPECT_EQ(partly.Text(6), "");
    }
    const LocaleHeader header = ReadLocaleHeader("1=x\n[nothing]no\n[LOCALE=Deutsch;DE]\n");
    EXPECT_EQ(header.language + header.description, "") << "the first line in brackets is the header";
    EXPECT_EQ(ReadLocaleHeader("[LOCALE=Deutsch;DE]  #").language, "DE");
    EXPECT_EQ(ReadLocaleHeader("[LOCALE=Deutsch;DE;x]").description, "Deutsch");
}

class LocaleStart : public testing::Test {
  protected:
    LocaleStart() { platform.files.programDirectory = platform.files.sharedDirectory = "/program"; }

    void Start(const std::string& language) {
        ended = false;
        StartLocale(ScanLocaleFiles(platform.files, platform.system), language, platform.files,
                    platform.system, platform.prompts, strings, [this] { ended = true; });
    }
    std::string LastQuestion() const {
        return platform.prompts.asked.empty() ? "" : platform.prompts.asked.back().text;
    }

    MemoryPlatform platform;
    LocaleStrings strings;
    bool ended = false;
};

TEST_F(LocaleStart, TakesTheFirstFileOfTheLanguage) {
    Start("EN");
    EXPECT_FALSE(strings.Loaded()) << "without any file nothing is asked";
    platform.files.Put("/program/x.RES", "[LOCALE=beside;EN]\n1=beside\n");
    platform.files.Put("/program/locales/e.res", "\xEF\xBB\xBF[LOCALE=English;EN]\r\n1=in locales\r\n");
    platform.files.Put("/program/locales/f.res", "[LOCALE=Fran\xE7"
                                                 "ais; FR ]\n1=Param\xE8tres\n");
    platform.files.Put("/program/locales/none.res", "1=without a header\n");
    Start(" en ");
    EXPECT_TRUE(strings.Loaded());
    EXPECT_EQ(strings.Text(1), "in locales");
    Start("FR");
    EXPECT_EQ(strings.Text(1), "Paramètres") << "of the code page";
    EXPECT_EQ(ScanLocaleFiles(platform.files, platform.system).size(), 4U);
    EXPECT_TRUE(platform.prompts.asked.empty());
}

TEST_F(LocaleStart, AsksWhatToDoWithoutItsFile) {
    platform.files.Put("/program/locales/e.res", "[LOCALE=English;EN]\n1=one\nno number\n");
    platform.prompts.WillAnswer(Answer::No);
    Start("EN");
    EXPECT_EQ(LastQuestion(),
              "Error!\r\nUnable load locale file [/program/locales/e.res]\r\nTerminate application?");
    EXPECT_FALSE(strings.Loaded() || ended);
    platform.prompts.WillAnswer(Answer::Yes);
    Start("XX");
    EXPECT_EQ(LastQuestion(),
              "Error!\r\nDefault locale file (*.res) not present in application directory!\r\n"
              "Terminate application?");
    EXPECT_EQ(platform.prompts.asked.back().title, "Error!");
    EXPECT_EQ(platform.prompts.asked.back().style, 36);
    EXPECT_TRUE(ended);
    platform.files.Put("/program/locales/g.res", "[LOCALE=Deutsch;DE]\n2=zwei\n");
    ChangeLocale(ScanLocaleFiles(platform.files, platform.system), "de", platform.files, platform.system,
                 strings);
    EXPECT_TRUE(strings.Loaded());
    EXPECT_EQ(strings.Text(1), "one") << "of the language before";
    EXPECT_FALSE(strings.RightToLeft());
    platform.files.Put("/program/locales/h.res", "[LOCALE=\xD7\xA2\xD7\x91\xD7\xA8\xD7\x99\xD7\xAA;HE-il]\n");
    ChangeLocale(ScanLocaleFiles(platform.files, platform.system), "he-IL", platform.files, platform.system,
                 strings);
    EXPECT_TRUE(strings.RightToLeft());
    ChangeLocale({}, "de", platform.files, platform.system, strings);
    EXPECT_FALSE(strings.Loaded() || strings.RightToLeft());
}

} // namespace
} // namespace quorvane
