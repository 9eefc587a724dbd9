// The desktop services of the host: the local clock and opening files with their program.
#include <ctime>

#include <gtest/gtest.h>

#include "CoreFixture.hpp"
#include "platform/Desktop.h"

namespace {

class Desktop : public HostCoreTest {};

// A time long past, so that a running clock never shows it.
const platform::LocalTime kPinned = {1999, 3, 7, 9, 5, 42, 123};

TEST_F(Desktop, PinnedClockGivesExactlyThatTime) {
    host::PinClock(kPinned);
    platform::LocalTime t = platform::GetLocalTime();
    EXPECT_EQ(1999, t.year) << "host: a pinned clock gives the pinned year";
    EXPECT_EQ(3, t.month) << "host: a pinned clock gives the pinned month";
    EXPECT_EQ(7, t.day) << "host: a pinned clock gives the pinned day";
    EXPECT_EQ(9, t.hour) << "host: a pinned clock gives the pinned hour";
    EXPECT_EQ(5, t.minute) << "host: a pinned clock gives the pinned minute";
    EXPECT_EQ(42, t.second) << "host: a pinned clock gives the pinned second";
    EXPECT_EQ(123, t.milliseconds) << "host: a pinned clock gives the pinned milliseconds";
}

TEST_F(Desktop, PinnedClockDoesNotMove) {
    host::PinClock(kPinned);
    platform::LocalTime first = platform::GetLocalTime();
    platform::LocalTime second = platform::GetLocalTime();
    EXPECT_EQ(first.milliseconds, second.milliseconds) << "host: every read of a pinned clock is the same";
}

TEST_F(Desktop, PinnedClockWithAStepMovesOnAtEveryRead) {
    host::PinClock({1999, 3, 7, 9, 59, 59, 990}, 17);
    const platform::LocalTime first = platform::GetLocalTime();
    const platform::LocalTime second = platform::GetLocalTime();
    EXPECT_EQ(990, first.milliseconds) << "the first read is the pinned time";
    EXPECT_EQ(9, first.hour);
    EXPECT_EQ(10, second.hour) << "17 ms later, carried up to the hour";
    EXPECT_EQ(0, second.minute);
    EXPECT_EQ(0, second.second);
    EXPECT_EQ(7, second.milliseconds);
}

TEST_F(Desktop, UnpinnedClockIsTheMachinesLocalTime) {
    host::PinClock(kPinned);
    host::UnpinClock();
    std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    platform::LocalTime t = platform::GetLocalTime();
    EXPECT_EQ(local.tm_year + 1900, t.year) << "host: the unpinned clock is the local time";
    EXPECT_GE(t.milliseconds, 0) << "host: milliseconds are 0..999";
    EXPECT_LE(t.milliseconds, 999) << "host: milliseconds are 0..999";
}

TEST_F(Desktop, ResetSessionUnpinsTheClock) {
    host::PinClock(kPinned);
    host::ResetSession();
    EXPECT_NE(1999, platform::GetLocalTime().year) << "host: a fresh session's clock runs";
}

TEST_F(Desktop, OpenedFilesAreRecordedInOrderAsNamed) {
    platform::OpenWithAssociatedProgram("D:\\out\\A100\\A100标准件BOM.xls");
    platform::OpenWithAssociatedProgram("D:\\out\\A100\\A100标准件BOM-1.xls");
    ASSERT_EQ(2u, host::OpenedFiles().size()) << "host: every open is recorded";
    EXPECT_EQ("D:\\out\\A100\\A100标准件BOM.xls", host::OpenedFiles()[0]) << "host: recorded as the plug-in named it";
    EXPECT_EQ("D:\\out\\A100\\A100标准件BOM-1.xls", host::OpenedFiles()[1]) << "host: recorded in order";
}

TEST_F(Desktop, ResetSessionForgetsOpenedFiles) {
    platform::OpenWithAssociatedProgram("D:\\a.xls");
    host::ResetSession();
    EXPECT_TRUE(host::OpenedFiles().empty()) << "host: a fresh session has opened nothing";
}

}  // namespace
