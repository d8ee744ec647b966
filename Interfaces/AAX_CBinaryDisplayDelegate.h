/// Two texts for off and on.
#ifndef VARNO_INTERFACES_AAX_CBINARYDISPLAYDELEGATE_H
#define VARNO_INTERFACES_AAX_CBINARYDISPLAYDELEGATE_H

#include "AAX_CString.h"
#include "AAX_IDisplayDelegate.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

/// One text for false and one for true, with any number of shorter pairs for small displays.
template<class T>
class AAX_CBinaryDisplayDelegate final : public AAX_IDisplayDelegate<T> {
public:
    /// The texts are copied.
    AAX_CBinaryDisplayDelegate(const char* falseString, const char* trueString)
        : mFalseString(falseString),
          mTrueString(trueString),
          mMaxStringLength(std::max(mFalseString.Length(), mTrueString.Length())) {}

    std::unique_ptr<AAX_IDisplayDelegate<T>> Clone() const override {
        return std::make_unique<AAX_CBinaryDisplayDelegate>(*this);
    }
    bool ValueToString(T value, AAX_CString* outText) const override;
    /// The full text where the longer of the two fits or where there are no shortened pairs; else that of the
    /// widest pair meant for at most `maxChars` characters, and where there is none that of the narrowest.
    /// [any]
    bool ValueToString(T value, int32_t maxChars, AAX_CString* outText) const override;
    /// Only the two full texts are values. [any]
    bool StringToValue(const AAX_CString& text, T* outValue) const override;

    /// Adds a pair of texts (copied) meant for `maxChars` characters. Of pairs with the same number the last
    /// one added is shown.
    void AddShortenedStrings(const char* falseString, const char* trueString, int32_t maxChars);

private:
    struct StringTable {
        int32_t mMaxChars = 0;
        AAX_CString mFalseString;
        AAX_CString mTrueString;
    };

    AAX_CString mFalseString;
    AAX_CString mTrueString;
    uint32_t mMaxStringLength;                  ///< Of the longer full text, in characters.
    std::vector<StringTable> mShortenedStrings; ///< By mMaxChars, ascending.
};

template<class T>
bool AAX_CBinaryDisplayDelegate<T>::ValueToString(T value, AAX_CString* outText) const {
    *outText = value ? mTrueString : mFalseString;
    return true;
}

template<class T>
bool AAX_CBinaryDisplayDelegate<T>::ValueToString(T value, int32_t maxChars, AAX_CString* outText) const {
    const int32_t limit = std::max(maxChars, 0);
    if (mShortenedStrings.empty() || static_cast<uint32_t>(limit) >= mMaxStringLength) {
        return ValueToString(value, outText);
    }
    auto row = std::find_if(mShortenedStrings.rbegin(), mShortenedStrings.rend(),
                            [limit](const StringTable& table) { return table.mMaxChars <= limit; });
    const StringTable& chosen = row != mShortenedStrings.rend() ? *row : mShortenedStrings.front();
    *outText = value ? chosen.mTrueString : chosen.mFalseString;
    return true;
}

template<class T>
bool AAX_CBinaryDisplayDelegate<T>::StringToValue(const AAX_CString& text, T* outValue) const {
    *outValue = text == mTrueString;
    return *outValue || text == mFalseString;
}

template<class T>
void AAX_CBinaryDisplayDelegate<T>::AddShortenedStrings(const char* falseString, const char* trueString,
                                                        int32_t maxChars) {
    mShortenedStrings.push_back({maxChars, AAX_CString(falseString), AAX_CString(trueString)});
    std::stable_sort(
        mShortenedStrings.begin(), mShortenedStrings.end(),
        [](const StringTable& left, const StringTable& right) { return left.mMaxChars < right.mMaxChars; });
}

#endif
