#include "AAX_CAutoreleasePool.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

namespace {

int gReleased = 0;

} // namespace

// Counts the objects of its class that have been released.
@interface VarnoCounted : NSObject
@end

@implementation VarnoCounted
- (void)dealloc {
    ++gReleased;
    [super dealloc];
}
@end

namespace {

class AutoreleasePoolMacTest : public testing::Test {
protected:
    AutoreleasePoolMacTest() { gReleased = 0; }

    static void leaveToThePool(int count) {
        for (int index = 0; index < count; ++index) {
            [[[VarnoCounted alloc] init] autorelease];
        }
    }
};

TEST_F(AutoreleasePoolMacTest, ReleasesAtTheEndOfItsScope) {
    {
        const AAX_CAutoreleasePool pool;
        leaveToThePool(100);
        EXPECT_EQ(gReleased, 0);
    }

    EXPECT_EQ(gReleased, 100);
}

TEST_F(AutoreleasePoolMacTest, WithinAnotherReleasesItsOwnOnly) {
    {
        const AAX_CAutoreleasePool outer;
        leaveToThePool(1);
        {
            const AAX_CAutoreleasePool inner;
            leaveToThePool(10);
        }
        EXPECT_EQ(gReleased, 10);
        leaveToThePool(100);
        EXPECT_EQ(gReleased, 10);
    }

    EXPECT_EQ(gReleased, 111);
}

TEST_F(AutoreleasePoolMacTest, LeavesWhatIsHeldByOthers) {
    VarnoCounted* held = nil;
    {
        const AAX_CAutoreleasePool pool;
        held = [[[VarnoCounted alloc] init] autorelease];
        [held retain];
    }

    EXPECT_EQ(gReleased, 0);
    [held release];
    EXPECT_EQ(gReleased, 1);
}

} // namespace
