// A generated mould loads in the host and has, seen through NX Open, the mix of bodies a mould
// in use has: for 100, 1,000 and 5,000 standard parts.
#include <algorithm>
#include <cctype>
#include <map>
#include <set>

#include <NXOpen/Body.hxx>
#include <NXOpen/BodyCollection.hxx>
#include <NXOpen/Layer_LayerManager.hxx>
#include <NXOpen/Part.hxx>

#include "Driver.hpp"
#include "Mould.hpp"
#include "MoldgenFixture.hpp"

namespace {

using moldgen_test::ConfigColumn;
using moldgen_test::ReadBytes;
using moldgen_test::WriteBytes;
using NXOpen::NXObject;

constexpr int kModifyColour = 186;  // "改模颜色" of the bundled configuration

// A body's string attribute (GBK); "" when it has none.
std::string Text(NXOpen::Body* body, const char* title) {
    if (!body->HasUserAttribute(title, NXObject::AttributeTypeString, -1)) return "";
    return body->GetStringUserAttribute(title, -1).GetLocaleText();
}

bool Has(NXOpen::Body* body, const char* title) { return body->HasUserAttribute(title, NXObject::AttributeTypeString, -1); }

bool FourteenDigits(const std::string& text) {
    return text.size() == 14 && std::all_of(text.begin(), text.end(), [](char c) { return std::isdigit(static_cast<unsigned char>(c)); });
}

// What the loaded work part holds, counted through NX Open.
struct Survey {
    int bodies = 0;
    int marked = 0;             // "转图标识" = "Y"
    int unmarked = 0;
    int markerOff = 0;          // a marker of another value
    int markerOnly = 0;         // marked, no other attribute
    int unnamed = 0;            // marked, no name
    int unnamedWithData = 0;    // marked, no name, other purchase data
    int namedWithoutSave = 0;   // marked and named, but not all twelve saved attributes
    int blanked = 0;            // marked and blanked
    int visibleOnly = 0;        // marked, on a visible-only layer
    int invisible = 0;          // marked, on an invisible layer
    int modifiedColour = 0;     // colour 186
    int modifiedStatus = 0;     // "状态" = "改模"
    int statusWithoutColour = 0;
    int badIdentifiers = 0;     // "标准件ID" or "组ID" not of 14 digits
    int workLayer = 0;
    std::map<std::string, int> groups;  // "组ID" -> members
    std::set<std::string> names;
    std::set<int> standardLayers;       // layers of marked bodies on selectable or work layers
    std::map<std::string, std::set<std::string>> values;  // title -> the values of marked bodies
};

Survey Look(NXOpen::Part* part) {
    static const char* const kSaved[] = {"名称", "类型", "品牌", "材质", "热处理", "供应商",
                                         "数量", "采购周期", "状态", "修改日期", "备注", "标准件ID"};
    Survey s;
    NXOpen::Layer::LayerManager* layers = part->Layers();
    s.workLayer = layers->WorkLayer();
    for (NXOpen::Body* body : *part->Bodies()) {
        ++s.bodies;
        const bool marked = Text(body, "转图标识") == "Y";
        if (!marked) {
            ++s.unmarked;
            s.markerOff += Has(body, "转图标识");
            continue;
        }
        ++s.marked;
        s.markerOnly += body->GetUserAttributes().size() == 1;
        const std::string name = Text(body, "名称");
        if (name.empty()) {
            ++s.unnamed;
            s.unnamedWithData += Has(body, "类型");
        } else {
            s.names.insert(name);
            for (const char* title : kSaved) s.namedWithoutSave += !Has(body, title) ? 1 : 0;
        }
        s.blanked += body->IsBlanked();
        const NXOpen::Layer::State state = layers->GetState(body->Layer());
        s.visibleOnly += state == NXOpen::Layer::StateVisible;
        s.invisible += state == NXOpen::Layer::StateHidden;
        if (state == NXOpen::Layer::StateWorkLayer || state == NXOpen::Layer::StateSelectable) s.standardLayers.insert(body->Layer());
        const bool colour = body->Color() == kModifyColour;
        const bool status = Text(body, "状态") == "改模";
        s.modifiedColour += colour;
        s.modifiedStatus += status;
        s.statusWithoutColour += status && !colour;
        if (Has(body, "标准件ID")) s.badIdentifiers += !FourteenDigits(Text(body, "标准件ID"));
        if (Has(body, "组ID")) {
            s.badIdentifiers += !FourteenDigits(Text(body, "组ID"));
            ++s.groups[Text(body, "组ID")];
        }
        for (const char* title : {"品牌", "材质", "热处理", "供应商", "采购周期"})
            if (!Text(body, title).empty()) s.values[title].insert(Text(body, title));
    }
    return s;
}

class MoldgenMould : public moldgen_test::ScratchTest, public ::testing::WithParamInterface<int> {
protected:
    void SetUp() override {
        ScratchTest::SetUp();
        host::ResetSession();
        moldgen::Options options;
        options.bodies = GetParam();
        options.seed = 2024;
        mould_ = moldgen::Generate(options);
        file_ = (scratch_ / "mould.part.json").string();
        WriteBytes(file_, moldgen::PartFileText(mould_));
        part_ = host::LoadWorkPart(file_);
        survey_ = Look(part_);
    }

