/// Saved settings as a list of named values, and as the bytes of a chunk.
#ifndef VARNO_INTERFACES_AAX_CCHUNKDATAPARSER_H
#define VARNO_INTERFACES_AAX_CCHUNKDATAPARSER_H

#include "AAX.h"
#include "AAX_CString.h"

#include <vector>

/// Builds and reads the data area of a chunk. All its numbers are big-endian:
///
///     01 01 01 01                      marker
///     tag, name, 00, padding, value    one entry per value, each at a multiple of 4 from the start
///
/// | type   | tag  | value                            | bytes it takes                             |
/// |--------|------|----------------------------------|--------------------------------------------|
/// | float  | "f_" | IEEE-754 single                  | 4                                          |
/// | int32  | "l_" | two's complement                 | 4                                          |
/// | double | "d_" | IEEE-754 double                  | 8                                          |
/// | int16  | "s_" | two's complement, 2 bytes        | 4                                          |
/// | string | "r_" | its characters and a zero byte   | length + 1, rounded up to a multiple of 4  |
///
/// Not synchronised.
class AAX_CChunkDataParser {
public:
    /// Types of values. Floats and 16-bit integers come only from reading.
    enum EDataType : int32_t {
        eNone = 0, ///< Read under an unknown tag; holds nothing and is not written.
        eFloat = 1,
        eInt32 = 2,
        eDouble = 3,
        eInt16 = 4,
        eString = 5,
    };

    /// A named value.
    struct DataValue {
        EDataType mDataType = eNone;
        AAX_CString mDataName;
        double mNumber = 0.0; ///< The number, whatever its type: a double holds each of them exactly.
        AAX_CString mStringValue;
    };

    AAX_CChunkDataParser() = default;
    AAX_CChunkDataParser(const AAX_CChunkDataParser&) = delete;
    AAX_CChunkDataParser& operator=(const AAX_CChunkDataParser&) = delete;
    /// Moving takes the memory along; `other` is to be cleared or loaded before its next use.
    AAX_CChunkDataParser(AAX_CChunkDataParser&& other) = default;
    AAX_CChunkDataParser& operator=(AAX_CChunkDataParser&& other) = default;
    virtual ~AAX_CChunkDataParser() = default;

    /// Removes all values and forgets the version. Keeps memory for a few hundred values, so that saving,
    /// restoring and comparing again allocate nothing, and no more: a chunk may come from anywhere. [main]
    void Clear();

    /// Appends a value (name, which must not be null, and text copied); names may repeat. [main]
    void AddDouble(const char* name, double value);
    void AddInt32(const char* name, int32_t value);
    void AddString(const char* name, const AAX_CString& value);

    /// Writes out the value with a name, if the value found is of exactly this type (a float is no double, a
    /// 16-bit integer no int32). False, with nothing written, otherwise. Values are found fastest in the
    /// order in which they were added. [main]
    bool FindDouble(const char* name, double* outValue);
    bool FindInt32(const char* name, int32_t* outValue);
    bool FindString(const char* name, AAX_CString* outValue);
    /// The index of a value with a name, -1 for none. Looks from just behind the value found last to the end
    /// and then from the start. [main]
    int32_t FindName(const AAX_CString& name);

    /// Bytes of the data area; -1 when they are more than a chunk can have (2^31 - 1). [main]
    virtual int32_t GetChunkDataSize() const;
    /// Writes the data area and its size. `chunk` is the caller's and has room for the header and
    /// GetChunkDataSize() bytes. Returns AAX_SUCCESS, or kAAX_ChunkDataError with the size untouched. [main]
    AAX_Result GetChunkData(AAX_SPlugInChunk* chunk) const;
    /// Replaces the values by those of `chunk` (borrowed). The size in its header is taken as the truth: so
    /// many bytes of data area must be there. What lies in them may be anything; a value cut off by their
    /// end is missing, and without room for an entry or without the marker there are no values. [main]
    void LoadChunk(const AAX_SPlugInChunk* chunk);
    /// The version of the chunk loaded last, -1 for none. [main]
    int32_t GetChunkVersion() const { return mChunkVersion; }

protected:
    int32_t mLastFoundIndex = -1;
    int32_t mChunkVersion = -1;
    std::vector<DataValue> mDataValues;

private:
    int32_t FindIndex(const char* name);
    const DataValue* FindValue(const char* name, EDataType type);
    /// Appends a value of a type, for the caller to fill.
    DataValue& Add(EDataType type, const char* name);
};

/// Answer of AAX_CChunkDataParser::GetChunkData when the data cannot be written.
inline constexpr AAX_Result kAAX_ChunkDataError = -333;

#endif
