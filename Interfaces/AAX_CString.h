/// The plug-in's text.
#ifndef VARNO_INTERFACES_AAX_CSTRING_H
#define VARNO_INTERFACES_AAX_CSTRING_H

#include "AAX_IString.h"

#include <string>

/// Growable 8-bit text, limited by memory alone. The conversions from and to numbers do not depend on the
/// process's locale. Positions beyond the end raise std::out_of_range where said. One thread at a time per
/// object.
class AAX_CString : public AAX_IString {
public:
    /// Length of the longest text that any implementation of this class reports, in characters.
    static constexpr uint32_t kMaxLength = 0xFFFFFFFE;

    AAX_CString() = default;
    /// A copy of `text`; null gives the empty text.
    AAX_CString(const char* text);
    AAX_CString(const AAX_CString& other) = default;
    explicit AAX_CString(const AAX_IString& other);
    ~AAX_CString() override = default;

    uint32_t Length() const override;
    uint32_t MaxLength() const override;
    const char* Get() const override;
    void Set(const char* text) override;
    AAX_CString& operator=(const AAX_IString& other) override;
    AAX_CString& operator=(const char* text) override;

    /// Not defaulted: that would call the interface's assignment, which has no body.
    AAX_CString& operator=(const AAX_CString& other) {
        mText = other.mText;
        return *this;
    }
    /// Exchanges the two texts, so that each keeps its storage for the next use: `other` then has the former
    /// text of this one.
    AAX_CString& operator=(AAX_CString&& other) noexcept;

    /// As Get.
    const char* CString() const { return Get(); }
    /// Empties the text and keeps its storage.
    void Clear() { mText.clear(); }
    /// Erases characters from `pos` on: `n` of them where the text has so many behind `pos`, otherwise n less
    /// the number of those that it has (at most all of them). Raises std::out_of_range for a `pos` beyond the
    /// end.
    void Erase(uint32_t pos, uint32_t n);
    /// Appends a number with `precision` digits (0 or more) behind the decimal point and no exponent.
    void AppendNumber(double number, int32_t precision);
    /// Reads the number that the text begins with, after white space; what follows it is ignored. Returns
    /// false and writes 0.0 when there is none or a double cannot hold it. `outNumber` must not be null.
    bool ToDouble(double* outNumber) const;
    /// Sets `out` (borrowed, not null) to at most `n` characters from `pos` on. Raises std::out_of_range for
    /// a `pos` beyond the end.
    void SubString(uint32_t pos, uint32_t n, AAX_IString* out) const;

    /// Whether the texts up to their first zero byte are the same.
    bool operator==(const AAX_CString& other) const;
    bool operator!=(const AAX_CString& other) const { return !(*this == other); }
    /// The character at `index`, which must be below the length: it is not checked.
    char& operator[](uint32_t index) { return mText[index]; }

private:
    std::string mText;
};

#endif
