#include "AAX_StringUtilities.h"

#include <cstddef>
#include <iterator>

namespace {

struct NamedCode {
    AAX_Result code;
    const char* name;
};

#define NAMED(code)                                                                                          \
    { code, #code }

// Every named failure, in the order of the values.
constexpr NamedCode kNamedCodes[] = {
    NAMED(AAX_ERROR_ARGUMENT_BUFFER_OVERFLOW),
    NAMED(AAX_ERROR_INVALID_INTERNAL_DATA),
    NAMED(AAX_ERROR_NULL_ARGUMENT),
    NAMED(AAX_ERROR_INVALID_ARGUMENT),
    NAMED(AAX_ERROR_UNKNOWN_EXCEPTION),
    NAMED(AAX_ERROR_UNKNOWN_ID),
    NAMED(AAX_ERROR_INVALID_PATH),
    NAMED(AAX_ERROR_PROPERTY_UNDEFINED),
    NAMED(AAX_ERROR_UNKNOWN_PLUGIN),
    NAMED(AAX_ERROR_EMPTY_EFFECT_NAME),
    NAMED(AAX_ERROR_DUPLICATE_TYPE_ID),
    NAMED(AAX_ERROR_DUPLICATE_EFFECT_ID),
    NAMED(AAX_ERROR_NO_COMPONENTS),
    NAMED(AAX_ERROR_SIGNED_INT_OVERFLOW),
    NAMED(AAX_ERROR_INVALID_VIEW_SIZE),
    NAMED(AAX_ERROR_NOTIFICATION_FAILED),
    NAMED(AAX_ERROR_PLUGIN_NULL_PARAMETER),
    NAMED(AAX_ERROR_PLUGIN_NOT_AUTHORIZED),
    NAMED(AAX_RESULT_NEW_PACKET_POSTED),
    NAMED(AAX_ERROR_TOD_BEHIND),
    NAMED(AAX_ERROR_MALFORMED_CHUNK),
    NAMED(AAX_ERROR_INVALID_FIELD_INDEX),
    NAMED(AAX_ERROR_MIXER_THREAD_FALLING_BEHIND),
    NAMED(AAX_RESULT_ADD_FIELD_UNSUPPORTED_FIELD_TYPE),
    NAMED(AAX_RESULT_PACKET_STREAM_NOT_EMPTY),
    NAMED(AAX_ERROR_POST_PACKET_FAILED),
    NAMED(AAX_ERROR_INITIALIZING_PACKET_STREAM_THREAD),
    NAMED(AAX_ERROR_FIFO_FULL),
    NAMED(AAX_ERROR_DIRECT_ACCESS_OUT_OF_BOUNDS),
    NAMED(AAX_ERROR_FIELD_TYPE_DOES_NOT_SUPPORT_DIRECT_ACCESS),
    NAMED(AAX_ERROR_PORT_ID_OUT_OF_RANGE),
    NAMED(AAX_ERROR_NULL_COMPONENT),
    NAMED(AAX_ERROR_CONTEXT_ALREADY_HAS_METERS),
    NAMED(AAX_ERROR_INVALID_METER_TYPE),
    NAMED(AAX_ERROR_ACF_ERROR),
    NAMED(AAX_ERROR_NOT_INITIALIZED),
    NAMED(AAX_ERROR_INVALID_PARAMETER_INDEX),
    NAMED(AAX_ERROR_UNIMPLEMENTED),
    NAMED(AAX_ERROR_INCORRECT_CHUNK_SIZE),
    NAMED(AAX_ERROR_INVALID_CHUNK_ID),
    NAMED(AAX_ERROR_INVALID_CHUNK_INDEX),
    NAMED(AAX_ERROR_OLDER_VERSION),
    NAMED(AAX_ERROR_NULL_OBJECT),
    NAMED(AAX_ERROR_INVALID_METER_INDEX),
    NAMED(AAX_ERROR_INVALID_STRING_CONVERSION),
    NAMED(AAX_ERROR_INVALID_PARAMETER_ID),
};

#undef NAMED

constexpr AAX_Result kLowestNamedCode = kNamedCodes[0].code;
constexpr AAX_Result kHighestNamedCode = kNamedCodes[std::size(kNamedCodes) - 1].code;

constexpr bool isOneDenseRun() {
    for (std::size_t i = 0; i < std::size(kNamedCodes); ++i) {
        if (kNamedCodes[i].code != kLowestNamedCode + static_cast<AAX_Result>(i)) {
            return false;
        }
    }
    return true;
}
static_assert(isOneDenseRun(), "a code is found by its distance from the lowest one");

} // namespace

std::string AAX::AsStringResult(AAX_Result result) {
    if (result >= kLowestNamedCode && result <= kHighestNamedCode) {
        return kNamedCodes[result - kLowestNamedCode].name;
    }
    if (result == AAX_SUCCESS) {
        return "AAX_SUCCESS";
    }
    if (result >= AAX_ERROR_PLUGIN_END && result <= AAX_ERROR_PLUGIN_BEGIN) {
        return "plug-in defined error";
    }
    return "<unknown error code>";
}
