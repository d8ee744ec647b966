#include "Render/GroupRender.h"

#include "Host/InstanceGroup.h"

#include <algorithm>
#include <optional>

namespace varno {
namespace {

bool isAlike(const FileRender& left, const FileRender& right) {
    return left.format().channels == right.format().channels && left.format().rateHz == right.format().rateHz;
}

// Files of equal rate and number of channels.
class Group {
public:
    Group(const std::vector<FileRender*>& files, const GroupListener& listener)
        : mListener(listener) {
        for (FileRender* const file : files) {
            mMembers.push_back({file});
        }
    }

    void render() {
        while (!mMembers.empty()) {
            keepWhere([](Member& member) {
                member.left = member.file->read() ? member.file->frames() : 0;
                return true;
            });
            keepWhere([this](Member& member) {
                if (member.left == 0) {
                    mListener.ended(*member.file);
                }
                return member.left > 0;
            });
            process();
            keepWhere([](Member& member) {
                member.file->write();
                return true;
            });
        }
    }

private:
    struct Member {
        FileRender* file;
        int left = 0;                      // frames that have been read and not processed
        std::vector<float*> channels = {}; // of these
    };

    // Removes members that `work` returns false for, or that it fails for.
    template<class Work>
    void keepWhere(const Work& work) {
        std::erase_if(mMembers, [&](Member& member) {
            try {
                return !work(member);
            } catch (...) {
                mListener.failed(*member.file);
                return true;
            }
        });
    }

    // All that has been read.
    void process() {
        for (Member& member : mMembers) {
            float* const* const samples = member.file->samples();
            member.channels.assign(samples, samples + member.file->format().channels);
        }
        while (std::ranges::any_of(mMembers, [](const Member& member) { return member.left > 0; })) {
            processBlocks();
        }
    }

    // A block of each member, or what is left up to a change of its settings.
    void processBlocks() {
        mBuffers.clear();
        keepWhere([this](Member& member) {
            BlockProcessor& processor = member.file->processor();
            const int frames = member.left > 0 ? processor.begin(member.left) : 0;
            mBuffers.push_back({member.channels.data(), member.channels.data(), frames});
            return true;
        });
        if (mMembers.empty()) {
            return;
        }
        processTogether();
        for (std::size_t i = 0; i < mMembers.size(); ++i) {
            const int frames = mBuffers[i].frames;
            if (frames > 0) {
                mMembers[i].file->processor().end(frames);
            }
            mMembers[i].left -= frames;
            for (float*& channel : mMembers[i].channels) {
                channel += frames;
            }
        }
    }

    // Oversampled ones have filters around their instances, and are processed one after the other.
    void processTogether() {
        if (mMembers.front().file->processor().effect().factor() == 1) {
            group().process(mBuffers);
            return;
        }
        for (std::size_t i = 0; i < mMembers.size(); ++i) {
            const MemberBuffer& buffer = mBuffers[i];
            mMembers[i].file->processor().effect().process(buffer.inputs, buffer.outputs, buffer.frames);
        }
    }

    // Of the present members.
    InstanceGroup& group() {
        if (!mGroup || mGroup->size() != mMembers.size()) {
            std::vector<Instance*> instances;
            for (const Member& member : mMembers) {
                instances.push_back(&member.file->processor().instance());
            }
            mGroup.emplace(instances);
        }
        return *mGroup;
    }

    const GroupListener& mListener;
    std::vector<Member> mMembers;
    std::vector<MemberBuffer> mBuffers;
    std::optional<InstanceGroup> mGroup;
};

} // namespace

std::vector<std::size_t> filesTogether(std::size_t files, std::size_t threads) {
    constexpr std::size_t kPair = 2;
    const std::size_t least = std::clamp<std::size_t>(files / threads, 1, kPair);
    std::vector<std::size_t> numbers;
    while (files > 0) {
        numbers.push_back(std::min(files, std::clamp(files / threads, least, kMostFilesTogether)));
        files -= numbers.back();
    }
    return numbers;
}

void renderTogether(const std::vector<FileRender*>& files, const GroupListener& listener) {
    std::vector<FileRender*> left = files;
    while (!left.empty()) {
        const FileRender& first = *left.front();
        const auto others = std::stable_partition(
            left.begin(), left.end(), [&](const FileRender* file) { return isAlike(*file, first); });
        Group(std::vector<FileRender*>(left.begin(), others), listener).render();
        left.erase(left.begin(), others);
    }
}

} // namespace varno
