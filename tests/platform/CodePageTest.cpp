// Code-page conversions: UTF-8 and wide text to and from the system code page (GBK), with the
// replacements Windows code page 936 makes. Narrow literals here are GBK, u8 literals UTF-8.

#include "platform/CodePage.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_literals;

TEST(Utf8ToAnsi, ChineseBecomesGbk) {
    EXPECT_EQ("标准件BOM"s, platform::Utf8ToAnsi(u8"标准件BOM"));
    EXPECT_EQ("\xB1\xEA"s, platform::Utf8ToAnsi(u8"标"));
}

TEST(Utf8ToAnsi, AsciiAndEmptyStayAsTheyAre) {
    EXPECT_EQ("M8x20, 12.9", platform::Utf8ToAnsi("M8x20, 12.9"));
    EXPECT_EQ("", platform::Utf8ToAnsi(""));
}

TEST(Utf8ToAnsi, EuroSignIsByte80AsInCodePage936) {
    EXPECT_EQ("\x80"s, platform::Utf8ToAnsi(u8"\u20AC"));
}

TEST(Utf8ToAnsi, CharacterOutsideGbkBecomesQuestionMark) {
#ifdef _WIN32
    GTEST_SKIP() << "Windows' WideCharToMultiByte gives one \"?\" per UTF-16 unit: U+1F600 becomes \"??\" (seen under Wine)";
#endif
    EXPECT_EQ("a?b", platform::Utf8ToAnsi(u8"a\u0E01b"));
    EXPECT_EQ("?", platform::Utf8ToAnsi(u8"\U0001F600"));
}

TEST(Utf8ToAnsi, InvalidUtf8BecomesQuestionMark) {
    EXPECT_EQ("a?b", platform::Utf8ToAnsi("a\x80" "b"));
    EXPECT_EQ("?", platform::Utf8ToAnsi("\xFF"));
    EXPECT_EQ("a?", platform::Utf8ToAnsi("a\xE6\xA0"));  // cut short at the end
}

TEST(Utf8ToAnsi, ByteThatBreaksASequenceStartsTheNextCharacter) {
    EXPECT_EQ("?A", platform::Utf8ToAnsi("\xE6\xA0" "A"));
    EXPECT_EQ("?件"s, platform::Utf8ToAnsi("\xE6" u8"件"));
}

TEST(Utf8ToAnsi, OverlongFormsAndSurrogatesAreInvalid) {
#ifdef _WIN32
    GTEST_SKIP() << "Windows' MultiByteToWideChar replaces ED A0 80 by two characters and F4 90 80 80 by three (seen under Wine)";
#endif
    EXPECT_EQ("??", platform::Utf8ToAnsi("\xC0\xAF"));
    EXPECT_EQ("???", platform::Utf8ToAnsi("\xED\xA0\x80"));
    EXPECT_EQ("????", platform::Utf8ToAnsi("\xF4\x90\x80\x80"));
}

TEST(Utf8ToAnsi, ResultEndsAtFirstNul) {
    EXPECT_EQ("ab", platform::Utf8ToAnsi("ab\0cd"s));
    EXPECT_EQ("", platform::Utf8ToAnsi("\0cd"s));
}

TEST(Utf8ToAnsi, GbkInputIsNotPassedThrough) {
    // Text that already is GBK is not valid UTF-8: the conversion is applied regardless.
    EXPECT_EQ("??", platform::Utf8ToAnsi("\xB1\xEA"));
}

TEST(AnsiToUtf8, ChineseRoundTrip) {
    const std::string gbk = "内六角螺钉,顶针,导柱,导套";
    EXPECT_EQ(u8"内六角螺钉,顶针,导柱,导套"s, platform::AnsiToUtf8(gbk));
    EXPECT_EQ(gbk, platform::Utf8ToAnsi(platform::AnsiToUtf8(gbk)));
}

TEST(AnsiToUtf8, UndecodableByteBecomesReplacementCharacter) {
#ifdef _WIN32
    GTEST_SKIP() << "code page 936 of Windows maps byte FF to U+F8F5 and a lead byte at the end to \"?\" (seen under Wine)";
#endif
    EXPECT_EQ(u8"a\uFFFDb"s, platform::AnsiToUtf8("a\xFF" "b"));
    EXPECT_EQ(u8"a\uFFFD"s, platform::AnsiToUtf8("a\x81"));  // lead byte at the end
}

TEST(AnsiToUtf8, AsciiAfterStrayLeadByteSurvives) {
#ifdef _WIN32
    GTEST_SKIP() << "Windows' MultiByteToWideChar takes 81 30 as one undecodable character \"?\" (seen under Wine)";
#endif
    EXPECT_EQ(u8"\uFFFD0"s, platform::AnsiToUtf8("\x81" "0"));
}

TEST(AnsiToWide, ChineseBecomesWideCharacters) {
    EXPECT_EQ(L"模具标准件申购表.xls", platform::AnsiToWide("模具标准件申购表.xls"));
}

TEST(AnsiToWide, UndecodableByteBecomesReplacementCharacter) {
#ifdef _WIN32
    GTEST_SKIP() << "code page 936 of Windows maps byte FF to U+F8F5 (seen under Wine)";
#endif
    EXPECT_EQ(L"a\uFFFDb", platform::AnsiToWide("a\xFF" "b"));
}

TEST(AnsiToWide, StopsAtFirstNulAsMbstowcs) {
    EXPECT_EQ(L"ab", platform::AnsiToWide("ab\0cd"s));
}

TEST(AnsiToWide, EmptyStaysEmpty) {
    EXPECT_EQ(L"", platform::AnsiToWide(""));
}

}  // namespace
