#include "Suggestion.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace varno {
namespace {

bool sameLetter(char left, char right) {
    return std::tolower(static_cast<unsigned char>(left)) == std::tolower(static_cast<unsigned char>(right));
}

// Least number of letters to insert, remove or replace to make one word of the other (Levenshtein distance).
std::size_t editDistance(std::string_view left, std::string_view right) {
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < right.size(); ++j) {
            const std::size_t replaced = diagonal + (sameLetter(left[i], right[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

} // namespace

std::string suggestion(std::string_view unknown, const std::vector<std::string>& known) {
    // A third of the letters may differ: enough for slips of the finger, too few to propose another word.
    std::size_t nearest = std::max<std::size_t>(1, unknown.size() / 3) + 1;
    const std::string* best = nullptr;
    for (const auto& name : known) {
        const std::size_t distance = editDistance(unknown, name);
        // A word of which every letter differs is no suggestion, however short.
        if (distance < nearest && distance < name.size()) {
            nearest = distance;
            best = &name;
        }
    }
    return best == nullptr ? std::string() : "; did you mean '" + *best + "'?";
}

} // namespace varno
