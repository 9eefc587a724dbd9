// Part files: the canonical form round-trips byte for byte, other spellings load to the same
// model, a save writes what the plug-in changed, and every malformed file gives a message that
// names the file and the place, leaving the session as it was.
#include <cstdio>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include <NXOpen/Body.hxx>
#include <NXOpen/BasePart.hxx>
#include <NXOpen/Layer_LayerManager.hxx>
#include <NXOpen/Part.hxx>
#include <uf.h>
#include <uf_attr.h>

#include "CoreFixture.hpp"

namespace {

using NXOpen::NXObject;
using NXOpen::Update;

::testing::AssertionResult Contains(const std::string& text, const std::string& part) {
    if (text.find(part) != std::string::npos) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "\"" << text << "\" does not contain \"" << part << "\"";
}

class PartFile : public HostCoreTest {
protected:
    // The message of loading json as bad.part.json; "" when it loads.
    std::string LoadError(const std::string& json) {
        try {
            LoadPart(json, "bad.part.json");
        } catch (const host::PartFileError& e) {
            return e.what();
        }
        return "";
    }

    // A part file with one body whose members are body (JSON members, without braces).
    static std::string WithBody(const std::string& body) {
        return u8R"({"format": "vornadel-part/1", "leaf": "A", "bodies": [{)" + body + "}]}";
    }

    static std::string Cylinder() { return u8R"("solid": {"shape": "cylinder", "d": 6, "l": 20})"; }
};

TEST_F(PartFile, CanonicalFileIsSavedByteForByte) {
    LoadSmallMould();
    std::string saved = (folder_ / "saved.part.json").string();
    host::SaveWorkPart(saved);
    EXPECT_EQ(std::string(kSmallMould), ReadFile(saved)) << "host: load then save changes nothing";
}

TEST_F(PartFile, OtherSpellingsAreSavedInTheCanonicalForm) {
    LoadPart(u8R"({"bodies":[{"solid":{"l":20.0,"d":6,"shape":"cylinder"},"color":6,"layer":10,"tag":7,
                  "attributes":{"数量":"4","长度":{"real":2.50},"件数":{"integer":2}}}],
                  "layer_states":{"5":"selectable","40":"invisible"},
                  "leaf":"B2","work_layer":3,"format":"vornadel-part/1"})",
             "B2.part.json");
    std::string saved = (folder_ / "saved.part.json").string();
    host::SaveWorkPart(saved);
    EXPECT_EQ(std::string(u8R"({
  "format": "vornadel-part/1",
  "leaf": "B2",
  "attributes": {},
  "work_layer": 3,
  "layer_states": {
    "40": "invisible"
  },
  "bodies": [
    {
      "tag": 7,
      "layer": 10,
      "color": 6,
      "blanked": false,
      "attributes": {
        "数量": "4",
        "长度": {"real": 2.5},
        "件数": {"integer": 2}
      },
      "solid": {"shape": "cylinder", "d": 6, "l": 20},
      "at": [0, 0, 0],
      "rotate": [0, 0, 0]
    }
  ]
}
)"),
              ReadFile(saved))
        << "host: keys in canonical order, numbers in their shortest form, selectable layers left out";
}

TEST_F(PartFile, SavedFileLoadsToTheSameModel) {
    LoadSmallMould();
    std::string saved = (folder_ / "saved.part.json").string();
    host::SaveWorkPart(saved);
    NXOpen::Part* part = host::LoadWorkPart(saved);
    EXPECT_STREQ("A100", part->Leaf().GetLocaleText()) << "host: the leaf survives";
    EXPECT_EQ(3, part->GetIntegerUserAttribute("版本", -1)) << "host: typed part attributes survive";
    EXPECT_EQ(NXOpen::Layer::StateHidden, part->Layers()->GetState(30)) << "host: layer states survive";
    EXPECT_TRUE(Body(1005)->IsBlanked()) << "host: blank states survive";
    EXPECT_STREQ("内六角螺钉", Body(1001)->GetStringUserAttribute("名称", -1).GetLocaleText())
        << "host: body attributes survive";
}

