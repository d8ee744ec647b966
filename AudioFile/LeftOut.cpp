#include "AudioFile/LeftOut.h"

#include <algorithm>

namespace varno {

namespace {

constexpr std::size_t kMostNameBytes = 40;

LeftOut& entryOf(LeftOutList& list, LeftOutReason reason, LeftOutKind kind) {
    const auto entry = std::find_if(list.begin(), list.end(), [&](const LeftOut& one) {
        return one.reason == reason && one.kind == kind;
    });
    return entry != list.end() ? *entry : list.emplace_back(LeftOut{.reason = reason, .kind = kind});
}

void addName(LeftOut& entry, const std::string& name) {
    if (name.empty() || std::find(entry.names.begin(), entry.names.end(), name) != entry.names.end()) {
        return;
    }
    if (entry.names.size() < kMostLeftOutNames) {
        entry.names.push_back(name);
    } else {
        entry.hasMoreNames = true;
    }
}

} // namespace

void addLeftOut(LeftOutList& list, LeftOutReason reason, LeftOutKind kind, std::string_view name) {
    LeftOut& entry = entryOf(list, reason, kind);
    ++entry.count;
    addName(entry, std::string(name.substr(0, kMostNameBytes)));
}

void addLeftOut(LeftOutList& list, const LeftOutList& more) {
    for (const LeftOut& one : more) {
        LeftOut& entry = entryOf(list, one.reason, one.kind);
        entry.count += one.count;
        for (const std::string& name : one.names) {
            addName(entry, name);
        }
        entry.hasMoreNames |= one.hasMoreNames;
    }
}

} // namespace varno
