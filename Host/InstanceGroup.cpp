#include "Host/InstanceGroup.h"

#include "Host/AudioContext.h"
#include "Host/HostError.h"
#include "Host/InstanceHost.h"

#include <algorithm>

namespace varno {

namespace {

const std::vector<Instance*>& requireGroup(const std::vector<Instance*>& members) {
    if (members.empty()) {
        throw HostError("found a group without an instance");
    }
    const Instance& first = *members.front();
    for (auto member = members.begin(); member != members.end(); ++member) {
        if (std::find(members.begin(), member, *member) != member) {
            throw HostError("found an instance twice in a group");
        }
        if (&(*member)->module() != &first.module() || &(*member)->variant() != &first.variant()) {
            throw HostError("found instances of different variants in a group");
        }
    }
    return members;
}

} // namespace

InstanceGroup::InstanceGroup(const std::vector<Instance*>& members)
    : mProcess(requireGroup(members).front()->variant().natives.front().process) {
    for (Instance* const member : members) {
        mMembers.push_back({member, {}});
    }
    mContexts.reserve(mMembers.size());
}

void InstanceGroup::process(std::span<const MemberBuffer> buffers) noexcept {
    const AudioThreadScope audioThread;
    for (std::size_t i = 0; i < mMembers.size(); ++i) {
        Member& member = mMembers[i];
        member.buffer = buffers[i];
        member.isProcessing = member.instance->beginProcessing();
        if (member.isProcessing) {
            member.instance->mAudio->takeUpPackets();
        }
    }
    for (std::span<Member> left = mMembers; !left.empty();) {
        const std::span<Member> now = membersOfOneCall(left);
        processTogether(now);
        left = left.subspan(now.size());
    }
    for (const Member& member : mMembers) {
        if (member.isProcessing) {
            member.instance->endProcessing();
        }
    }
}

// The first members, as far as each has one buffer, or as all have to be divided in the same way: a member
// that had more calls than the one before it would be ahead of its input.
std::span<InstanceGroup::Member> InstanceGroup::membersOfOneCall(std::span<Member> members) const noexcept {
    const Member& first = members.front();
    const auto end = std::find_if(members.begin(), members.end(), [&](const Member& member) {
        return first.isOneBuffer() ? !member.isOneBuffer() : !member.isDividedLike(first);
    });
    return {members.begin(), end};
}

void InstanceGroup::processTogether(std::span<Member> members) noexcept {
    std::int32_t done = 0;
    do {
        mContexts.clear();
        for (const Member& member : members) {
            if (member.isProcessing) {
                AudioContext& audio = *member.instance->mAudio;
                if (done > 0) {
                    audio.takeUpPackets();
                }
                const std::int32_t frames = std::min(member.buffer.frames - done, member.maximumFrames());
                mContexts.push_back(audio.begin(member.buffer.inputs, member.buffer.outputs, done, frames));
            }
        }
        mProcess(mContexts.data(), mContexts.data() + mContexts.size());
        for (const Member& member : members) {
            if (member.isProcessing) {
                member.instance->mAudio->end();
            }
        }
        done += members.front().maximumFrames();
    } while (done < members.front().buffer.frames);
}

} // namespace varno
