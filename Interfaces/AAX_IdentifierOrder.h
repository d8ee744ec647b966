/// The order of parameter identifiers.
#ifndef VARNO_INTERFACES_AAX_IDENTIFIERORDER_H
#define VARNO_INTERFACES_AAX_IDENTIFIERORDER_H

#include <algorithm>
#include <cstddef>
#include <string_view>

/// Byte by byte, as std::string has it, for containers that find by any text without a copy of it. Written
/// out, because identifiers are so short, and differ so soon, that the call behind the comparison of strings
/// costs more than the comparison.
struct AAX_SIdentifierOrder {
    using is_transparent = void;

    /// Whether `left` comes before `right`. [any]
    bool operator()(std::string_view left, std::string_view right) const {
        const std::size_t common = std::min(left.size(), right.size());
        for (std::size_t i = 0; i < common; ++i) {
            if (left[i] != right[i]) {
                return static_cast<unsigned char>(left[i]) < static_cast<unsigned char>(right[i]);
            }
        }
        return left.size() < right.size();
    }
};

#endif
