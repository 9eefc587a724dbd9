// The session: the singleton, the work part, model-update counting, the user-function start-up
// calls, the listing window and tags.
#include <cstring>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include <NXOpen/ListingWindow.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/Session.hxx>
#include <uf.h>
#include <uf_modl.h>

#include "CoreFixture.hpp"
#include "HostSession.hpp"

namespace {

class Session : public HostCoreTest {};

TEST_F(Session, GetSessionAlwaysGivesTheSameSession) {
    EXPECT_EQ(NXOpen::Session::GetSession(), NXOpen::Session::GetSession()) << "NX: there is one session";
}

TEST_F(Session, WorkIsTheLoadedPart) {
    NXOpen::Part* loaded = LoadSmallMould();
    NXOpen::PartCollection* parts = NXOpen::Session::GetSession()->Parts();
    EXPECT_EQ(loaded, parts->Work()) << "NX: Work() is the work part";
    EXPECT_EQ(loaded, parts->BaseWork()) << "NX: BaseWork() is the work part as BasePart";
    EXPECT_EQ(loaded, parts->Display()) << "host: the work part is also displayed";
}

TEST_F(Session, WorkWithoutWorkPartThrowsNXException) {
    EXPECT_THROW(NXOpen::Session::GetSession()->Parts()->Work(), NXOpen::NXException)
        << "NX: PartCollection::Work throws when there is no work part";
}

TEST_F(Session, BaseWorkWithoutWorkPartIsNull) {
    EXPECT_EQ(nullptr, NXOpen::Session::GetSession()->Parts()->BaseWork()) << "host choice: no part gives NULL";
}

TEST_F(Session, ModelUpdateIsCounted) {
    UF_initialize();
    UF_MODL_update();
    UF_MODL_update();
    EXPECT_EQ(2, host::ModelUpdateCount()) << "host: every UF_MODL_update call is counted";
}

TEST_F(Session, ResetStartsTheUpdateCountAtZero) {
    UF_MODL_update();
    host::ResetSession();
    EXPECT_EQ(0, host::ModelUpdateCount()) << "host: a fresh session has made no update";
}

TEST_F(Session, UfInitializeMarksTheLibraryInitialised) {
    EXPECT_EQ(0, UF_is_initialized()) << "NX: before UF_initialize the library is not initialised";
    EXPECT_EQ(0, UF_initialize()) << "NX: UF_initialize succeeds";
    EXPECT_EQ(1, UF_is_initialized()) << "NX: after UF_initialize the library is initialised";
    EXPECT_EQ(0, UF_terminate()) << "NX: UF_terminate succeeds";
    EXPECT_EQ(0, UF_is_initialized()) << "NX: after UF_terminate the library is not initialised";
}

TEST_F(Session, UserFunctionCallsBeforeUfInitializeFailAsInNx) {
    LoadSmallMould();
    char* value = nullptr;
    EXPECT_EQ(1105000, UF_translate_variable("VDConfig", &value)) << "NX 8.5: UF_err_program_not_initialized";
    EXPECT_EQ(1105000, UF_MODL_update());
    EXPECT_EQ(0, host::ModelUpdateCount()) << "nothing happened";
    EXPECT_EQ((std::vector<std::string>{"UF_translate_variable", "UF_MODL_update"}), host::UninitializedCalls());
    UF_initialize();
    EXPECT_EQ(0, UF_MODL_update());
    UF_terminate();
    EXPECT_EQ(1105000, UF_MODL_update()) << "and again after UF_terminate";
    EXPECT_EQ(3u, host::UninitializedCalls().size());
    char message[133];
    EXPECT_EQ(0, UF_get_fail_message(1105000, message)) << "answered whatever the state";
    EXPECT_NE(std::string::npos, std::string(message).find("UF_initialize")) << message;
    host::ResetSession();
    EXPECT_TRUE(host::UninitializedCalls().empty());
}

TEST_F(Session, FailMessageFillsTheBuffer) {
    char message[133];
    std::memset(message, 'x', sizeof message);  // sentinel
    EXPECT_EQ(0, UF_get_fail_message(900001, message)) << "NX: known codes have a message";
    EXPECT_LT(std::strlen(message), sizeof message) << "NX: the message ends within 133 bytes";
    EXPECT_GT(std::strlen(message), 0u) << "NX: the message is written";
}

TEST_F(Session, UfFreeOfNullIsHarmless) {
    UF_free(nullptr);
    SUCCEED() << "NX: UF_free(NULL) does nothing";
}

TEST_F(Session, ListingWindowOpensWhenWrittenTo) {
    NXOpen::ListingWindow* listing = NXOpen::Session::GetSession()->ListingWindow();
    EXPECT_FALSE(listing->IsOpen()) << "NX: the listing window starts closed";
    listing->WriteLine("line");
    EXPECT_TRUE(listing->IsOpen()) << "NX: writing a line opens the listing window";
    listing->Close();
    EXPECT_FALSE(listing->IsOpen()) << "NX: Close closes it";
}

// Host choice: objects other than bodies get tags above every tag a part file may give.
TEST_F(Session, ObjectsOtherThanBodiesHaveTagsAboveEveryBodyTag) {
    NXOpen::Part* part = LoadSmallMould();
    EXPECT_GE(part->Tag(), 0x80000000u) << "host choice: fresh tags count up from 2^31";
    EXPECT_NE(part->Tag(), NXOpen::Session::GetSession()->Tag()) << "NX: every object has its own tag";
}

// The tag table: thousands of objects made and released in any order are each found by their
// tag until released, and a released tag finds nothing, also right after Tag() was asked of it.
TEST_F(Session, TagsFindTheirObjectsThroughManyReleases) {
    struct Object : NXOpen::TaggedObject {};
    std::vector<std::unique_ptr<Object>> objects;
    for (int i = 0; i < 5000; ++i) objects.push_back(std::make_unique<Object>());
    for (int i = 0; i < 300; ++i) host::Tags::Assign(objects[i].get(), 7000 + 64 * i);  // tags of a part file
    std::vector<tag_t> released;
    for (size_t i = 0; i < objects.size(); i += 3) {
        released.push_back(objects[i]->Tag());
        objects[i].reset();
    }
    for (size_t i = 0; i < objects.size(); ++i) {
        if (objects[i] == nullptr) continue;
        ASSERT_EQ(objects[i].get(), host::Tags::Find(objects[i]->Tag())) << i;
    }
    for (tag_t tag : released) ASSERT_EQ(nullptr, host::Tags::Find(tag)) << tag;
    const tag_t last = objects[1]->Tag();
    objects[1].reset();
    EXPECT_EQ(nullptr, host::Tags::Find(last)) << "host: the object Tag() was asked of last is forgotten with it";
}

}  // namespace
