#include "Surround/Settings/Suggestion.h"

#include "Host/HostError.h"

#include <algorithm>
#include <cctype>

namespace varno {
namespace {

bool sameLetter(char left, char right) {
    return std::tolower(static_cast<unsigned char>(left)) == std::tolower(static_cast<unsigned char>(right));
}

// Least number of letters to insert, remove or replace, and of neighbours to swap, to make one word of the
// other.
std::size_t editDistance(std::string_view left, std::string_view right) {
    // distance[i][j] is that of the first i letters of one to the first j of the other.
    std::vector distance(left.size() + 1, std::vector<std::size_t>(right.size() + 1));
    for (std::size_t i = 0; i <= left.size(); ++i) {
        for (std::size_t j = 0; j <= right.size(); ++j) {
            if (i == 0 || j == 0) {
                distance[i][j] = i + j;
                continue;
            }
            const std::size_t replaced = sameLetter(left[i - 1], right[j - 1]) ? 0 : 1;
            distance[i][j] =
                std::min({distance[i - 1][j] + 1, distance[i][j - 1] + 1, distance[i - 1][j - 1] + replaced});
            if (i > 1 && j > 1 && sameLetter(left[i - 1], right[j - 2]) &&
                sameLetter(left[i - 2], right[j - 1])) {
                distance[i][j] = std::min(distance[i][j], distance[i - 2][j - 2] + 1);
            }
        }
    }
    return distance[left.size()][right.size()];
}

} // namespace

std::string suggestion(std::string_view unknown, const std::vector<std::string>& known) {
    // A third of the letters may differ: enough for typing errors, too few to propose another word.
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
    return best == nullptr ? std::string() : "; did you mean " + quoted(*best) + "?";
}

} // namespace varno
