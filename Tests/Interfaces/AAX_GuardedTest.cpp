#include "AAX_Guarded.h"
#include "AAX_Exception.h"
#include "Tests/Support/FakeHostServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace varno {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Line = FakeHostServices::Line;

constexpr std::int32_t kHighPriority = 0x8000000;

TEST(Guarded, AnswersWithTheResultOfItsBody) {
    const ListeningHost host;
    EXPECT_EQ(AAX_Guarded("Entry", [] { return AAX_ERROR_FIFO_FULL; }), AAX_ERROR_FIFO_FULL);
    EXPECT_THAT(host.lines(), IsEmpty());
}

TEST(Guarded, TurnsAnUnacceptedResultIntoItsCode) {
    const ListeningHost host;
    EXPECT_EQ(AAX_Guarded("Entry",
                          []() -> AAX_Result { throw AAX::Exception::ResultError(AAX_ERROR_NULL_OBJECT); }),
              AAX_ERROR_NULL_OBJECT);
    EXPECT_THAT(host.lines(),
                ElementsAre(Line{kHighPriority, "Entry exception caught: AAX_ERROR_NULL_OBJECT (-20004)"}));
}

TEST(Guarded, TurnsEverythingElseIntoUnknownException) {
    const ListeningHost host;
    EXPECT_EQ(AAX_Guarded("One", []() -> AAX_Result { throw AAX::Exception::Any("odd", "here", "7"); }),
              AAX_ERROR_UNKNOWN_EXCEPTION);
    EXPECT_EQ(AAX_Guarded("Two", []() -> AAX_Result { throw std::out_of_range("too far"); }),
              AAX_ERROR_UNKNOWN_EXCEPTION);
    EXPECT_EQ(AAX_Guarded("Three", []() -> AAX_Result { throw 7; }), AAX_ERROR_UNKNOWN_EXCEPTION);
    EXPECT_THAT(host.lines(), ElementsAre(Line{kHighPriority, "One exception caught: odd func:here line:7"},
                                          Line{kHighPriority, "Two exception caught: too far"},
                                          Line{kHighPriority, "Three exception caught: unknown"}));
}

TEST(Guarded, NamesTheClassOfAnEntryPoint) {
    const ListeningHost host;
    AAX_Guarded({"Class", "Entry"}, []() -> AAX_Result { throw 7; });
    EXPECT_EQ(AAX_GuardedCreation({"Class", "Create"}, []() -> int* { throw 7; }), nullptr);
    EXPECT_THAT(host.lines(), ElementsAre(Line{kHighPriority, "Class::Entry exception caught: unknown"},
                                          Line{kHighPriority, "Class::Create exception caught: unknown"}));
}

TEST(Guarded, ConvertsWithoutAHost) {
    EXPECT_EQ(AAX_Guarded("Entry", []() -> AAX_Result { throw std::bad_alloc(); }),
              AAX_ERROR_UNKNOWN_EXCEPTION);
}

TEST(Guarded, ConvertsWhenTheHostThrowsAtTheTraceLine) {
    class ThrowingServices : public FakeHostServices {
        AAX_Result Trace(std::int32_t, const char*) override { throw 5; }
    };
    FakeHostWithServices host;
    ThrowingServices throwing;
    host.factory.offer(IID_IAAXHostServicesV1, &throwing);
    AAX_CHostServices::Set(&host);
    EXPECT_EQ(AAX_Guarded("Entry", []() -> AAX_Result { throw std::bad_alloc(); }),
              AAX_ERROR_UNKNOWN_EXCEPTION);
    AAX_CHostServices::Set(nullptr);
}

} // namespace
} // namespace varno
