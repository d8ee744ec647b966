#include "Render/MetadataText.h"

#include "AudioFile/Metadata.h"

namespace varno {
namespace {

struct KindRow {
    LeftOutKind kind;
    const char* one;
    const char* several;
    bool isCounted; // "1 picture", but "the cue sheet"
};

// In the order of the text.
constexpr KindRow kKinds[] = {
    {LeftOutKind::kTags, "the tags", "sets of tags", false},
    {LeftOutKind::kComment, "comment", "comments", true},
    {LeftOutKind::kTagItem, "tag item", "tag items", true},
    {LeftOutKind::kPicture, "picture", "pictures", true},
    {LeftOutKind::kCueSheet, "the cue sheet", "cue sheets", false},
    {LeftOutKind::kCuePoint, "cue point", "cue points", true},
    {LeftOutKind::kCueText, "text of cue points", "texts of cue points", true},
    {LeftOutKind::kChunk, "chunk", "chunks", true},
    {LeftOutKind::kBlock, "application block", "application blocks", true},
};

constexpr LeftOutReason kReasons[] = {LeftOutReason::kNoPlace, LeftOutReason::kTooLarge,
                                      LeftOutReason::kUnreadable, LeftOutReason::kDescribesSamples};

std::string textOf(const LeftOut& entry, const KindRow& kind) {
    const bool isOne = entry.count == 1;
    std::string text = isOne && !kind.isCounted ? "" : std::to_string(entry.count) + " ";
    text += isOne ? kind.one : kind.several;
    std::string names;
    for (const auto& name : entry.names) {
        names += (names.empty() ? "" : ", ") + name;
    }
    if (entry.hasMoreNames) {
        names += " and others";
    }
    return names.empty() ? text : text + " (" + names + ")";
}

std::string textOf(const LeftOutList& leftOut, LeftOutReason reason) {
    std::string text;
    for (const auto& kind : kKinds) {
        for (const auto& entry : leftOut) {
            if (entry.kind == kind.kind && entry.reason == reason) {
                text += (text.empty() ? "" : ", ") + textOf(entry, kind);
            }
        }
    }
    return text;
}

std::string startOf(LeftOutReason reason, const RenderTask& task, Container container) {
    constexpr auto kMegabyte = std::int64_t{1} << 20;
    switch (reason) {
    case LeftOutReason::kNoPlace:
        return task.output + ": " + containerName(container) + " has no place for: ";
    case LeftOutReason::kTooLarge:
        return task.input + ": not carried over, beyond " + std::to_string(kMostCarriedBytes / kMegabyte) +
               " MiB of metadata: ";
    case LeftOutReason::kUnreadable:
        return task.input + ": not carried over, since it cannot be read: ";
    case LeftOutReason::kDescribesSamples:
        break;
    }
    return task.input + ": not carried over, since it describes the samples as they were: ";
}

} // namespace

std::vector<std::string> metadataWarnings(const LeftOutList& leftOut, const RenderTask& task,
                                          Container container) {
    std::vector<std::string> warnings;
    for (const auto reason : kReasons) {
        if (const std::string text = textOf(leftOut, reason); !text.empty()) {
            warnings.push_back(startOf(reason, task, container) + text);
        }
    }
    return warnings;
}

} // namespace varno