TEST_F(PartFile, SaveWritesWhatThePluginChanged) {
    NXOpen::Part* part = LoadSmallMould();
    UF_initialize();
    part->SetUserAttribute("标准件", -1, "Y", Update::OptionNow);
    part->DeleteUserAttribute(NXObject::AttributeTypeString, "订单编号", true, Update::OptionNow);
    Body(1001)->SetUserAttribute("组ID", -1, "0307090542", Update::OptionNow);
    Body(1001)->SetUserAttribute("件数", -1, 2, Update::OptionNow);
    UF_ATTR_value_t v;
    v.type = UF_ATTR_string;
    v.value.string = const_cast<char*>("5");
    char title[] = "数量";
    UF_ATTR_assign(1001, title, v);
    Body(1002)->Blank();
    Body(1005)->Unblank();
    Body(1003)->SetColor(211);
    Body(1004)->SetLayer(41);
    part->Layers()->SetWorkLayer(20);
    part->Layers()->SetState(1, NXOpen::Layer::StateHidden);

    std::string saved = (folder_ / "saved.part.json").string();
    host::SaveWorkPart(saved);
    part = host::LoadWorkPart(saved);
    EXPECT_STREQ("Y", part->GetStringUserAttribute("标准件", -1).GetLocaleText()) << "host: a new part attribute";
    EXPECT_FALSE(part->HasUserAttribute("订单编号", NXObject::AttributeTypeAny, -1)) << "host: a deleted one";
    EXPECT_STREQ("0307090542", Body(1001)->GetStringUserAttribute("组ID", -1).GetLocaleText()) << "host: body string";
    EXPECT_EQ(2, Body(1001)->GetIntegerUserAttribute("件数", -1)) << "host: body attribute types are kept";
    EXPECT_STREQ("5", Body(1001)->GetStringUserAttribute("数量", -1).GetLocaleText()) << "host: UF_ATTR_assign too";
    EXPECT_TRUE(Body(1002)->IsBlanked()) << "host: blanking";
    EXPECT_FALSE(Body(1005)->IsBlanked()) << "host: unblanking";
    EXPECT_EQ(211, Body(1003)->Color()) << "host: colours";
    EXPECT_EQ(41, Body(1004)->Layer()) << "host: layers of bodies";
    EXPECT_EQ(20, part->Layers()->WorkLayer()) << "host: the work layer";
    EXPECT_EQ(NXOpen::Layer::StateHidden, part->Layers()->GetState(1)) << "host: layer states";
}

TEST_F(PartFile, SaveLeavesNoTemporaryFile) {
    LoadSmallMould();
    host::SaveWorkPart((folder_ / "saved.part.json").string());
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) files += entry.is_regular_file();
    EXPECT_EQ(2, files) << "host: only the loaded and the saved file";
}

TEST_F(PartFile, PathsAreUtf8OnEverySystem) {
    LoadSmallMould();
    const std::filesystem::path file = folder_ / std::filesystem::u8path(u8"模具 A100.part.json");
    host::SaveWorkPart(file.u8string());
    ASSERT_TRUE(std::filesystem::exists(file)) << "saved under its Chinese name";
    std::ifstream in(file, std::ios::binary);
    EXPECT_EQ(std::string(kSmallMould), std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()));
    EXPECT_NE(nullptr, host::LoadWorkPart(file.u8string())) << "and loaded from it";
}

TEST_F(PartFile, SaveIntoAMissingFolderFailsAndNamesTheFile) {
    LoadSmallMould();
    std::string target = (folder_ / "no-such-folder" / "saved.part.json").string();
    try {
        host::SaveWorkPart(target);
        ADD_FAILURE() << "host: saving into a missing folder must fail";
    } catch (const host::PartFileError& e) {
        EXPECT_TRUE(Contains(e.what(), target)) << "host: the message names the file";
    }
}

TEST_F(PartFile, SaveWithoutWorkPartFails) {
    EXPECT_THROW(host::SaveWorkPart((folder_ / "saved.part.json").string()), host::PartFileError)
        << "host: there is nothing to save";
}

TEST_F(PartFile, FailedLoadLeavesTheWorkPartAsItWas) {
    NXOpen::Part* part = LoadSmallMould();
    EXPECT_NE("", LoadError(WithBody(u8R"("tag": 1, "layer": 300, "color": 1, )" + Cylinder())))
        << "host: the bad file is refused";
    EXPECT_EQ(part, host::WorkPart()) << "host: the work part is unchanged";
    EXPECT_NE(nullptr, Body(1001)) << "host: its bodies keep their tags";
}

