#include "Surround/Settings/QualityText.h"

#include <array>
#include <charconv>

namespace varno {
namespace {

// In every locale the shortest text that is this number.
std::string hertz(double rateHz) {
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), rateHz);
    return std::string(text.data(), result.ptr) + " Hz";
}

} // namespace

Quality qualityOf(const Oversampling& effect) {
    return {effect.wish(), effect.factor(), effect.instance().setup().sampleRateHz};
}

std::string qualityName(std::int32_t factor) {
    return std::to_string(factor) + 'x';
}

std::string qualityText(const Quality& quality) {
    const std::string used = qualityName(quality.used);
    return quality.used == quality.wish ? used
                                        : used + ", since " + qualityName(quality.wish) + " needs " +
                                              hertz(quality.wish * quality.rateHz);
}

} // namespace varno
