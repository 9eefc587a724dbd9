// The NX environment, read through UF_translate_variable and Session::GetEnvironmentVariableValue.
#include <gtest/gtest.h>

#include <NXOpen/Session.hxx>
#include <uf.h>

#include "CoreFixture.hpp"

namespace {

class Environment : public HostCoreTest {
protected:
    void SetUp() override {
        HostCoreTest::SetUp();
        host::SetEnvironmentVariable("VDConfig", "D:\\配置");
        UF_initialize();
    }
};

TEST_F(Environment, TranslateVariableGivesTheValue) {
    char* value = nullptr;
    EXPECT_EQ(0, UF_translate_variable("VDConfig", &value)) << "NX: translating a defined variable succeeds";
    ASSERT_NE(nullptr, value) << "NX: a defined variable has a translation";
    EXPECT_STREQ("D:\\配置", value) << "NX: the translation is the value in the code page";
}

TEST_F(Environment, TranslateUndefinedVariableGivesNull) {
    char sentinel[] = "sentinel";
    char* value = sentinel;
    UF_translate_variable("NoSuchVariable", &value);
    EXPECT_EQ(nullptr, value) << "NX: an undefined variable translates to NULL";
}

TEST_F(Environment, TranslationStaysWhileTheVariableIsUnchanged) {
    char* first = nullptr;
    char* second = nullptr;
    UF_translate_variable("VDConfig", &first);
    UF_translate_variable("VDConfig", &second);
    EXPECT_EQ(first, second) << "host: the translation points to the session's own string";
}

TEST_F(Environment, SessionGivesTheValueAsLocaleText) {
    NXOpen::NXString value = NXOpen::Session::GetSession()->GetEnvironmentVariableValue("VDConfig");
    EXPECT_STREQ("D:\\配置", value.GetLocaleText()) << "NX: the session reads the same environment";
}

TEST_F(Environment, SessionGivesEmptyTextForUndefinedVariable) {
    NXOpen::NXString value = NXOpen::Session::GetSession()->GetEnvironmentVariableValue("NoSuchVariable");
    EXPECT_STREQ("", value.GetLocaleText()) << "NX: an undefined variable gives an empty string, no error";
}

TEST_F(Environment, NXStringOverloadReadsTheSameVariable) {
    NXOpen::NXString name("VDConfig");
    EXPECT_STREQ("D:\\配置", NXOpen::Session::GetSession()->GetEnvironmentVariableValue(name).GetLocaleText())
        << "NX: the NXString twin reads the same variable";
}

TEST_F(Environment, UnsetVariableIsUndefinedForBoth) {
    host::UnsetEnvironmentVariable("VDConfig");
    char* value = nullptr;
    UF_translate_variable("VDConfig", &value);
    EXPECT_EQ(nullptr, value) << "NX: a removed variable translates to NULL";
    EXPECT_STREQ("", NXOpen::Session::GetSession()->GetEnvironmentVariableValue("VDConfig").GetLocaleText())
        << "NX: a removed variable reads as empty";
}

TEST_F(Environment, ResetSessionEmptiesTheEnvironment) {
    host::ResetSession();
    char* value = nullptr;
    UF_translate_variable("VDConfig", &value);
    EXPECT_EQ(nullptr, value) << "host: a fresh session has an empty NX environment";
}

}  // namespace
