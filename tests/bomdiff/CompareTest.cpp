// The comparison's rules on BOMs built in memory: quantities, trimming, sums and the identity.
#include <gtest/gtest.h>

#include "Compare.hpp"

using namespace bomdiff;

namespace {

BomLine Line(const std::string& name, const std::string& model, const std::string& quantity,
             const std::string& supplier = "", const std::string& brand = u8"盘起") {
    BomLine line;
    line.fields[kName] = name;
    line.fields[kModel] = model;
    line.fields[kBrand] = brand;
    line.fields[kQuantity] = quantity;
    line.fields[kSupplier] = supplier;
    return line;
}

}  // namespace

TEST(BomdiffCompare, QuantitiesAreWholeNumbersInAsciiOrFullWidthDigits) {
    EXPECT_EQ(ParseQuantity(u8"１２").number, 12);
    EXPECT_EQ(ParseQuantity(u8"\u3000 0７ ").number, 7);
    EXPECT_EQ(ParseQuantity(u8"１２").text, "12");
    for (const char* text : {"", "5.0", "-3", u8"若干", u8"2套", "1234567890123456"}) {
        EXPECT_FALSE(ParseQuantity(text).number) << text;
        EXPECT_EQ(ParseQuantity(text).text, Trimmed(text)) << text;
    }
}

TEST(BomdiffCompare, TrimmedTakesBlanksAndIdeographicSpacesOffBothEnds) {
    EXPECT_EQ(Trimmed(u8"\u3000 导柱\t\u3000\r\n"), u8"导柱");
    EXPECT_EQ(Trimmed(u8"导 柱"), u8"导 柱");
    EXPECT_EQ(Trimmed(u8"\u3000"), "");
    EXPECT_EQ(Trimmed(""), "");
}

TEST(BomdiffCompare, RowsOfOneIdentityAreOneLineWithTheirQuantitiesAdded) {
    Bom older, newer;
    older.lines = {Line(u8"顶针", u8"Φ3×100", "4", "A"), Line(u8" 顶针", u8"Φ3×100 ", u8"２", "B")};
    newer.lines = {Line(u8"顶针", u8"Φ3×100", "6", "A"), Line(u8"顶针", u8"Φ3×100", "1", "A", u8"龙记"),
                   Line(u8"弹簧", "", u8"若干"), Line(u8"弹簧", "", "3")};
    older.lines.push_back(Line(u8"弹簧", "", "2"));
    const Comparison c = Compare(older, newer, false);
    ASSERT_EQ(c.changes.size(), 3u);
    EXPECT_EQ(c.changes[0].kind, Kind::Added);  // another brand: another line
    EXPECT_EQ(c.changes[0].line.fields[kBrand], u8"龙记");
    EXPECT_EQ(c.changes[1].kind, Kind::Quantity);  // 若干+3 against 2: compared as text
    EXPECT_EQ(c.changes[1].newQuantity, u8"若干+3");
    EXPECT_FALSE(c.changes[1].difference);
    EXPECT_EQ(c.changes[2].kind, Kind::Changed);  // 4 + 2 = 6, supplier "A、B" became "A"
    EXPECT_EQ(c.changes[2].oldQuantity, "6");
    ASSERT_EQ(c.changes[2].fields.size(), 1u);
    EXPECT_EQ(c.changes[2].fields[0].before, u8"A、B");
    EXPECT_EQ(c.changes[2].fields[0].after, "A");
    EXPECT_EQ(c.unchanged, 0);
    EXPECT_FALSE(c.differentMoulds);
}