TEST_F(PartFile, LoadingTheSameFileAgainGivesTheBodiesTheirTags) {
    LoadSmallMould();
    LoadSmallMould();
    EXPECT_NE(nullptr, Body(1001)) << "host: the tags of the old part are free again";
}

TEST_F(PartFile, MissingFileNamesTheFile) {
    try {
        host::LoadWorkPart((folder_ / "none.part.json").string());
        ADD_FAILURE() << "host: a missing file must fail";
    } catch (const host::PartFileError& e) {
        EXPECT_TRUE(Contains(e.what(), "none.part.json: cannot be read")) << "host: names the file";
    }
}

TEST_F(PartFile, FolderIsNotAPartFile) {
    try {
        host::LoadWorkPart(folder_.string());
        ADD_FAILURE() << "host: a folder must fail";
    } catch (const host::PartFileError& e) {
        EXPECT_TRUE(Contains(e.what(), "cannot be read: it is a folder")) << "host: says what is wrong";
    }
}

TEST_F(PartFile, DeeplyNestedValueIsRefusedWithoutCrashing) {
    // 100,000 levels (about 200 KB) overflowed the stack; the limit holds in every build.
    std::string nested = std::string(100000, '[') + std::string(100000, ']');
    EXPECT_TRUE(Contains(LoadError(u8R"({"format": "vornadel-part/1", "leaf": "A", "zz": )" + nested + "}"),
                         "bad.part.json:1:149: arrays and objects nested deeper than 100 levels"))
        << "host: a malformed file never crashes the host";
}

TEST_F(PartFile, LeafThatIsNoFileNameIsRefusedWithItsPlace) {
    // The export makes the folder and file names of the leaf: "..\\..\\evil" wrote outside the
    // output folder.
    const std::vector<std::pair<std::string, std::string>> cases = {
        {u8R"(..\\..\\evil)", "holds '\\'"},
        {"A/B", "holds '/'"},
        {"C:A", "holds ':'"},
        {"A*", "holds '*'"},
        {"A?", "holds '?'"},
        {u8R"(A\")", "holds '\"'"},
        {"<A>", "holds '<'"},
        {"A|B", "holds '|'"},
        {"..", "holds \"..\""},
        {u8R"(A\tB)", "holds a control character"},
    };
    for (const auto& [leaf, why] : cases) {
        const std::string error = LoadError(u8R"({"format": "vornadel-part/1", "leaf": ")" + leaf + u8R"("})");
        EXPECT_TRUE(Contains(error, "bad.part.json: leaf: ") && Contains(error, "is not a file name in NX: it " + why))
            << "host: " << leaf << " -> " << error;
    }
    EXPECT_EQ("", LoadError(u8R"({"format": "vornadel-part/1", "leaf": "A100-模具.v2"})"))
        << "host: Chinese, a dot and a hyphen are file-name characters";
}

TEST_F(PartFile, NestingUpToTheLimitIsParsed) {
    // 100 levels parse (and the value is then refused for what it is); brackets inside strings
    // do not count.
    std::string nested = std::string(98, '[') + std::string(98, ']');
    EXPECT_TRUE(Contains(LoadError(u8R"({"format": "vornadel-part/1", "leaf": "A", "attributes": {"[[[\"[[[": "v", "x": )" + nested + "}}"),
                         "bad.part.json: attributes.x: an array is not an attribute value"));
    nested = "[" + nested + "]";
    EXPECT_TRUE(Contains(LoadError(u8R"({"format": "vornadel-part/1", "leaf": "A", "attributes": {"x": )" + nested + "}}"),
                         "nested deeper than 100 levels"));
}

TEST_F(PartFile, NumberOutOfRangeNamesTheFileAndThePlace) {
    std::string message = LoadError("{\"format\": \"vornadel-part/1\",\n \"leaf\": \"A\", \"x\": 1e999}");
    EXPECT_TRUE(Contains(message, "bad.part.json:2:24: number overflow parsing '1e999'"))
        << "host: a number too large for a double is a part-file error (at the end of the number)";
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": 1, "color": 1, "at": [0, -1e400, 0], )" + Cylinder())),
                         "bad.part.json:1:"));
}

