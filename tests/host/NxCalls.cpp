// The count of NX calls: every entry point the plug-in calls, by name, once per call of the
// plug-in's, whatever the host does inside it.
#include <gtest/gtest.h>

#include <NXOpen/Body.hxx>
#include <NXOpen/NXObject.hxx>
#include <uf.h>
#include <uf_modl.h>

#include "CoreFixture.hpp"
#include "Driver.hpp"

namespace {

class NxCalls : public HostCoreTest {};

long Count(const std::string& name) {
    const std::map<std::string, long> counts = host::NxCallCounts();
    const auto found = counts.find(name);
    return found == counts.end() ? 0 : found->second;
}

TEST_F(NxCalls, EachUserFunctionCallCountsOnce) {
    EXPECT_EQ(0, Count("UF_initialize"));
    UF_initialize();
    UF_MODL_update();
    UF_MODL_update();
    EXPECT_EQ(1, Count("UF_initialize"));
    EXPECT_EQ(2, Count("UF_MODL_update"));
    EXPECT_EQ(0, Count("UF_terminate")) << "an entry point not called is not listed";
    EXPECT_EQ(0u, host::NxCallCounts().count("UF_terminate"));
}

// The NXString overload of HasUserAttribute calls the const char* one inside the host: the
// plug-in made one call.
TEST_F(NxCalls, CallsTheHostMakesInsideAnNxCallAreNotCounted) {
    LoadSmallMould();
    NXOpen::Body* body = Body(1001);
    host::ResetNxCallCounts();
    body->HasUserAttribute(NXOpen::NXString("数量"), NXOpen::NXObject::AttributeTypeAny, -1);
    const std::map<std::string, long> counts = host::NxCallCounts();
    ASSERT_EQ(1u, counts.size());
    EXPECT_EQ("NXObject::HasUserAttribute", counts.begin()->first);
    EXPECT_EQ(1, counts.begin()->second);
}

TEST_F(NxCalls, TheRunnersOwnReadsAreNotCounted) {
    LoadSmallMould();
    host::ResetNxCallCounts();
    {
        const host::UncountedNxCalls reads;
        Body(1001)->GetStringUserAttribute("数量", -1);
        UF_MODL_update();
    }
    EXPECT_TRUE(host::NxCallCounts().empty());
}

TEST_F(NxCalls, AFreshSessionHasMadeNoCall) {
    UF_initialize();
    host::ResetSession();
    EXPECT_TRUE(host::NxCallCounts().empty());
}

}  // namespace
