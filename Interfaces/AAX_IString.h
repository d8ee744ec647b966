/// Text exchanged between plug-in and host.
#ifndef VARNO_INTERFACES_AAX_ISTRING_H
#define VARNO_INTERFACES_AAX_ISTRING_H

#include <cstdint>

/// 8-bit, zero-terminated text. Either side may implement it; the other reads and writes it only through
/// these operations. Not synchronised: one thread at a time per object.
class AAX_IString {
public:
    virtual ~AAX_IString() = default;
    /// Number of characters, without the terminator. [any]
    virtual uint32_t Length() const = 0;
    /// Largest number of characters that the implementation accepts. [any]
    virtual uint32_t MaxLength() const = 0;
    /// The text, zero-terminated; borrowed, valid until the next modification. Never null. [any]
    virtual const char* Get() const = 0;
    /// Replaces the text by a copy of `text`, which must not be null. [any]
    virtual void Set(const char* text) = 0;
    /// Replaces the text by a copy of another implementation's. [any]
    virtual AAX_IString& operator=(const AAX_IString& other) = 0;
    /// Replaces the text by a copy of `text`, which must not be null. [any]
    virtual AAX_IString& operator=(const char* text) = 0;

protected:
    AAX_IString() = default;
    AAX_IString(const AAX_IString&) = default;
    AAX_IString(AAX_IString&&) = default;
};

#endif