TEST_F(PartFile, NulCharacterInATextIsRefused) {
    EXPECT_TRUE(Contains(LoadError(u8R"({"format": "vornadel-part/1", "leaf": "T\u0000X"})"),
                         "bad.part.json: leaf: text holds a NUL character"))
        << "host: the plug-in would see only \"T\"";
    EXPECT_TRUE(Contains(LoadError(u8R"({"format": "vornadel-part/1", "leaf": "A", "attributes": {"a\u0000b": "1"}})"),
                         "bad.part.json: attributes[\"a\\u0000b\"]: title holds a NUL character"));
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": 1, "color": 1, "attributes": {"a": {"time": "\u0000"}}, )" + Cylinder())),
                         "bad.part.json: bodies[0].attributes.a.time: text holds a NUL character"));
}

TEST_F(PartFile, MalformedJsonNamesLineAndColumn) {
    std::string message = LoadError("{\n  \"format\": \"vornadel-part/1\",\n  \"leaf\": \"A\"\n  \"bodies\": []\n}\n");
    EXPECT_TRUE(Contains(message, "bad.part.json:4:10: syntax error"))
        << "host: file, line and column where the parser stopped (the end of the unexpected \"bodies\")";
}

TEST_F(PartFile, InvalidUtf8IsASyntaxError) {
    std::string message = LoadError("{\"format\": \"vornadel-part/1\", \"leaf\": \"\xB1\xEA\"}");
    EXPECT_TRUE(Contains(message, "bad.part.json:1:")) << "host: the file must be UTF-8";
}

TEST_F(PartFile, ByteOrderMarkIsAllowed) {
    EXPECT_EQ("", LoadError("\xEF\xBB\xBF" + std::string(u8R"({"format": "vornadel-part/1", "leaf": "A"})")))
        << "host: a UTF-8 file may start with a byte-order mark";
}

TEST_F(PartFile, TopLevelMustBeAnObject) {
    EXPECT_TRUE(Contains(LoadError("[]"), "bad.part.json: the file must hold one JSON object")) << "host";
}

TEST_F(PartFile, WrongFormatTagIsRefused) {
    EXPECT_TRUE(Contains(LoadError(u8R"({"format": "vornadel-part/2", "leaf": "A"})"),
                         "bad.part.json: format: \"vornadel-part/2\" is not \"vornadel-part/1\""))
        << "host: the format tag is checked";
}

TEST_F(PartFile, MissingFormatIsRefused) {
    EXPECT_TRUE(Contains(LoadError(u8R"({"leaf": "A"})"), "bad.part.json: format: missing")) << "host";
}

TEST_F(PartFile, MissingLeafIsRefused) {
    EXPECT_TRUE(Contains(LoadError(u8R"({"format": "vornadel-part/1"})"), "bad.part.json: leaf: missing")) << "host";
}

TEST_F(PartFile, UnknownKeyIsRefused) {
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": 1, "colour": 1, )" + Cylinder())),
                         "bad.part.json: bodies[0].colour: unknown key"))
        << "host: a misspelt key is not ignored";
}

TEST_F(PartFile, RepeatedKeyIsRefused) {
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": 1, "color": 1,
                                   "attributes": {"名称": "a", "名称": "b"}, )" + Cylinder())),
                         u8"bad.part.json: bodies[0].attributes[\"名称\"]: the key appears twice"))
        << "host: a repeated key would lose one of the values";
}

TEST_F(PartFile, MissingTagIsRefused) {
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("layer": 1, "color": 1, )" + Cylinder())),
                         "bad.part.json: bodies[0].tag: missing"))
        << "host: every body has a tag";
}

TEST_F(PartFile, DuplicateTagIsRefused) {
    std::string body = u8R"({"tag": 7, "layer": 1, "color": 1, "solid": {"shape": "box", "x": 1, "y": 1, "z": 1}})";
    EXPECT_TRUE(Contains(LoadError(u8R"({"format": "vornadel-part/1", "leaf": "A", "bodies": [)" + body + ", " + body +
                                   "]}"),
                         "bad.part.json: bodies[1].tag: 7 is also the tag of bodies[0]"))
        << "host: tags are unique";
}

