// Collecting the standard parts of the work part: which bodies are candidates, which are marked,
// the record of each body, and the timestamp identifier.

#include "StdPartsFixture.hpp"

#include "stdparts/StdPartCollection.h"

using namespace stdparts_test;

namespace {

class StdPartCollection : public StdPartsFixture {
protected:
    // The records of the given bodies, made by the dialog object.
    std::vector<StandardPartParam> Records(Vornadel& dialog, const std::vector<unsigned>& tags)
    {
        std::vector<NXOpen::Body*> bodies;
        for (unsigned tag : tags)
            bodies.push_back(Body(tag));
        return dialog.GetStdPartParams(bodies, dialog.stdPartConfig.nameOrder);
    }
};

TEST_F(StdPartCollection, BodiesOnTheWorkAndSelectableLayersAreCollectedInPartOrder)
{
    PartBody selectable{1002, Marked()};
    selectable.layer = 62;
    PartBody plain{1003, {}};
    plain.layer = 5;
    LoadBodies({{1001, Marked()}, selectable, plain});
    Vornadel dialog;
    EXPECT_EQ((std::vector<unsigned>{1001, 1002, 1003}), Tags(CollectWorkPartBodies(dialog)))
        << "the mark plays no part in the collection";
}

TEST_F(StdPartCollection, BlankedBodyIsNeverCollectedEvenWhenMarked)
{
    PartBody blanked{1002, Marked()};
    blanked.blanked = true;
    LoadBodies({{1001, Marked()}, blanked});
    Vornadel dialog;
    EXPECT_EQ(std::vector<unsigned>{1001}, Tags(CollectWorkPartBodies(dialog)));
}

TEST_F(StdPartCollection, BodyOnAVisibleOnlyLayerIsNeverCollected)
{
    PartBody visible{1002, Marked()};
    visible.layer = 20;
    LoadBodies({{1001, Marked()}, visible}, 61, {{20, "visible"}});
    Vornadel dialog;
    EXPECT_EQ(std::vector<unsigned>{1001}, Tags(CollectWorkPartBodies(dialog)));
}

TEST_F(StdPartCollection, BodyOnAHiddenLayerIsNeverCollected)
{
    PartBody hidden{1002, Marked()};
    hidden.layer = 30;
    LoadBodies({{1001, Marked()}, hidden}, 61, {{30, "invisible"}});
    Vornadel dialog;
    EXPECT_EQ(std::vector<unsigned>{1001}, Tags(CollectWorkPartBodies(dialog)));
}

TEST_F(StdPartCollection, OnlyBodiesMarkedExactlyYAreStandardParts)
{
    LoadBodies({{1001, Marked()}, {1002, {{"转图标识", "N"}}}, {1003, {{"转图标识", ""}}}, {1004, {}},
                {1005, {{"转图标识", "y"}}}, {1006, {{"转图标识", "Y "}}}, {1007, {{"转图标识", "YY"}}},
                {1008, Marked()}});
    Vornadel dialog;
    EXPECT_EQ((std::vector<unsigned>{1001, 1008}), Tags(KeepStdPartBodies(CollectWorkPartBodies(dialog))));
}

TEST_F(StdPartCollection, UnmarkedBodyOnTheWorkLayerYieldsNoTreeRow)
{
    LoadBodies({{1001, {{"名称", "型芯镶件"}}}});
    EXPECT_TRUE(FirstDisplayRows().empty());
}

TEST_F(StdPartCollection, EmptyBodyListGivesNoRecords)
{
    Vornadel dialog;
    EXPECT_TRUE(Records(dialog, {}).empty());
}

TEST_F(StdPartCollection, RecordHoldsEveryAttributeOfItsBody)
{
    LoadBodies({{1001, Marked({{"名称", "顶针"}, {"类型", "Φ4×200"}, {"品牌", "米思米"}, {"材质", "SKD61"},
                               {"热处理", "淬火"}, {"供应商", "米思米中国"}, {"数量", "6"}, {"采购周期", "3天"},
                               {"备注", "加长"}, {"状态", "正常"}, {"修改日期", "2024-05-18"},
                               {"组ID", "05181420330017"}, {"标准件ID", "05201030150001"}})}});
    Vornadel dialog;
    std::vector<StandardPartParam> records = Records(dialog, {1001});
    ASSERT_EQ(1u, records.size());
    const StandardPartParam& r = records[0];
    EXPECT_EQ(Body(1001), r.bodyInfo->GetBody());
    EXPECT_EQ("顶针", r.name);
    EXPECT_EQ("Φ4×200", r.type);
    EXPECT_EQ("米思米", r.brand);
    EXPECT_EQ("SKD61", r.material);
    EXPECT_EQ("淬火", r.heatTreatment);
    EXPECT_EQ("米思米中国", r.supplier);
    EXPECT_EQ(6, r.quantity);
    EXPECT_EQ("3天", r.leadTime);
    EXPECT_EQ("加长", r.remark);
    EXPECT_EQ("正常", r.status);
    EXPECT_EQ("2024-05-18", r.modifyDate);
    EXPECT_EQ("05181420330017", r.groupId);
    EXPECT_EQ("05201030150001", r.stdPartId) << "an identifier the body has is kept";
    EXPECT_EQ(1, r.nameOrderIndex) << "顶针 is second in the configured name order";
}

TEST_F(StdPartCollection, RecordsFollowTheBodyOrder)
{
    LoadBodies({{1001, Marked()}, {1002, Marked()}, {1003, Marked()}});
    Vornadel dialog;
    std::vector<StandardPartParam> records = Records(dialog, {1003, 1001, 1002});
    ASSERT_EQ(3u, records.size());
    EXPECT_EQ(Body(1003), records[0].bodyInfo->GetBody());
    EXPECT_EQ(Body(1001), records[1].bodyInfo->GetBody());
    EXPECT_EQ(Body(1002), records[2].bodyInfo->GetBody());
}

TEST_F(StdPartCollection, QuantityTwelveFollowedByLettersReadsTwelve)
{
    LoadBodies({{1001, Marked({{"数量", "12pcs"}})}});
    Vornadel dialog;
    EXPECT_EQ(12, Records(dialog, {1001})[0].quantity);
}

TEST_F(StdPartCollection, MissingQuantityReadsZero)
{
    LoadBodies({{1001, Marked()}});
    Vornadel dialog;
    EXPECT_EQ(0, Records(dialog, {1001})[0].quantity);
}

TEST_F(StdPartCollection, QuantityNotStartingWithANumberReadsZero)
{
    LoadBodies({{1001, Marked({{"数量", "四个"}})}});
    Vornadel dialog;
    EXPECT_EQ(0, Records(dialog, {1001})[0].quantity);
}

TEST_F(StdPartCollection, IntegerQuantityAttributeCountsAsMissing)
{
    LoadBodies({{1001, Marked({{"数量", Json{{"integer", 4}}}})}});
    Vornadel dialog;
    EXPECT_EQ(0, Records(dialog, {1001})[0].quantity);
}

TEST_F(StdPartCollection, BodyWithoutAttributesGivesAnEmptyRecordWithAFreshIdentifier)
{
    host::PinClock({2024, 11, 3, 9, 5, 7, 42});
    LoadBodies({{1001, {}}});
    Vornadel dialog;
    const StandardPartParam r = Records(dialog, {1001})[0];
    EXPECT_EQ("", r.name);
    EXPECT_EQ("", r.type);
    EXPECT_EQ("", r.status);
    EXPECT_EQ("", r.groupId);
    EXPECT_EQ(0, r.quantity);
    EXPECT_EQ("11030905070042", r.stdPartId);
    EXPECT_EQ(99999, r.nameOrderIndex);
}

TEST_F(StdPartCollection, NewIdentifierIsNotWrittenToTheBody)
{
    LoadBodies({{1001, Marked()}});
    Vornadel dialog;
    Records(dialog, {1001});
    EXPECT_FALSE(Body(1001)->HasUserAttribute("标准件ID", NXOpen::NXObject::AttributeTypeString, -1))
        << "the identifier reaches the body only when the attributes are saved";
}

TEST_F(StdPartCollection, NameMissingFromTheConfiguredOrderGets99999)
{
    LoadBodies({{1001, Marked({{"名称", "弹簧"}})}, {1002, Marked({{"名称", "内六角螺钉"}})}});
    Vornadel dialog;
    std::vector<StandardPartParam> records = Records(dialog, {1001, 1002});
    EXPECT_EQ(99999, records[0].nameOrderIndex);
    EXPECT_EQ(0, records[1].nameOrderIndex);
}

TEST_F(StdPartCollection, ModificationColourGivesStatusGaiMoWhateverTheAttributeSays)
{
    PartBody modified{1001, Marked({{"状态", "正常"}})};
    modified.color = 186;
    LoadBodies({modified, {1002, Marked({{"状态", "正常"}})}});
    Vornadel dialog;
    std::vector<StandardPartParam> records = Records(dialog, {1001, 1002});
    EXPECT_EQ("改模", records[0].status) << "colour 186 is the configured modification colour";
    EXPECT_EQ("正常", records[1].status);
}

TEST_F(StdPartCollection, StatusGaiMoWithoutTheColourIsKeptAsRead)
{
    LoadBodies({{1001, Marked({{"状态", "改模"}})}});
    Vornadel dialog;
    EXPECT_EQ("改模", Records(dialog, {1001})[0].status);
}

TEST_F(StdPartCollection, TimestampIdIsMonthDayTimeAndMillisecondsWithoutTheYear)
{
    host::PinClock({2031, 11, 3, 9, 5, 7, 42});
    EXPECT_EQ("11030905070042", MakeTimestampId());
}

TEST_F(StdPartCollection, TimestampIdHasFourteenDigitsAtTheEndOfTheYear)
{
    host::PinClock({2024, 12, 31, 23, 59, 59, 999});
    EXPECT_EQ("12312359590999", MakeTimestampId());
}

TEST_F(StdPartCollection, TwoUnnamedBodiesInOneMillisecondShareAnIdentifier)
{
    host::PinClock({2024, 5, 20, 10, 30, 15, 1});
    LoadBodies({{1001, Marked()}, {1002, Marked()}});
    Vornadel dialog;
    std::vector<StandardPartParam> records = Records(dialog, {1001, 1002});
    EXPECT_EQ("05201030150001", records[0].stdPartId);
    EXPECT_EQ(records[0].stdPartId, records[1].stdPartId) << "no uniqueness check is made";
}

TEST_F(StdPartCollection, IsCreateStdPartNodeIsTrueForAnEmptyList)
{
    LoadBodies({{1001, Marked()}});
    Vornadel dialog;
    BodyInfo info(Body(1001));
    std::vector<BodyInfo*> placed;
    EXPECT_TRUE(dialog.IsCreateStdPartNode(&info, placed));
}

TEST_F(StdPartCollection, IsCreateStdPartNodeComparesBodiesNotWrappers)
{
    LoadBodies({{1001, Marked()}, {1002, Marked()}});
    Vornadel dialog;
    BodyInfo info(Body(1001));
    BodyInfo sameBody(Body(1001));
    BodyInfo other(Body(1002));
    std::vector<BodyInfo*> placed = {&other};
    EXPECT_TRUE(dialog.IsCreateStdPartNode(&info, placed)) << "another body, even an identical solid";
    placed.push_back(&sameBody);
    EXPECT_FALSE(dialog.IsCreateStdPartNode(&info, placed)) << "another wrapper of the same body";
}

}  // namespace
