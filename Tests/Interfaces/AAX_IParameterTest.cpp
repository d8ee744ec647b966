#include "AAX_IParameter.h"
#include "Tests/Support/ForwardingCheck.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

class AAX_CString;

namespace varno {
namespace {

TEST(ParameterInterface, DeclaresItsOperationsInOrder) {
    using I = AAX_IParameter;
    using ShowValue = bool (I::*)(AAX_CString*) const;
    using ShowValueIn = bool (I::*)(std::int32_t, AAX_CString*) const;
    using ShowNormalized = bool (I::*)(double, AAX_CString&) const;
    using ShowNormalizedIn = bool (I::*)(double, std::int32_t, AAX_CString&) const;
    const std::vector<std::ptrdiff_t> slots = {
        slotOf(&I::CloneValue),
        slotOf(&I::Identifier),
        slotOf(&I::SetName),
        slotOf(&I::Name),
        slotOf(&I::AddShortenedName),
        slotOf(&I::ShortenedName),
        slotOf(&I::ClearShortenedNames),
        slotOf(&I::Automatable),
        slotOf(&I::SetAutomationDelegate),
        slotOf(&I::Touch),
        slotOf(&I::Release),
        slotOf(&I::SetNormalizedValue),
        slotOf(&I::GetNormalizedValue),
        slotOf(&I::SetNormalizedDefaultValue),
        slotOf(&I::GetNormalizedDefaultValue),
        slotOf(&I::SetToDefaultValue),
        slotOf(&I::SetNumberOfSteps),
        slotOf(&I::GetNumberOfSteps),
        slotOf(&I::GetStepValue),
        slotOf(&I::GetNormalizedValueFromStep),
        slotOf(&I::GetStepValueFromNormalizedValue),
        slotOf(&I::SetStepValue),
        slotOf(static_cast<ShowValue>(&I::GetValueString)),
        slotOf(static_cast<ShowValueIn>(&I::GetValueString)),
        slotOf(&I::GetNormalizedValueFromBool),
        slotOf(&I::GetNormalizedValueFromInt32),
        slotOf(&I::GetNormalizedValueFromFloat),
        slotOf(&I::GetNormalizedValueFromDouble),
        slotOf(&I::GetNormalizedValueFromString),
        slotOf(&I::GetBoolFromNormalizedValue),
        slotOf(&I::GetInt32FromNormalizedValue),
        slotOf(&I::GetFloatFromNormalizedValue),
        slotOf(&I::GetDoubleFromNormalizedValue),
        slotOf(static_cast<ShowNormalized>(&I::GetStringFromNormalizedValue)),
        slotOf(static_cast<ShowNormalizedIn>(&I::GetStringFromNormalizedValue)),
        slotOf(&I::SetValueFromString),
        slotOf(&I::GetValueAsBool),
        slotOf(&I::GetValueAsInt32),
        slotOf(&I::GetValueAsFloat),
        slotOf(&I::GetValueAsDouble),
        slotOf(&I::GetValueAsString),
        slotOf(&I::SetValueWithBool),
        slotOf(&I::SetValueWithInt32),
        slotOf(&I::SetValueWithFloat),
        slotOf(&I::SetValueWithDouble),
        slotOf(&I::SetValueWithString),
        slotOf(&I::SetType),
        slotOf(&I::GetType),
        slotOf(&I::SetOrientation),
        slotOf(&I::GetOrientation),
        slotOf(&I::SetTaperDelegate),
        slotOf(&I::SetDisplayDelegate),
        slotOf(&I::UpdateNormalizedValue),
    };
    for (std::size_t i = 0; i < slots.size(); ++i) {
        EXPECT_EQ(slots[i], kDestructorSlots + static_cast<std::ptrdiff_t>(i));
    }
}

} // namespace
} // namespace varno
