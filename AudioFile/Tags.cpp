#include "AudioFile/Tags.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <taglib/tstring.h>

namespace varno {

void addMissing(std::vector<TextTag>& texts, const std::vector<TextTag>& others) {
    std::set<std::string> keys;
    for (const TextTag& text : texts) {
        keys.insert(text.key);
    }
    std::copy_if(others.begin(), others.end(), std::back_inserter(texts),
                 [&](const TextTag& text) { return !keys.contains(text.key); });
}

bool isUtf8(std::string_view bytes) {
    const std::string text(bytes);
    return TagLib::String(text, TagLib::String::UTF8).to8Bit(true) == text;
}

std::string toUtf8(std::string_view bytes) {
    return isUtf8(bytes) ? std::string(bytes)
                         : TagLib::String(std::string(bytes), TagLib::String::Latin1).to8Bit(true);
}

std::string upperCase(std::string_view text) {
    std::string upper(text);
    for (char& c : upper) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return upper;
}

} // namespace varno
