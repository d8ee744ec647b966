#ifndef VARNO_APPS_VARNO_RENDER_CHANNELGROUPS_H
#define VARNO_APPS_VARNO_RENDER_CHANNELGROUPS_H

#include <string>
#include <vector>

namespace varno {

/// Channels of a file that the effect processes together, counted from 0: one as mono, or two as stereo, the
/// left one first.
using ChannelGroup = std::vector<int>;

/// The groups of a text such as "1-2,3,4", which counts channels from 1: at least one group, no channel
/// twice. @throws UsageError that names the option --channels
std::vector<ChannelGroup> channelGroups(const std::string& text);

/// The text of one group: "1-2" or "3".
std::string channelsText(const ChannelGroup& group);

/// The text of several, as channelGroups() takes it.
std::string channelGroupsText(const std::vector<ChannelGroup>& groups);

/// One group of all channels of a file. @param channels at least 1
ChannelGroup allChannels(int channels);

/// The channels of a file that no group has. @param channels of the file
std::vector<int> channelsOfNoGroup(const std::vector<ChannelGroup>& groups, int channels);

} // namespace varno

#endif