// Bodies are read while the text is parsed, one at a time; what the file gets wrong is still
// reported in the order of the checks: the whole text, the part's own members, then the bodies.
TEST_F(PartFile, ABodysFaultComesAfterThePartsOwn) {
    const std::string bad = u8R"({"tag": 1, "layer": 300, "color": 1, "solid": {"shape": "box", "x": 1, "y": 1, "z": 1}})";
    EXPECT_TRUE(Contains(LoadError(u8R"({"bodies": [)" + bad + u8R"(], "format": "vornadel-part/2", "leaf": "A"})"),
                         "bad.part.json: format: \"vornadel-part/2\" is not \"vornadel-part/1\""))
        << "host: the format is checked before the bodies, wherever the file puts them";
    EXPECT_TRUE(Contains(LoadError(u8R"({"bodies": [)" + bad + u8R"(], "format": "vornadel-part/1", "leaf": "A", })"),
                         "bad.part.json:1:"))
        << "host: a syntax error after the bodies comes first";
    EXPECT_TRUE(Contains(LoadError(u8R"({"format": "vornadel-part/1", "leaf": "A", "bodies": [)" + bad + "]}"),
                         "bad.part.json: bodies[0].layer: 300 is outside 1..256"));
}

TEST_F(PartFile, AFaultInALaterBodyNamesThatBody) {
    auto body = [](int tag, const std::string& attributes) {
        return u8R"({"tag": )" + std::to_string(tag) + u8R"(, "layer": 1, "color": 1, "attributes": {)" + attributes +
               u8R"(}, "solid": {"shape": "box", "x": 1, "y": 1, "z": 1}})";
    };
    const std::string head = u8R"({"format": "vornadel-part/1", "leaf": "A", "bodies": [)";
    EXPECT_TRUE(Contains(LoadError(head + body(1, "") + ", " + body(2, "") + ", " + body(3, u8R"("名称": "a", "名称": "b")") + "]}"),
                         u8"bad.part.json: bodies[2].attributes[\"名称\"]: the key appears twice"));
    EXPECT_TRUE(Contains(LoadError(head + body(1, "") + ", 5, " + body(3, "") + "]}"), "bad.part.json: bodies[1]: must be an object"));
    EXPECT_TRUE(Contains(LoadError(head + body(1, "") + ", " + body(2, "") + ", " + body(1, "") + "]}"),
                         "bad.part.json: bodies[2].tag: 1 is also the tag of bodies[0]"));
    EXPECT_TRUE(Contains(LoadError(u8R"({"format": "vornadel-part/1", "leaf": "A", "bodies": {"tag": 1}})"),
                         "bad.part.json: bodies: must be an array of bodies"));
}

TEST_F(PartFile, TheBodiesOfTheFileAreCountedBeforeTheyAreRead) {
    const std::string box = u8R"({"tag": %d, "layer": 1, "color": 1, "attributes": {"[{": "{["}, "solid": {"shape": "box", "x": 1, "y": 1, "z": 1}})";
    std::string bodies;
    for (int tag = 1; tag <= 3; ++tag) {
        char text[256];
        std::snprintf(text, sizeof text, box.c_str(), tag);
        bodies += (tag > 1 ? ", " : "") + std::string(text);
    }
    LoadPart(u8R"({"format": "vornadel-part/1", "leaf": "A[{", "attributes": {"bodies": "[{\\\"{"}, "bodies": [)" + bodies +
                 "]}",
             "count.part.json");
    EXPECT_EQ(3L, host::CurrentActivity().bodiesInFile.load()) << "host: brackets and keys inside texts are not counted";
    EXPECT_EQ(3L, host::CurrentActivity().bodiesLoaded.load());
    for (unsigned int tag : {1u, 2u, 3u}) EXPECT_NE(nullptr, Body(tag)) << tag;
}

TEST_F(PartFile, FacesAndEdgesAreKeptAndSavedWithTheirBody) {
    std::string part = kSmallMould;
    const std::string first = "\"rotate\": [0, 0, 0]\n    },";
    part.replace(part.find(first), first.size(),
                 "\"rotate\": [0, 0, 0],\n      \"faces\": [5001, 5003],\n      \"edges\": [5002]\n    },");
    LoadPart(part);
    const std::string saved = (folder_ / "saved.part.json").string();
    host::SaveWorkPart(saved);
    EXPECT_EQ(part, ReadFile(saved)) << "written only for a body that has some, after its placement";
}

TEST_F(PartFile, AFaceTagThatIsAlsoABodysIsRefused) {
    const std::string one = u8R"({"tag": 7, "layer": 1, "color": 1, "solid": {"shape": "box", "x": 1, "y": 1, "z": 1}})";
    const std::string two = u8R"({"tag": 8, "layer": 1, "color": 1, "faces": [7], "solid": {"shape": "box", "x": 1, "y": 1, "z": 1}})";
    EXPECT_TRUE(Contains(LoadError(u8R"({"format": "vornadel-part/1", "leaf": "A", "bodies": [)" + one + ", " + two + "]}"),
                         "bad.part.json: bodies[1]: 7 is the tag of a face or edge and also of bodies[0]"));
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 7, "layer": 1, "color": 1, "edges": "x", )" + Cylinder())),
                         "bad.part.json: bodies[0].edges: must be an array of tags"));
}

TEST_F(PartFile, TagZeroIsRefused) {
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 0, "layer": 1, "color": 1, )" + Cylinder())),
                         "bad.part.json: bodies[0].tag: 0 is outside 1..2147483647"))
        << "NX: tag 0 is NULL_TAG";
}

TEST_F(PartFile, TagAboveTheFileRangeIsRefused) {
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 4294967296, "layer": 1, "color": 1, )" + Cylinder())),
                         "bad.part.json: bodies[0].tag: 4294967296 is outside 1..2147483647"))
        << "host: file tags stay below the tags of other objects";
}

