// The process environment as the plug-in sees it: GBK text, set or not set. On POSIX the
// environment is UTF-8 and the desktop is named by variables; on Windows both come from Windows.

#include "platform/Environment.h"
#include "platform/Files.h"

#include <gtest/gtest.h>

#include "support/Posix.hpp"

#include <optional>
#include <string>

namespace {

// Sets or unsets variables for one test and puts the old values back afterwards.
class EnvironmentTest : public ::testing::Test {
protected:
    void Set(const char* name, const char* value) {
        Remember(name);
        setenv(name, value, 1);
    }
    void Unset(const char* name) {
        Remember(name);
        unsetenv(name);
    }
    void TearDown() override {
        for (const auto& [name, value] : saved_) {
            if (value) {
                setenv(name.c_str(), value->c_str(), 1);
            } else {
                unsetenv(name.c_str());
            }
        }
    }

private:
    void Remember(const char* name) {
        for (const auto& entry : saved_) {
            if (entry.first == name) return;
        }
        const char* value = getenv(name);
        saved_.emplace_back(name, value ? std::optional<std::string>(value) : std::nullopt);
    }
    std::vector<std::pair<std::string, std::optional<std::string>>> saved_;
};

class GetEnv : public EnvironmentTest {};
class DesktopFolder : public EnvironmentTest {};

#ifdef _WIN32

TEST_F(GetEnv, GbkValueArrivesUnchanged) {
    Set("VORNADEL_TEST_VALUE", "D:\\配置\\标准件");
    bool found = false;
    EXPECT_EQ("D:\\配置\\标准件", platform::GetEnv("VORNADEL_TEST_VALUE", &found));
    EXPECT_TRUE(found);
}

TEST_F(GetEnv, UnsetVariableIsEmptyAndNotFound) {
    Unset("VORNADEL_TEST_VALUE");
    bool found = true;
    EXPECT_EQ("", platform::GetEnv("VORNADEL_TEST_VALUE", &found));
    EXPECT_FALSE(found);
}

TEST_F(GetEnv, FoundMayBeNull) {
    Set("VORNADEL_TEST_VALUE", "x");
    EXPECT_EQ("x", platform::GetEnv("VORNADEL_TEST_VALUE", nullptr));
}

// The shell's desktop folder of the user, which Windows (and Wine's prefix) makes for every user.
TEST_F(DesktopFolder, IsTheUsersExistingDesktop) {
    const std::string desktop = platform::DesktopFolder();
    ASSERT_FALSE(desktop.empty());
    EXPECT_TRUE(platform::PathExists(desktop)) << desktop;
    EXPECT_EQ(':', desktop[1]) << desktop;
}

#else

TEST_F(GetEnv, Utf8ValueArrivesAsGbk) {
    Set("VORNADEL_TEST_VALUE", u8"D:\\配置\\标准件");
    bool found = false;
    EXPECT_EQ("D:\\配置\\标准件", platform::GetEnv("VORNADEL_TEST_VALUE", &found));
    EXPECT_TRUE(found);
}

TEST_F(GetEnv, CharacterOutsideGbkBecomesQuestionMark) {
    Set("VORNADEL_TEST_VALUE", u8"a\u0E01b");
    EXPECT_EQ("a?b", platform::GetEnv("VORNADEL_TEST_VALUE", nullptr));
}

TEST_F(GetEnv, UnsetVariableIsEmptyAndNotFound) {
    Unset("VORNADEL_TEST_VALUE");
    bool found = true;
    EXPECT_EQ("", platform::GetEnv("VORNADEL_TEST_VALUE", &found));
    EXPECT_FALSE(found);
}

TEST_F(GetEnv, EmptyValueIsFound) {
    Set("VORNADEL_TEST_VALUE", "");
    bool found = false;
    EXPECT_EQ("", platform::GetEnv("VORNADEL_TEST_VALUE", &found));
    EXPECT_TRUE(found);
}

TEST_F(GetEnv, FoundMayBeNull) {
    Set("VORNADEL_TEST_VALUE", "x");
    EXPECT_EQ("x", platform::GetEnv("VORNADEL_TEST_VALUE", nullptr));
}

TEST_F(DesktopFolder, ComesFromVornadelDesktop) {
    Set("VORNADEL_DESKTOP", u8"/home/设计/桌面");
    Set("HOME", "/home/u");
    EXPECT_EQ("/home/设计/桌面", platform::DesktopFolder());
}

TEST_F(DesktopFolder, OtherwiseDesktopInHome) {
    Unset("VORNADEL_DESKTOP");
    Set("HOME", u8"/home/设计");
    EXPECT_EQ("/home/设计/Desktop", platform::DesktopFolder());
}

TEST_F(DesktopFolder, EmptyVornadelDesktopCountsAsUnset) {
    Set("VORNADEL_DESKTOP", "");
    Set("HOME", "/home/u");
    EXPECT_EQ("/home/u/Desktop", platform::DesktopFolder());
}

TEST_F(DesktopFolder, NoneWithoutHome) {
    Unset("VORNADEL_DESKTOP");
    Unset("HOME");
    EXPECT_EQ("", platform::DesktopFolder());
}

#endif

}  // namespace
