/// Unsigned integers as bytes, most significant first.
#ifndef VARNO_LIBS_AAXLIBRARY_SOURCE_BIGENDIAN_H
#define VARNO_LIBS_AAXLIBRARY_SOURCE_BIGENDIAN_H

#include <concepts>
#include <cstddef>

/// Writes the sizeof(U) bytes of `value` to `bytes`.
template<std::unsigned_integral U>
void WriteBigEndian(U value, char* bytes) {
    for (std::size_t i = sizeof(U); i > 0; --i) {
        bytes[i - 1] = static_cast<char>(static_cast<unsigned char>(value));
        value = static_cast<U>(value >> 8U);
    }
}

/// Reads sizeof(U) bytes at `bytes`.
template<std::unsigned_integral U>
U ReadBigEndian(const char* bytes) {
    U value = 0;
    for (std::size_t i = 0; i < sizeof(U); ++i) {
        value = static_cast<U>((value << 8U) | static_cast<unsigned char>(bytes[i]));
    }
    return value;
}

#endif