TEST_F(PartFile, UnknownShapeIsRefused) {
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": 1, "color": 1, "solid": {"shape": "sphere", "d": 3})")),
                         "bad.part.json: bodies[0].solid.shape: \"sphere\" is not a shape (box, cylinder, stack)"))
        << "host: known shapes only";
}

TEST_F(PartFile, NonPositiveSizeIsRefused) {
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": 1, "color": 1, "solid": {"shape": "cylinder", "d": 0, "l": 3})")),
                         "bad.part.json: bodies[0].solid.d: 0 is not a positive size"))
        << "host: sizes are positive";
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": 1, "color": 1,
                                   "solid": {"shape": "stack", "parts": [{"d": 6, "l": 2}, {"d": 4, "l": -1}]})")),
                         "bad.part.json: bodies[0].solid.parts[1].l: -1 is not a positive size"))
        << "host: every part of a stack";
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": 1, "color": 1, "solid": {"shape": "box", "x": 1, "y": 1})")),
                         "bad.part.json: bodies[0].solid.z: missing"))
        << "host: every size is given";
}

TEST_F(PartFile, EmptyStackIsRefused) {
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": 1, "color": 1, "solid": {"shape": "stack", "parts": []})")),
                         "bad.part.json: bodies[0].solid.parts: must be a non-empty array"))
        << "host: a stack has parts";
}

TEST_F(PartFile, LayerOutside1To256IsRefused) {
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": 300, "color": 1, )" + Cylinder())),
                         "bad.part.json: bodies[0].layer: 300 is outside 1..256"))
        << "NX: layers are 1..256";
}

TEST_F(PartFile, WorkLayerOutside1To256IsRefused) {
    EXPECT_TRUE(Contains(LoadError(u8R"({"format": "vornadel-part/1", "leaf": "A", "work_layer": 0})"),
                         "bad.part.json: work_layer: 0 is outside 1..256"))
        << "NX: layers are 1..256";
}

TEST_F(PartFile, BadLayerStatesAreRefused) {
    EXPECT_TRUE(Contains(LoadError(u8R"({"format": "vornadel-part/1", "leaf": "A", "layer_states": {"0": "visible"}})"),
                         "bad.part.json: layer_states[\"0\"]: not a layer number 1..256"))
        << "host: layer numbers only";
    EXPECT_TRUE(Contains(LoadError(u8R"({"format": "vornadel-part/1", "leaf": "A", "layer_states": {"9": "hidden"}})"),
                         "bad.part.json: layer_states[\"9\"]: \"hidden\" is not a layer state"))
        << "host: selectable, visible or invisible";
    EXPECT_TRUE(Contains(LoadError(u8R"({"format": "vornadel-part/1", "leaf": "A", "work_layer": 9,
                                   "layer_states": {"9": "visible"}})"),
                         "bad.part.json: layer_states[\"9\"]: layer 9 is the work layer"))
        << "host: the work layer's state is work_layer's business";
}

