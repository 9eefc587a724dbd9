// dialog/Vornadel.dlx held against the form NX 8.5 writes (host/src/ui/DlxRules.tsv, read from
// the NX 8.5 SDK's own dialog files), and the check itself on copies that break one rule each.
#include <fstream>
#include <sstream>

#include "UiFixture.hpp"
#include "ui/DlxRules.hpp"

namespace {

using host::ui::CheckNxForm;
using host::ui::DlxError;
using host::ui::DlxRules;

std::string DialogText() {
    std::ifstream in(UiSourceDir() / "dialog" / "Vornadel.dlx", std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string Lines(const std::vector<std::string>& problems) {
    std::string all;
    for (const std::string& p : problems) all += "\n  " + p;
    return all;
}

TEST(DlxForm, TheDialogFileHasTheFormNX85Writes) {
    std::string text = DialogText();
    ASSERT_FALSE(text.empty()) << "dialog/Vornadel.dlx is readable";
    std::vector<std::string> problems = CheckNxForm(text, "Vornadel.dlx");
    EXPECT_TRUE(problems.empty()) << "differences from NX 8.5's form:" << Lines(problems);
}

// A copy of the dialog file with the first occurrence of from replaced by to.
std::string With(const std::string& from, const std::string& to) {
    std::string text = DialogText();
    size_t at = text.find(from);
    if (at == std::string::npos) ADD_FAILURE() << "the dialog file has no " << from;
    else text.replace(at, from.size(), to);
    return text;
}

TEST(DlxForm, EachBreakOfNXsFormIsFound) {
    const char* const cases[][3] = {
        {"mask=\"16640\" name=\"IsIti\"", "mask=\"16384\" name=\"IsIti\"", "lacks the changed flag 256"},
        {"mask=\"256\" name=\"SortRootNodes\"", "mask=\"0\" name=\"SortRootNodes\"", "lacks the changed flag 256"},
        {"<Property id=\"StepStatus\"",
         "<Property id=\"Translated\" mask=\"16640\" name=\"Translated\" type=\"logical\" group=\"Other::\" sname=\"Localize\" "
         "value=\"False\" source=\"1\" ClassID=\"UGS::UICOMP_widget\" hierarchy=\"UGS::UI::Comp::BodySelect\"/><Property id=\"StepStatus\"",
         "NX 8.5 has no such property for UGS::UI::Comp::BodySelect"},
        {"ClassID=\"UGS::UI::Comp::BodySelect\" dynamic=\"0\" selected=\"1\"", "ClassID=\"UGS::UICOMP_selection\" dynamic=\"0\" selected=\"1\"",
         "ClassID is \"UGS::UICOMP_selection\""},
        {"<Property id=\"API Name\" mask=\"16400\"", "<Property mask=\"16400\" id=\"API Name\"", "attribute id comes after mask"},
        {"value=\"True\"", "value=\"Yes\"", "is not True or False"},
        {"mask=\"16656\"", "mask=\"16x\"", "is not a decimal number"},
        {"selected=\"3\"", "selected=\"9\"", "none of NX's options"},
        {"english 17", "simplified chinese 936", "languageInfo"},
        {"NX=\"8.5.0\"", "NX=\"8.0.0\"", "the dialog's NX"},
        {"creator=\"vornadel\"", "creator=\"\"", "the dialog's creator"},
        {"><item", ">\n <item", "several lines"},
        {"hierarchy=\"UGS::UICOMP_group\" presentation=\"String\"", "hierarchy=\"\" presentation=\"String\"", "hierarchy is not the container's class"},
        {"class=\"UICOMP_string\" notes", "class=\"UGS::UICOMP_string\" notes", "is not written so by NX"},
    };
    for (const auto& c : cases) {
        std::vector<std::string> problems = CheckNxForm(With(c[0], c[1]), "Vornadel.dlx");
        std::string all = Lines(problems);
        EXPECT_NE(std::string::npos, all.find(c[2])) << "replacing " << c[0] << " by " << c[1] << " is found; got:" << all;
    }
}

TEST(DlxForm, TextThatIsNoDialogFileIsRefusedWithAMessage) {
    try {
        CheckNxForm("<Dialog><item>", "Broken.dlx");
        ADD_FAILURE() << "an unclosed element is refused";
    } catch (const DlxError& e) {
        EXPECT_NE(std::string::npos, std::string(e.what()).find("Broken.dlx")) << e.what();
    }
}

TEST(DlxRulesTable, EveryRowNamesTheFileItWasReadFrom) {
    const DlxRules& rules = DlxRules::Nx85();
    EXPECT_LT(200u, rules.properties.size()) << "the table holds the property sets of the seven block classes";
    EXPECT_EQ(7u, rules.classes.size()) << "one class row per block class the host builds";
    for (const auto& p : rules.properties) EXPECT_FALSE(p.evidence.empty()) << p.itemClass << " " << p.id;
    ASSERT_NE(nullptr, rules.Property("UICOMP_string", "IsIti"));
    EXPECT_EQ("False", rules.Property("UICOMP_string", "IsIti")->defaultValue) << "SNAP/Dialog/String.dlx: NX's default";
    EXPECT_EQ("True", rules.Property("UICOMP_tree_control", "SortRootNodes")->defaultValue) << "TreeListDemo.dlx: NX's default";
    EXPECT_EQ(nullptr, rules.Property("UGS::UI::Comp::BodySelect", "Translated")) << "no NX file has it on a body collector";
}

TEST(DlxRulesTable, MalformedRowsAreRefusedWithTheirLine) {
    const char* const cases[][2] = {
        {"# comment\nproperty\tUICOMP_button\tTitle\n", "t.tsv:2: property rows have 13 columns"},
        {"order\titem\tid name\t\n", "t.tsv:1: the row names no file"},
        {"colour\tred\tfile\n", "t.tsv:1: unknown row kind"},
        {"property\tc\tp\ts\tlogical\tg\tC\th\t1\t12a\tTrue\t-\tf\n", "t.tsv:1: the mask \"12a\""},
        {"property\tc\tp\ts\tenum\tg\tC\th\t1\t0\t0\tA=0|B\tf\n", "t.tsv:1: the option \"B\""},
    };
    for (const auto& c : cases) {
        try {
            DlxRules::Parse(c[0], "t.tsv");
            ADD_FAILURE() << "refused: " << c[0];
        } catch (const DlxError& e) {
            EXPECT_NE(std::string::npos, std::string(e.what()).find(c[1])) << e.what();
        }
    }
}

}  // namespace
