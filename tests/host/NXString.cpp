// NXString: locale (GBK) and UTF-8 text, conversions, concatenation, and the NX 8.5 behaviour
// the plug-in's tree editing relies on.
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include <NXOpen/NXString.hxx>

namespace {

using NXOpen::NXString;

const char kGbkName[] = "名称";           // GBK: narrow literals are GBK at run time
const char kUtf8Name[] = u8"名称";        // the same two characters in UTF-8
const char kUtf8Emoji[] = u8"A\U0001F600";  // no GBK form

TEST(NXString, DefaultIsEmptyLocaleText) {
    NXString s;
    EXPECT_EQ(NXString::Locale, s.GetMode()) << "NX: a default NXString is locale text";
    EXPECT_STREQ("", s.GetText()) << "NX: a default NXString is empty";
}

TEST(NXString, ConstructorDefaultsToLocaleMode) {
    NXString s(kGbkName);
    EXPECT_EQ(NXString::Locale, s.GetMode()) << "NX: text without a mode is locale text";
}

TEST(NXString, GetTextReturnsTheBytesAsGiven) {
    EXPECT_STREQ(kGbkName, NXString(kGbkName, NXString::Locale).GetText()) << "NX: GetText gives the bytes as passed";
    EXPECT_STREQ(kUtf8Name, NXString(kUtf8Name, NXString::UTF8).GetText()) << "NX: GetText gives the bytes as passed";
}

TEST(NXString, LocaleTextConvertsToUtf8) {
    NXString s(kGbkName, NXString::Locale);
    EXPECT_STREQ(kUtf8Name, s.GetUTF8Text()) << "NX: GetUTF8Text converts locale text to UTF-8";
    EXPECT_STREQ(kGbkName, s.GetLocaleText()) << "NX: GetLocaleText of locale text is the text itself";
}

TEST(NXString, Utf8TextConvertsToLocale) {
    NXString s(kUtf8Name, NXString::UTF8);
    EXPECT_STREQ(kGbkName, s.GetLocaleText()) << "NX: GetLocaleText converts UTF-8 to the code page (GBK)";
    EXPECT_STREQ(kUtf8Name, s.GetUTF8Text()) << "NX: GetUTF8Text of UTF-8 text is the text itself";
}

// Host choice: the other side is converted once and kept, so its pointer stays valid and the
// same while the string is unchanged (NX says only that the string owns the text).
TEST(NXString, ConvertedTextIsMadeOnceAndKept) {
    NXString locale(kGbkName, NXString::Locale);
    const char* utf8 = locale.GetUTF8Text();
    EXPECT_EQ(utf8, locale.GetUTF8Text()) << "host choice: a second GetUTF8Text gives the same buffer";
    NXString utf8Text(kUtf8Name, NXString::UTF8);
    const char* gbk = utf8Text.GetLocaleText();
    EXPECT_EQ(gbk, utf8Text.GetLocaleText()) << "host choice: a second GetLocaleText gives the same buffer";
}

TEST(NXString, StdStringConstructorTakesTheSameBytes) {
    NXString s(std::string(kUtf8Name), NXString::UTF8);
    EXPECT_STREQ(kGbkName, s.GetLocaleText()) << "NX: the std::string constructor behaves as the char one";
}

// NX 8.5 hands the text of an edited tree cell to the plug-in as a Locale string that holds
// UTF-8 bytes; GetLocaleText returns them unconverted, so the plug-in converts them itself.
TEST(NXString, LocaleStringHoldingUtf8BytesReturnsThemUnchangedFromGetLocaleText) {
    NXString edited(kUtf8Name, NXString::Locale);
    EXPECT_STREQ(kUtf8Name, edited.GetLocaleText()) << "NX 8.5: the edited text arrives as UTF-8 bytes";
}

// Host choice: a character without a GBK form becomes "?", as Windows' own conversion does.
TEST(NXString, CharacterWithoutGbkFormBecomesQuestionMarkInLocaleText) {
    NXString s(kUtf8Emoji, NXString::UTF8);
    EXPECT_STREQ("A?", s.GetLocaleText()) << "host choice: an unrepresentable character becomes ?";
}

TEST(NXString, PlusOfTwoLocaleStringsIsLocale) {
    NXString sum = NXString("A") + NXString(kGbkName);
    EXPECT_EQ(NXString::Locale, sum.GetMode()) << "NX: locale + locale is locale";
    EXPECT_EQ(std::string("A") + kGbkName, sum.GetLocaleText()) << "NX: concatenation keeps both texts";
}

TEST(NXString, PlusWithAUtf8SideIsUtf8) {
    NXString sum = NXString(kGbkName) + NXString(kUtf8Name, NXString::UTF8);
    EXPECT_EQ(NXString::UTF8, sum.GetMode()) << "NX: the result is UTF-8 when either side is";
    EXPECT_EQ(std::string(kUtf8Name) + kUtf8Name, sum.GetUTF8Text()) << "NX: both sides are joined as UTF-8";
}

TEST(NXString, PlusWithPlainTextTakesItAsLocaleText) {
    NXString right = NXString(kUtf8Name, NXString::UTF8) + kGbkName;
    EXPECT_EQ(std::string(kUtf8Name) + kUtf8Name, right.GetUTF8Text()) << "NX: plain text on the right is locale text";
    NXString left = kGbkName + NXString(kUtf8Name, NXString::UTF8);
    EXPECT_EQ(std::string(kUtf8Name) + kUtf8Name, left.GetUTF8Text()) << "NX: plain text on the left is locale text";
}

TEST(NXString, AppendKeepsThisStringsMode) {
    NXString s(kUtf8Name, NXString::UTF8);
    s += NXString(kGbkName);
    s += kGbkName;
    EXPECT_EQ(NXString::UTF8, s.GetMode()) << "NX: += keeps the mode of the string appended to";
    EXPECT_EQ(std::string(kUtf8Name) + kUtf8Name + kUtf8Name, s.GetText()) << "NX: appended text is converted to it";
}

TEST(NXString, AppendingToItselfDoublesTheText) {
    NXString s(kGbkName);
    s += s;
    EXPECT_EQ(std::string(kGbkName) + kGbkName, s.GetLocaleText()) << "NX: s += s appends a copy";
}

TEST(NXString, CopyKeepsTextAndMode) {
    NXString original(kUtf8Name, NXString::UTF8);
    NXString copy(original);
    NXString assigned;
    assigned = original;
    EXPECT_EQ(NXString::UTF8, copy.GetMode()) << "NX: a copy keeps the mode";
    EXPECT_STREQ(kGbkName, copy.GetLocaleText()) << "NX: a copy keeps the text";
    EXPECT_EQ(NXString::UTF8, assigned.GetMode()) << "NX: assignment keeps the mode";
    EXPECT_STREQ(kUtf8Name, assigned.GetText()) << "NX: assignment keeps the text";
}

TEST(NXString, OldGetterNamesGiveTheSame) {
    NXString s(kUtf8Name, NXString::UTF8);
    EXPECT_EQ(s.GetMode(), s.getMode()) << "NX: getMode is the old name of GetMode";
    EXPECT_STREQ(s.GetText(), s.getText()) << "NX: getText is the old name of GetText";
    EXPECT_STREQ(s.GetLocaleText(), s.getLocaleText()) << "NX: getLocaleText is the old name";
    EXPECT_STREQ(s.GetUTF8Text(), s.getUTF8Text()) << "NX: getUTF8Text is the old name";
}

// Host choice: a NULL pointer is taken as empty text.
TEST(NXString, NullPointerIsEmptyText) {
    NXString s(static_cast<const char*>(nullptr));
    EXPECT_STREQ("", s.GetText()) << "host choice: NULL is empty text";
}

}  // namespace
