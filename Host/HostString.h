/// The host's own text for the plug-in to write to.
#ifndef VARNO_HOST_HOSTSTRING_H
#define VARNO_HOST_HOSTSTRING_H

#include "AAX_IString.h"

#include <string>

namespace varno {

/// Text without a limit of its own. [any]
class HostString : public AAX_IString {
public:
    HostString() = default;
    explicit HostString(std::string text)
        : mText(std::move(text)) {}
    HostString(const HostString&) = default;

    std::uint32_t Length() const override { return static_cast<std::uint32_t>(mText.size()); }
    std::uint32_t MaxLength() const override { return 0xFFFFFFFEU; }
    const char* Get() const override { return mText.c_str(); }
    void Set(const char* text) override { mText = text; }
    AAX_IString& operator=(const AAX_IString& other) override {
        mText = other.Get();
        return *this;
    }
    AAX_IString& operator=(const char* text) override {
        mText = text;
        return *this;
    }
    HostString& operator=(const HostString&) = default;

    /// The text as the host keeps it.
    const std::string& text() const { return mText; }

private:
    std::string mText;
};

} // namespace varno

#endif
