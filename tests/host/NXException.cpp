// NXException: NX Open's exception, caught as std::exception.
#include <cstring>
#include <exception>

#include <gtest/gtest.h>

#include <NXOpen/NXException.hxx>

namespace {

TEST(NXException, IsCaughtAsStdException) {
    bool caught = false;
    try {
        throw NXOpen::NXException::Create("boom");
    } catch (const std::exception&) {
        caught = true;
    }
    EXPECT_TRUE(caught) << "NX: NXException derives publicly from std::exception";
}

TEST(NXException, WhatIsMessage) {
    NXOpen::NXException e = NXOpen::NXException::Create("boom");
    EXPECT_STREQ("boom", e.Message()) << "NX: Message() is the text given";
    EXPECT_STREQ(e.Message(), e.what()) << "NX: what() is Message()";
    EXPECT_STREQ(e.Message(), e.GetMessage()) << "NX: GetMessage() is the old name of Message()";
}

TEST(NXException, CreateWithTextHasCodeZero) {
    EXPECT_EQ(0, NXOpen::NXException::Create("boom").ErrorCode()) << "NX: an exception made from text has code 0";
}

TEST(NXException, CreateWithCodeKeepsTheCodeAndHasAText) {
    NXOpen::NXException e = NXOpen::NXException::Create(900001);
    EXPECT_EQ(900001, e.ErrorCode()) << "NX: the exception carries the error code";
    EXPECT_EQ(e.ErrorCode(), e.GetErrorCode()) << "NX: GetErrorCode() is the old name of ErrorCode()";
    EXPECT_GT(std::strlen(e.Message()), 0u) << "NX: an error code comes with its message";
}

TEST(NXException, CopyKeepsMessageAndCode) {
    NXOpen::NXException original = NXOpen::NXException::Create(900002);
    NXOpen::NXException copy(original);
    EXPECT_STREQ(original.Message(), copy.Message()) << "NX: a copy keeps the message";
    EXPECT_EQ(original.ErrorCode(), copy.ErrorCode()) << "NX: a copy keeps the code";
}

}  // namespace
