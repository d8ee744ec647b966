#include "Tests/Support/ForwardingCheck.h"

#include "AAX_IACFPropertyMap.h"
#include "ACF/ACFPtr.h"
#include "Tests/Support/RecordingDescription.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace varno {
namespace {

// A wrapper of one operation, right or with one defect.
enum class Defect { kNone, kOtherArgument, kOtherResult, kNoCall, kTwoCalls, kOtherCode, kLeak };

class OneOperation {
public:
    virtual ~OneOperation() = default;
    virtual AAX_Result RemoveProperty(AAX_EProperty property) = 0;
};

class Wrapper : public OneOperation {
public:
    Wrapper(IACFUnknown* host, Defect defect)
        : mMap(ACFPtr<AAX_IACFPropertyMap>::Query(host, IID_IAAXPropertyMapV1)),
          mDefect(defect) {}
    ~Wrapper() override {
        if (mDefect == Defect::kLeak) {
            mMap.Detach();
        }
    }

    AAX_Result RemoveProperty(AAX_EProperty property) override {
        if (!mMap) {
            return mDefect == Defect::kOtherCode ? AAX_ERROR_UNIMPLEMENTED : AAX_ERROR_NULL_OBJECT;
        }
        if (mDefect == Defect::kNoCall) {
            return kHostResult;
        }
        if (mDefect == Defect::kTwoCalls) {
            mMap->RemoveProperty(property);
        }
        const AAX_Result result =
            mMap->RemoveProperty(mDefect == Defect::kOtherArgument ? AAX_eProperty_ProductID : property);
        return mDefect == Defect::kOtherResult ? AAX_SUCCESS : result;
    }

private:
    ACFPtr<AAX_IACFPropertyMap> mMap;
    Defect mDefect;
};

void checkWrapperWith(Defect defect) {
    expectForwarding<RecordingPropertyMap, OneOperation>(
        {IID_IAAXPropertyMapV1},
        {operation<OneOperation>("RemoveProperty", 1, AAX_ERROR_NULL_OBJECT, &OneOperation::RemoveProperty,
                                 AAX_eProperty_ManufacturerID)},
        [defect](IACFUnknown* host) { return std::make_unique<Wrapper>(host, defect); });
}

TEST(ForwardingCheckTest, PassesAFaithfulWrapper) {
    checkWrapperWith(Defect::kNone);
}

TEST(ForwardingCheckTest, FindsEveryDefect) {
    for (const Defect defect : {Defect::kOtherArgument, Defect::kOtherResult, Defect::kNoCall,
                                Defect::kTwoCalls, Defect::kOtherCode, Defect::kLeak}) {
        testing::TestPartResultArray found;
        {
            const testing::ScopedFakeTestPartResultReporter reporter(
                testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &found);
            checkWrapperWith(defect);
        }
        EXPECT_GT(found.size(), 0) << "defect " << static_cast<int>(defect);
    }
}

TEST(ForwardingCheckTest, FindsSlotsOutOfOrder) {
    EXPECT_NONFATAL_FAILURE(expectConsecutive({kDestructorSlots + 1}), "operation 0");
    expectConsecutive({kDestructorSlots, kDestructorSlots + 1});
}

} // namespace
} // namespace varno
