#include "core/numbers.h"
#include "core/run_time_error.h"
#include "core/text.h"
#include "core/utf8.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

TEST(Text, NamesCompareWithoutCaseAndOuterBlanks) {
    EXPECT_TRUE(SameName("  C:\\Pictures\\A.JPG ", "c:\\pictures\\a.jpg"));
    EXPECT_TRUE(SameName("ÄÖÜ Ñandú Ёлка ЯБЛОКО Ωμέγα Žluť", "äöü ñandú ёлка яблоко ωμέγα žluť"));
    EXPECT_FALSE(SameName("a b", "ab"));
    EXPECT_EQ(LowerCase("\xC3"), "\xC3") << "a letter cut in half stays as it is";
    EXPECT_EQ(UpperFirst("вт"), "Вт");
    EXPECT_EQ(UpperFirst("su"), "Su");
}

TEST(Text, LettersAreCountedAndNeverParted) {
    EXPECT_EQ(CountLetters("жук.png"), 7);
    EXPECT_EQ(FirstLetters("жук.png", 2), "жу");
    EXPECT_EQ(LastLetters("ab жук", 4), " жук");
    EXPECT_EQ(FirstLetters("жук", 3), "жук");
    EXPECT_EQ(LastLetters("жук", 9), "жук");
    EXPECT_EQ(LastLetters("жук", 0), "");
    EXPECT_EQ(FirstLetters("", 2), "");
    EXPECT_EQ(FirstLetters("\xFFж\xC3", 2), "\xFFж") << "a byte alone is a letter";
    for (const char* none :
         {"\x80", "\xC1\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xE2\x82"})
        EXPECT_EQ(LetterBytes(none, 0), 0U);
    EXPECT_EQ(LetterBytes("\xF4\x8F\xBF\xBF", 0), 4U);
}

TEST(Text, ControlLettersAreShownAndNoOthers) {
    EXPECT_EQ(EscapeControls("жук — ok\\\xA5"), "жук — ok\\\xA5");
    EXPECT_EQ(EscapeControls("\n\t\r\x1b[31m\x7f"), "\\n\\t\\r\\x1b[31m\\x7f");
    EXPECT_EQ(EscapeControls("\xC2\x9B|\x9B"), "\\x9b|\\x9b") << "begins a command of eight bits";
}

TEST(Text, SplitKeepsEmptyPartsAndReplaceTakesAll) {
    EXPECT_EQ(Split("a;;b", ';'), (std::vector<std::string>{"a", "", "b"}));
    EXPECT_EQ(Split("", ';'), std::vector<std::string>{""});
    EXPECT_EQ(Replace("dd.dd", "dd", "7"), "7.7");
}

TEST(Numbers, ParseDecimalTakesAnySeparatorOnce) {
    EXPECT_EQ(ParseDecimal("0,75", "."), 0.75);
    EXPECT_EQ(ParseDecimal("0.75", ","), 0.75);
    EXPECT_EQ(ParseDecimal("1.2.3", "."), 1.2);
    EXPECT_EQ(ParseDecimal("-5", "."), 0);
    EXPECT_EQ(ParseDecimal("", "."), 0);
    EXPECT_EQ(ParseDecimal("12x", "."), 12);
    EXPECT_EQ(ParseDecimal(LocaleNumberText(0.75, "\u066B"), "\u066B"), 0.75);
    EXPECT_THROW(ParseDecimal(".", "."), RunTimeError);
}

TEST(Numbers, LeadingNumberStopsWhereNoNumberGoesOn) {
    EXPECT_EQ(LeadingNumber("37,6"), 37);
    EXPECT_EQ(LeadingNumber(" 37.63388889          "), 37.63388889);
    EXPECT_EQ(LeadingNumber("-1 2.5e1x"), -125);
    EXPECT_EQ(LeadingNumber("1e"), 1);
    EXPECT_EQ(LeadingNumber("."), 0);
    EXPECT_EQ(LeadingNumber("north"), 0);
    EXPECT_EQ(LeadingNumber("1e-999"), 0);
    EXPECT_EQ(LeadingNumber("0." + std::string(400, '0') + "1"), 0);
    EXPECT_THROW(LeadingNumber(std::string(400, '9') + ".5"), RunTimeError);
}

TEST(Numbers, TextAndBackUnderBothDecimalSigns) {
    EXPECT_EQ(NumberText(0.1 + 0.2), "0.3");
    EXPECT_EQ(NumberText(1e20), "1E+20");
    EXPECT_EQ(PlainNumberText(1e20), "100000000000000000000");
    EXPECT_EQ(PlainNumberText(-1.25e-7), "-0.000000125");
    EXPECT_EQ(PlainNumberText(123456789012345678.0), "123456789012346000");
    EXPECT_EQ(PlainNumberText(7), "7");
    EXPECT_EQ(SignedNumberText(37.63388889), " 37.63388889");
    EXPECT_EQ(SignedNumberText(-1.5), "-1.5");
    EXPECT_EQ(LocaleNumberText(8.25F, ","), "8,25");
    EXPECT_EQ(LocaleTextToDouble("8,25", ","), 8.25);
    EXPECT_THROW(LocaleTextToDouble("8,25", "."), RunTimeError);
    EXPECT_THROW(LocaleTextToDouble("8.25", ","), RunTimeError);
    EXPECT_THROW(LocaleTextToDouble("1e999", "."), RunTimeError);
}

TEST(Numbers, WholeNumbersRoundHalfToEven) {
    EXPECT_EQ(ToInteger(2.5), 2);
    EXPECT_EQ(ToInteger(3.5), 4);
    EXPECT_EQ(ToInteger(-2.5), -2);
    EXPECT_THROW(ToInteger(3e9), RunTimeError);
    EXPECT_TRUE(TextToBoolean(" TRUE"));
    EXPECT_TRUE(TextToBoolean("-1"));
    EXPECT_THROW(TextToBoolean("yes"), RunTimeError);
}

} // namespace
} // namespace quorvane