TEST_F(PartFile, ColourOutsideThePaletteIsRefused) {
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": 1, "color": 217, )" + Cylinder())),
                         "bad.part.json: bodies[0].color: 217 is outside 1..216"))
        << "NX: colours are 1..216";
}

TEST_F(PartFile, TextNotRepresentableInGbkIsRefused) {
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": 1, "color": 1,
                                   "attributes": {"名称": "螺钉\uD83D\uDE00"}, )" + Cylinder())),
                         u8"bad.part.json: bodies[0].attributes[\"名称\"]: text not representable in GBK: U+1F600"))
        << "host: a value without a GBK form";
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": 1, "color": 1,
                                   "attributes": {"名\u0E01x": "a"}, )" + Cylinder())),
                         "title not representable in GBK: U+0E01"))
        << "host: a title without a GBK form";
    EXPECT_TRUE(Contains(LoadError(u8R"({"format": "vornadel-part/1", "leaf": "\u00C5"})"),
                         "bad.part.json: leaf: text not representable in GBK"))
        << "host: a leaf without a GBK form";
}

TEST_F(PartFile, WrongTypesAreRefused) {
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": "10", "color": 1, )" + Cylinder())),
                         "bad.part.json: bodies[0].layer: \"10\" is not an integer"))
        << "host: a layer is a number";
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": 1, "color": 1, "blanked": "yes", )" + Cylinder())),
                         "bad.part.json: bodies[0].blanked: \"yes\" is not true or false"))
        << "host: blanked is a boolean";
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": 1, "color": 1, "at": [1, 2], )" + Cylinder())),
                         "bad.part.json: bodies[0].at: must be an array of three numbers"))
        << "host: at is three numbers";
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": 1, "color": 1, "attributes": {"数量": 4}, )" +
                                            Cylinder())),
                         u8"bad.part.json: bodies[0].attributes[\"数量\"]: 4 is not an attribute value"))
        << "host: a bare number is not an attribute value";
    EXPECT_TRUE(Contains(LoadError(WithBody(u8R"("tag": 1, "layer": 1, "color": 1, "attributes": {"数量": {"integer": 4.5}}, )" +
                                            Cylinder())),
                         u8"bad.part.json: bodies[0].attributes[\"数量\"].integer: 4.5 is not an integer"))
        << "host: an integer attribute holds an integer";
    EXPECT_TRUE(Contains(LoadError(u8R"({"format": "vornadel-part/1", "leaf": "A", "bodies": {}})"),
                         "bad.part.json: bodies: must be an array of bodies"))
        << "host: bodies is an array";
}

TEST_F(PartFile, EveryAttributeTypeLoads) {
    NXOpen::Part* part = LoadPart(u8R"({"format": "vornadel-part/1", "leaf": "A", "attributes": {
        "s": "text", "i": {"integer": -4}, "r": {"real": 0.1}, "b": {"boolean": true},
        "t": {"time": "07-Mar-2024 09:05"}, "n": null}})");
    EXPECT_TRUE(part->HasUserAttribute("s", NXObject::AttributeTypeString, -1)) << "host: a string is a string";
    EXPECT_EQ(-4, part->GetIntegerUserAttribute("i", -1)) << "host: {\"integer\": n}";
    EXPECT_DOUBLE_EQ(0.1, part->GetRealUserAttribute("r", -1)) << "host: {\"real\": x}";
    EXPECT_TRUE(part->HasUserAttribute("b", NXObject::AttributeTypeBoolean, -1)) << "host: {\"boolean\": b}";
    EXPECT_TRUE(part->HasUserAttribute("t", NXObject::AttributeTypeTime, -1)) << "host: {\"time\": text}";
    EXPECT_TRUE(part->HasUserAttribute("n", NXObject::AttributeTypeNull, -1)) << "host: null";
    std::string saved = (folder_ / "saved.part.json").string();
    host::SaveWorkPart(saved);
    EXPECT_TRUE(Contains(ReadFile(saved), u8R"(    "s": "text",
    "i": {"integer": -4},
    "r": {"real": 0.1},
    "b": {"boolean": true},
    "t": {"time": "07-Mar-2024 09:05"},
    "n": null
)")) << "host: each type is written back in its own form";
}

}  // namespace