    int Bodies() const { return GetParam(); }

    moldgen::Mould mould_;
    std::string file_;
    NXOpen::Part* part_ = nullptr;
    Survey survey_;
};

TEST_P(MoldgenMould, LoadsAsTheWorkPart) {
    ASSERT_NE(nullptr, part_) << "the host loads the file";
    EXPECT_EQ(static_cast<int>(mould_.bodies.size()), survey_.bodies) << "every body of the file is a body of the part";
    EXPECT_STREQ(("MOULD-" + std::to_string(Bodies()) + "-2024").c_str(), part_->Leaf().GetLocaleText()) << "the leaf name";
}

TEST_P(MoldgenMould, SavingTheLoadedMouldChangesNoByte) {
    const std::string saved = (scratch_ / "saved.part.json").string();
    host::SaveWorkPart(saved);
    EXPECT_EQ(ReadBytes(file_), ReadBytes(saved)) << "the generator writes the host's canonical form";
}

TEST_P(MoldgenMould, MarkedBodiesAreTheNumberAsked) {
    EXPECT_EQ(Bodies(), survey_.marked) << "--bodies counts the bodies marked \"Y\"";
}

TEST_P(MoldgenMould, PlatesAndInsertsAreNotMarked) {
    EXPECT_GE(survey_.unmarked, 11) << "plates, spacer blocks and inserts carry no marker";
    EXPECT_GE(survey_.markerOff, 1) << "an insert carries the marker switched off";
}

TEST_P(MoldgenMould, SomeCopiesCarryOnlyTheMarker) {
    EXPECT_GE(survey_.markerOnly, Bodies() * 3 / 100) << "copies made after the save are not labelled";
}

TEST_P(MoldgenMould, SomeStandardPartsAreUnnamed) {
    EXPECT_GE(survey_.unnamedWithData, 1) << "a body with a type but no name";
    EXPECT_GT(survey_.unnamed, survey_.markerOnly) << "unnamed bodies besides the unlabelled copies";
}

TEST_P(MoldgenMould, NamedBodiesCarryTheTwelveSavedAttributes) {
    EXPECT_EQ(0, survey_.namedWithoutSave) << "a saved body has every attribute saving writes";
}

TEST_P(MoldgenMould, HandMadeGroupsJoinAFewBodies) {
    EXPECT_GE(survey_.groups.size(), static_cast<size_t>(std::max(1, Bodies() / 80))) << "groups made by hand";
    for (const auto& [id, members] : survey_.groups) {
        EXPECT_GE(members, 2) << "group " << id << " joins several bodies";
        EXPECT_LE(members, 4) << "group " << id << " joins a few bodies";
    }
}

TEST_P(MoldgenMould, ModifiedBodiesHaveTheModificationColour) {
    EXPECT_GE(survey_.modifiedColour, 2) << "bodies changed for a modification";
    EXPECT_EQ(0, survey_.statusWithoutColour) << "a body saved as modified has the modification colour";
    EXPECT_EQ(survey_.modifiedColour - 1, survey_.modifiedStatus) << "one body was recoloured after the save";
}

TEST_P(MoldgenMould, SomeStandardPartsAreHidden) {
    EXPECT_GE(survey_.blanked, 1) << "blanked standard parts";
    EXPECT_GE(survey_.visibleOnly, 1) << "standard parts on a visible-only layer";
    EXPECT_GE(survey_.invisible, 1) << "standard parts on an invisible layer";
}

TEST_P(MoldgenMould, StandardPartsLieOnTheConfiguredLayers) {
    const std::vector<std::string> cells = ConfigColumn(moldgen_test::LayerTable(), "标准件图层");
    std::set<int> configured;
    for (const std::string& cell : cells) configured.insert(std::stoi(cell));
    EXPECT_EQ(1u, configured.count(survey_.workLayer)) << "the work layer is a standard-part layer";
    for (int layer : survey_.standardLayers) EXPECT_EQ(1u, configured.count(layer)) << "layer " << layer << " is configured";
}

TEST_P(MoldgenMould, NamesFollowTheConfigurationWithSomeOutsideTheNameOrder) {
    const std::vector<std::string> listed = ConfigColumn(moldgen_test::StdPartTable(), "标准件名称");
    const std::vector<std::string> order = ConfigColumn(moldgen_test::StdPartTable(), "标准件名称顺序");
    int outsideOrder = 0;
    for (const std::string& name : survey_.names) {
        const bool isListed = std::find(listed.begin(), listed.end(), name) != listed.end();
        EXPECT_TRUE(isListed || name == "回针") << "a configured name, or the return pins that the configuration lacks";
        outsideOrder += std::find(order.begin(), order.end(), name) == order.end();
    }
    EXPECT_GE(outsideOrder, 2) << "purchase lines named outside the configured name order";
    EXPECT_GE(survey_.names.size(), 10u) << "many kinds of standard parts";
}

TEST_P(MoldgenMould, PurchaseDataAreConfiguredValues) {
    const std::pair<const char*, const char*> columns[] = {{"品牌", "标准件品牌"}, {"材质", "标准件材质"}, {"热处理", "标准件热处理"},
                                                            {"供应商", "标准件供应商"}, {"采购周期", "标准件采购周期"}};
    for (const auto& [title, column] : columns) {
        const std::vector<std::string> configured = ConfigColumn(moldgen_test::StdPartTable(), column);
        for (const std::string& value : survey_.values[title])
            EXPECT_NE(configured.end(), std::find(configured.begin(), configured.end(), value)) << "a value of the configured " << column;
    }
}

TEST_P(MoldgenMould, IdentifiersAreTimestampsOfFourteenDigits) {
    EXPECT_EQ(0, survey_.badIdentifiers) << "month, day, hour, minute, second, milliseconds";
}

INSTANTIATE_TEST_SUITE_P(Sizes, MoldgenMould, ::testing::Values(100, 1000, 5000),
                         [](const ::testing::TestParamInfo<int>& info) { return "Bodies" + std::to_string(info.param); });

// The geometry, from the generated model.

class MoldgenGeometry : public ::testing::TestWithParam<int> {
protected:
    void SetUp() override {
        moldgen::Options options;
        options.bodies = GetParam();
        options.seed = 2024;
        mould_ = moldgen::Generate(options);
        for (const moldgen::Body& body : mould_.bodies) {
            const std::string* marker = body.Find(u8"转图标识");
            if (marker != nullptr && *marker == "Y") standard_.push_back(&body);
        }
    }

