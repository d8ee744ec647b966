/// Shared plain types of the plug-in architecture.
#ifndef VARNO_INTERFACES_AAX_H
#define VARNO_INTERFACES_AAX_H

#include "AAX_Enums.h"
#include "AAX_Errors.h"
#include "ACF/IACFUnknown.h"

#include <cstdint>

/// Zero-terminated ASCII identifier of a parameter, at most 31 characters; borrowed for the call.
using AAX_CParamID = const char*;
/// Index of a field in an algorithm's context.
using AAX_CFieldIndex = int32_t;
/// Four-character code: a 32-bit value whose bytes, most significant first, are four ASCII characters.
using AAX_CTypeID = uint32_t;
/// Position in frames from the start of the project's time line.
using AAX_CTimeOfDay = int64_t;

/// The four-character code of a literal of four characters. [any]
constexpr AAX_CTypeID AAX_FourCC(const char (&text)[5]) {
    AAX_CTypeID code = 0;
    for (int i = 0; i < 4; ++i) {
        code = (code << 8) | static_cast<unsigned char>(text[i]);
    }
    return code;
}

/// A point in a view, in pixels from its top left corner.
struct AAX_Point {
    float vert = 0.0F;
    float horz = 0.0F;
};

/// A rectangle in a view, in pixels.
struct AAX_Rect {
    float top = 0.0F;
    float left = 0.0F;
    float width = 0.0F;
    float height = 0.0F;
};

/// Header of a saved state; the data area of fSize bytes follows it directly at fData. Integers are in the
/// machine's byte order. Whoever makes the record allocates 56 + fSize bytes.
struct AAX_SPlugInChunk {
    int32_t fSize;    ///< Bytes of the data area.
    int32_t fVersion; ///< Version of the saved state.
    uint32_t fManufacturerID;
    uint32_t fProductID;
    uint32_t fPlugInID;
    uint32_t fChunkID;
    char fName[32]; ///< Zero-padded name of the state.
    char fData[1];  ///< First byte of the data area.
};

/// Bytes before the data area of an AAX_SPlugInChunk.
inline constexpr int32_t kAAX_PlugInChunkHeaderSize = 56;

/// One short MIDI message.
struct AAX_CMidiPacket {
    uint32_t mTimestamp; ///< Frames from the start of the buffer.
    uint32_t mLength;    ///< Bytes used of mData.
    unsigned char mData[4];
};

/// Names the modes of direct memory access of DSP hardware.
struct AAX_IDma {
    enum EMode : int32_t {};
};

/// A processing routine: processes one buffer of every instance context from inInstancesBegin up to, and not
/// including, inInstancesEnd. [audio]
using AAX_CProcessProc = void (*)(void* const inInstancesBegin[], const void* inInstancesEnd);
/// A routine that is called when an instance of an algorithm is added or removed. Returns an AAX_Result.
/// [main]
using AAX_CInstanceInitProc = int32_t (*)(const void* inInstanceContext, int32_t inAction);
/// A routine that the host runs in the background. Returns an AAX_Result. [any]
using AAX_CBackgroundProc = int32_t (*)();
/// Shape of a creation procedure: returns a new object with no reference held yet, or null. [main]
using AAX_CCreateObjectProc = IACFUnknown* (*)();

#endif
