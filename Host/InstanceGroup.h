/// Several running instances that are processed together.
#ifndef VARNO_HOST_INSTANCEGROUP_H
#define VARNO_HOST_INSTANCEGROUP_H

#include "Host/Instance.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace varno {

/// A buffer of one member of a group, as the arguments of Instance::process.
struct MemberBuffer {
    const float* const* inputs = nullptr;
    float* const* outputs = nullptr;
    std::int32_t frames = 0;
};

/// Instances whose routine is called once for all of them, with the result of Instance::process of one after
/// the other. A routine may process several at a time in less than the sum of their times; one that does asks
/// for neighbours with buffers of the same length. Each member keeps its own packets, clock, meters and
/// maximum buffer; one that processes alone in between is still a member.
class InstanceGroup {
public:
    /// Allocates all that `process` needs. Throws HostError where there is no instance, where one is there
    /// twice, or where they are not of one module and variant. @param members borrowed, alive for as long as
    /// this is; in the order in which they are processed [main]
    explicit InstanceGroup(const std::vector<Instance*>& members);

    std::size_t size() const { return mMembers.size(); }

    /// Processes a buffer of each member, which may also have 0 frames: takes up the pending packets of all
    /// members, then calls the routine. What one member has put out can be the input of a later one. Two
    /// channels, of one member or of two, have the same memory or no sample in common. Buffers of more than
    /// their member's maximum are processed in several calls. A member that another thread processes is left
    /// out and reported as a broken contract. No lock, no allocation, no system call, no exception. @param
    /// buffers one for each member [audio]
    void process(std::span<const MemberBuffer> buffers) noexcept;

private:
    struct Member {
        Instance* instance = nullptr;
        MemberBuffer buffer;
        bool isProcessing = false; ///< Whether it takes part in the present call.

        std::int32_t maximumFrames() const { return instance->setup().maximumFrames; }
        bool isOneBuffer() const { return buffer.frames <= maximumFrames(); }
        bool isDividedLike(const Member& other) const {
            return buffer.frames == other.buffer.frames && maximumFrames() == other.maximumFrames();
        }
    };

    std::span<Member> membersOfOneCall(std::span<Member> members) const noexcept;
    void processTogether(std::span<Member> members) noexcept;

    std::vector<Member> mMembers;
    AAX_CProcessProc mProcess;
    std::vector<void*> mContexts; ///< Of the present call of the routine.
};

} // namespace varno

#endif