    moldgen::Mould mould_;
    std::vector<const moldgen::Body*> standard_;
};

TEST_P(MoldgenGeometry, UnlabelledCopiesAreCopiesOfALabelledBody) {
    int copies = 0;
    for (const moldgen::Body* body : standard_) {
        if (body->attributes.size() != 1) continue;
        copies += std::any_of(standard_.begin(), standard_.end(), [&](const moldgen::Body* other) {
            return other->Find(u8"名称") != nullptr && other->solid == body->solid;
        });
    }
    EXPECT_GE(copies, GetParam() * 3 / 100) << "a copy made after the save is the same solid as a labelled body";
}

TEST_P(MoldgenGeometry, NoTwoStandardPartsSitAtTheSamePlace) {
    std::set<std::array<moldgen::Tenths, 3>> places;
    for (const moldgen::Body* body : standard_) EXPECT_TRUE(places.insert(body->at).second) << "body " << body->tag;
}

TEST_P(MoldgenGeometry, ManyCopiesAreTurnedNotOnlyMoved) {
    const auto turned = std::count_if(standard_.begin(), standard_.end(), [](const moldgen::Body* body) {
        return body->rotate != std::array<int, 3>{0, 0, 0};
    });
    EXPECT_GE(turned, GetParam() / 5) << "screws, pins and nipples are rotated copies";
}

TEST_P(MoldgenGeometry, TagsIncreaseInPartOrder) {
    for (size_t i = 1; i < mould_.bodies.size(); ++i)
        EXPECT_LT(mould_.bodies[i - 1].tag, mould_.bodies[i].tag) << "tags are unique, in creation order";
}

INSTANTIATE_TEST_SUITE_P(Sizes, MoldgenGeometry, ::testing::Values(100, 1000, 5000),
                         [](const ::testing::TestParamInfo<int>& info) { return "Bodies" + std::to_string(info.param); });

}  // namespace
