#include "Render/ChannelGroups.h"

#include "CommandLine/CommandError.h"
#include "Surround/Settings/NumberText.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <string_view>

namespace varno {
namespace {

constexpr std::size_t kLargestGroup = 2;

std::vector<std::string> partsOf(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find(separator, at), text.size());
        parts.emplace_back(text.substr(at, end - at));
        at = end + 1;
    }
    return parts;
}

} // namespace

std::vector<ChannelGroup> channelGroups(const std::string& text) {
    std::vector<ChannelGroup> groups;
    std::vector<int> named;
    for (const std::string& part : partsOf(text, ',')) {
        ChannelGroup& group = groups.emplace_back();
        for (const std::string& number : partsOf(part, '-')) {
            const int channel = numberFromText<int>(number).value_or(0);
            if (channel < 1 || group.size() == kLargestGroup) {
                throw UsageError("option --channels: expected channels and pairs of them such as 1-2,3,4, "
                                 "found " +
                                 inQuotes(text));
            }
            if (std::ranges::count(named, channel) > 0) {
                throw UsageError("option --channels: expected each channel once, found " +
                                 textFromNumber(channel) + " twice in " + inQuotes(text));
            }
            named.push_back(channel);
            group.push_back(channel - 1);
        }
    }
    return groups;
}

std::string channelsText(const ChannelGroup& group) {
    std::string text;
    for (const int channel : group) {
        text.append(text.empty() ? "" : "-").append(textFromNumber(channel + 1));
    }
    return text;
}

std::string channelGroupsText(const std::vector<ChannelGroup>& groups) {
    std::string text;
    for (const ChannelGroup& group : groups) {
        text.append(text.empty() ? "" : ",").append(channelsText(group));
    }
    return text;
}

ChannelGroup allChannels(int channels) {
    ChannelGroup group(static_cast<std::size_t>(channels));
    std::iota(group.begin(), group.end(), 0);
    return group;
}

std::vector<int> channelsOfNoGroup(const std::vector<ChannelGroup>& groups, int channels) {
    std::vector<int> left = allChannels(channels);
    for (const ChannelGroup& group : groups) {
        std::erase_if(left, [&](int channel) { return std::ranges::count(group, channel) > 0; });
    }
    return left;
}

} // namespace varno
