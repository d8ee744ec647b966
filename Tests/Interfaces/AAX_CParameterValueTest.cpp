#include "AAX_CParameterValue.h"
#include "AAX_CString.h"
#include "Tests/Support/FakeHostServices.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace varno {
namespace {

// Which typed getters of a value succeed, by the initials of their types.
std::string answering(const AAX_IParameterValue& value) {
    bool asBool = false;
    std::int32_t asInt32 = 0;
    float asFloat = 0.0F;
    double asDouble = 0.0;
    AAX_CString asString;
    std::string types;
    types += value.GetValueAsBool(&asBool) ? "b" : "";
    types += value.GetValueAsInt32(&asInt32) ? "i" : "";
    types += value.GetValueAsFloat(&asFloat) ? "f" : "";
    types += value.GetValueAsDouble(&asDouble) ? "d" : "";
    types += value.GetValueAsString(&asString) ? "s" : "";
    return types;
}

TEST(ParameterValue, AnswersForItsOwnTypeOnly) {
    EXPECT_EQ(answering(AAX_CParameterValue<bool>("A", true)), "b");
    EXPECT_EQ(answering(AAX_CParameterValue<std::int32_t>("A", 7)), "i");
    EXPECT_EQ(answering(AAX_CParameterValue<float>("A", 0.5F)), "f");
    EXPECT_EQ(answering(AAX_CParameterValue<double>("A", 0.5)), "d");
}

TEST(ParameterValue, WritesNothingForAnotherType) {
    const AAX_CParameterValue<float> value("A", 0.5F);
    double asDouble = 7.0;
    EXPECT_FALSE(value.GetValueAsDouble(&asDouble));
    EXPECT_EQ(asDouble, 7.0);
}

TEST(ParameterValue, RefusesANullOutput) {
    EXPECT_FALSE(AAX_CParameterValue<float>("A", 0.5F).GetValueAsFloat(nullptr));
}

TEST(ParameterValue, ClonesIdentifierAndValue) {
    const AAX_CParameterValue<float> value("Gain", 0.25F);
    const std::unique_ptr<AAX_IParameterValue> clone = value.Clone();
    float real = 0.0F;
    EXPECT_STREQ(clone->Identifier(), "Gain");
    EXPECT_TRUE(clone->GetValueAsFloat(&real));
    EXPECT_EQ(real, 0.25F);
}

TEST(ParameterValue, KeepsAnIdentifierOf31Characters) {
    const ListeningHost host;
    const std::string identifier(31, 'x');
    EXPECT_EQ(AAX_CParameterValue<float>(identifier.c_str()).Identifier(), identifier);
    EXPECT_TRUE(host.assertions().empty());
}

TEST(ParameterValue, CutsALongerIdentifierAndReportsIt) {
    const ListeningHost host;
    const std::string identifier = "0123456789012345678901234567890123456789";
    const AAX_CParameterValue<float> value(identifier.c_str());
    EXPECT_EQ(value.Identifier(), identifier.substr(0, 31));
    ASSERT_EQ(host.assertions().size(), 1U);
    EXPECT_EQ(host.assertions()[0].note, "len < eParemeterDefaultMaxIdentifierSize");
    EXPECT_EQ(host.assertions()[0].flags, 1);
    EXPECT_EQ(value.Clone()->Identifier(), identifier.substr(0, 31));
    EXPECT_EQ(host.assertions().size(), 1U) << "what has been cut fits";
}

TEST(ParameterValue, TakesANullIdentifierForAnEmptyOne) {
    EXPECT_STREQ(AAX_CParameterValue<bool>(nullptr).Identifier(), "");
}

} // namespace
} // namespace varno
