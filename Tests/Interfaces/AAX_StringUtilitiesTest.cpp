#include "AAX_StringUtilities.h"

#include <gtest/gtest.h>

#include <iterator>
#include <limits>
#include <string>

namespace varno {
namespace {

// The names from -20001 down.
constexpr const char* kNames[] = {
    "AAX_ERROR_INVALID_PARAMETER_ID",
    "AAX_ERROR_INVALID_STRING_CONVERSION",
    "AAX_ERROR_INVALID_METER_INDEX",
    "AAX_ERROR_NULL_OBJECT",
    "AAX_ERROR_OLDER_VERSION",
    "AAX_ERROR_INVALID_CHUNK_INDEX",
    "AAX_ERROR_INVALID_CHUNK_ID",
    "AAX_ERROR_INCORRECT_CHUNK_SIZE",
    "AAX_ERROR_UNIMPLEMENTED",
    "AAX_ERROR_INVALID_PARAMETER_INDEX",
    "AAX_ERROR_NOT_INITIALIZED",
    "AAX_ERROR_ACF_ERROR",
    "AAX_ERROR_INVALID_METER_TYPE",
    "AAX_ERROR_CONTEXT_ALREADY_HAS_METERS",
    "AAX_ERROR_NULL_COMPONENT",
    "AAX_ERROR_PORT_ID_OUT_OF_RANGE",
    "AAX_ERROR_FIELD_TYPE_DOES_NOT_SUPPORT_DIRECT_ACCESS",
    "AAX_ERROR_DIRECT_ACCESS_OUT_OF_BOUNDS",
    "AAX_ERROR_FIFO_FULL",
    "AAX_ERROR_INITIALIZING_PACKET_STREAM_THREAD",
    "AAX_ERROR_POST_PACKET_FAILED",
    "AAX_RESULT_PACKET_STREAM_NOT_EMPTY",
    "AAX_RESULT_ADD_FIELD_UNSUPPORTED_FIELD_TYPE",
    "AAX_ERROR_MIXER_THREAD_FALLING_BEHIND",
    "AAX_ERROR_INVALID_FIELD_INDEX",
    "AAX_ERROR_MALFORMED_CHUNK",
    "AAX_ERROR_TOD_BEHIND",
    "AAX_RESULT_NEW_PACKET_POSTED",
    "AAX_ERROR_PLUGIN_NOT_AUTHORIZED",
    "AAX_ERROR_PLUGIN_NULL_PARAMETER",
    "AAX_ERROR_NOTIFICATION_FAILED",
    "AAX_ERROR_INVALID_VIEW_SIZE",
    "AAX_ERROR_SIGNED_INT_OVERFLOW",
    "AAX_ERROR_NO_COMPONENTS",
    "AAX_ERROR_DUPLICATE_EFFECT_ID",
    "AAX_ERROR_DUPLICATE_TYPE_ID",
    "AAX_ERROR_EMPTY_EFFECT_NAME",
    "AAX_ERROR_UNKNOWN_PLUGIN",
    "AAX_ERROR_PROPERTY_UNDEFINED",
    "AAX_ERROR_INVALID_PATH",
    "AAX_ERROR_UNKNOWN_ID",
    "AAX_ERROR_UNKNOWN_EXCEPTION",
    "AAX_ERROR_INVALID_ARGUMENT",
    "AAX_ERROR_NULL_ARGUMENT",
    "AAX_ERROR_INVALID_INTERNAL_DATA",
    "AAX_ERROR_ARGUMENT_BUFFER_OVERFLOW",
};

TEST(AAX_StringUtilitiesTest, EveryNamedCodeHasItsName) {
    ASSERT_EQ(std::size(kNames), 46U);
    AAX_Result code = -20001;
    for (const char* name : kNames) {
        EXPECT_EQ(AAX::AsStringResult(code), name) << code;
        --code;
    }
    EXPECT_EQ(AAX::AsStringResult(0), "AAX_SUCCESS");
}

TEST(AAX_StringUtilitiesTest, PluginRangeIsInclusive) {
    for (AAX_Result code : {-20600, -20601, -20800, -20999, -21000}) {
        EXPECT_EQ(AAX::AsStringResult(code), "plug-in defined error") << code;
    }
}

TEST(AAX_StringUtilitiesTest, EverythingElseIsUnknown) {
    for (AAX_Result code : {-20000, -20047, -20051, -20599, -21001, -1, 1, 20046,
                            std::numeric_limits<AAX_Result>::min(), std::numeric_limits<AAX_Result>::max()}) {
        EXPECT_EQ(AAX::AsStringResult(code), "<unknown error code>") << code;
    }
}

} // namespace
} // namespace varno
