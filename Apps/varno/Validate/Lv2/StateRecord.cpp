#include "Validate/Lv2/StateRecord.h"

#include <bit>
#include <utility>

namespace varno::validate {
namespace {

class ByteWriter {
public:
    void number(std::uint32_t value) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            mBytes.push_back(static_cast<std::byte>(value >> shift));
        }
    }
    void rest(std::span<const std::byte> bytes) { mBytes.insert(mBytes.end(), bytes.begin(), bytes.end()); }
    void block(std::span<const std::byte> bytes) {
        number(static_cast<std::uint32_t>(bytes.size()));
        rest(bytes);
    }
    void text(const std::string& text) { block(std::as_bytes(std::span(text))); }

    std::vector<std::byte> take() { return std::move(mBytes); }

private:
    std::vector<std::byte> mBytes;
};

// Reads what ByteWriter has written. After a failure everything fails.
class ByteReader {
public:
    explicit ByteReader(std::span<const std::byte> bytes)
        : mRest(bytes) {}

    std::uint32_t number() {
        std::uint32_t value = 0;
        const auto bytes = take(4);
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            value |= static_cast<std::uint32_t>(bytes[i]) << (8 * i);
        }
        return value;
    }
    std::vector<std::byte> block() { return bytes(number()); }
    std::vector<std::byte> rest() { return bytes(mRest.size()); }
    std::string text() {
        std::string text;
        for (const std::byte byte : block()) {
            text += static_cast<char>(byte);
        }
        return text;
    }

    bool isGood() const { return mIsGood; }
    bool isAtEnd() const { return mRest.empty(); }

private:
    std::vector<std::byte> bytes(std::size_t size) {
        const auto taken = take(size);
        return {taken.begin(), taken.end()};
    }
    std::span<const std::byte> take(std::size_t size) {
        mIsGood = mIsGood && size <= mRest.size();
        if (!mIsGood) {
            return {};
        }
        const auto taken = mRest.first(size);
        mRest = mRest.subspan(size);
        return taken;
    }

    std::span<const std::byte> mRest;
    bool mIsGood = true;
};

} // namespace

std::vector<std::byte> bytesOf(const Lv2State& state) {
    ByteWriter writer;
    writer.number(static_cast<std::uint32_t>(state.values.size()));
    for (const auto& [symbol, value] : state.values) {
        writer.text(symbol);
        writer.number(std::bit_cast<std::uint32_t>(value));
    }
    writer.number(static_cast<std::uint32_t>(state.properties.size()));
    std::size_t left = state.properties.size();
    for (const auto& [key, property] : state.properties) {
        writer.text(key);
        writer.text(property.type);
        writer.number(property.flags);
        --left;
        if (left > 0) {
            writer.block(property.value);
        } else {
            writer.rest(property.value);
        }
    }
    return writer.take();
}

std::optional<Lv2State> stateOf(std::span<const std::byte> bytes) {
    ByteReader reader(bytes);
    Lv2State state;
    for (std::uint32_t left = reader.number(); reader.isGood() && left > 0; --left) {
        const std::string symbol = reader.text();
        state.values[symbol] = std::bit_cast<float>(reader.number());
    }
    for (std::uint32_t left = reader.number(); reader.isGood() && left > 0; --left) {
        StoredProperty& property = state.properties[reader.text()];
        property.type = reader.text();
        property.flags = reader.number();
        property.value = left > 1 ? reader.block() : reader.rest();
    }
    if (!reader.isGood() || !reader.isAtEnd()) {
        return std::nullopt;
    }
    return state;
}

} // namespace varno::validate
