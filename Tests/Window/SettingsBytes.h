/// The settings of a desktop in the binary form of XSETTINGS.
#ifndef VARNO_TESTS_WINDOW_SETTINGSBYTES_H
#define VARNO_TESTS_WINDOW_SETTINGSBYTES_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace varno::test {

/// Made from what is added, in the order of bytes of one kind of machine.
class SettingsBytes {
public:
    explicit SettingsBytes(bool isBigEndian = false)
        : mIsBigEndian(isBigEndian) {}

    SettingsBytes& integer(std::string_view name, std::int32_t value) {
        begin(0, name);
        number(static_cast<std::uint32_t>(value), 4);
        return *this;
    }
    SettingsBytes& text(std::string_view name, std::string_view value) {
        begin(1, name);
        number(static_cast<std::uint32_t>(value.size()), 4);
        padded(value);
        return *this;
    }
    SettingsBytes& colour(std::string_view name) {
        begin(2, name);
        mBody += "rrggbbaa";
        return *this;
    }
    /// One of a type that nobody knows, which has four bytes.
    SettingsBytes& unknown(std::string_view name) {
        begin(7, name);
        number(0, 4);
        return *this;
    }

    std::string bytes() const {
        SettingsBytes header(mIsBigEndian);
        header.number(mIsBigEndian ? 1 : 0, 1);
        header.mBody.append(3, '\0');
        header.number(17, 4); // of the last change
        header.number(mCount, 4);
        return header.mBody + mBody;
    }

private:
    void begin(std::uint32_t type, std::string_view name) {
        ++mCount;
        number(type, 1);
        number(0, 1);
        number(static_cast<std::uint32_t>(name.size()), 2);
        padded(name);
        number(17, 4);
    }
    void number(std::uint32_t value, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) {
            const std::size_t place = mIsBigEndian ? size - 1 - i : i;
            mBody += static_cast<char>(value >> (8 * place) & 0xFF);
        }
    }
    void padded(std::string_view bytes) {
        mBody += bytes;
        mBody.append((4 - bytes.size() % 4) % 4, '\0');
    }

    bool mIsBigEndian;
    std::uint32_t mCount = 0;
    std::string mBody;
};

} // namespace varno::test

#endif
