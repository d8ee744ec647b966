#include "Validate/Clap/ClapAttempts.h"

#include "CLAP/Clap/Events.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace varno::validate {
namespace {

using Bytes = std::vector<std::byte>;

constexpr std::uint16_t kUnknownEventType = 0x7FFF;
constexpr std::uint16_t kUnknownSpace = 0x1234;
constexpr std::byte kAnyByte{0x3F};

std::string wrongIf(bool isWrong, const char* what = "success") {
    return isWrong ? what : "";
}

// Events one after the other, each in memory of its own.
class Events {
public:
    template<class Event>
    void add(const Event& event) {
        const auto memory = std::make_shared<Event>(event);
        mEvents.emplace_back(memory, &memory->header);
    }

    clap_input_events_t list() {
        return {this,
                [](const clap_input_events_t* list) {
                    return static_cast<std::uint32_t>(static_cast<Events*>(list->ctx)->mEvents.size());
                },
                [](const clap_input_events_t* list, std::uint32_t index) -> const clap_event_header_t* {
                    const auto& events = static_cast<Events*>(list->ctx)->mEvents;
                    return index < events.size() ? events[index].get() : nullptr;
                }};
    }

private:
    std::vector<std::shared_ptr<const clap_event_header_t>> mEvents;
};

constexpr clap_output_events_t kTakesEvents = {
    nullptr, [](const clap_output_events_t*, const clap_event_header_t*) { return true; }};

// What looks like a value, and is an event of another kind.
clap_event_param_value_t disguised(clap_event_param_value_t event, std::uint16_t space, std::uint16_t type) {
    event.header.space_id = space;
    event.header.type = type;
    return event;
}

// What a plug-in writes; the host may be called within.
clap_ostream_t keeping(Bytes& bytes) {
    return {&bytes, [](const clap_ostream_t* to, const void* buffer, std::uint64_t size) {
                const auto* const begin = static_cast<const std::byte*>(buffer);
                static_cast<Bytes*>(to->ctx)->insert(static_cast<Bytes*>(to->ctx)->end(), begin,
                                                     begin + size);
                return static_cast<std::int64_t>(size);
            }};
}

// What a plug-in reads.
struct Source {
    std::span<const std::byte> rest;
    bool failsAtEnd = false;
    std::function<void()> hook{};
};

clap_istream_t reading(Source& source) {
    return {&source, [](const clap_istream_t* from, void* buffer, std::uint64_t size) -> std::int64_t {
                Source& all = *static_cast<Source*>(from->ctx);
                if (all.hook) {
                    all.hook();
                }
                const auto taken = all.rest.first(std::min<std::size_t>(size, all.rest.size()));
                std::ranges::copy(taken, static_cast<std::byte*>(buffer));
                all.rest = all.rest.subspan(taken.size());
                return taken.empty() && all.failsAtEnd ? -1 : static_cast<std::int64_t>(taken.size());
            }};
}

std::optional<Bytes> savedBy(const ClapUse& use) {
    Bytes bytes;
    const clap_ostream_t stream = keeping(bytes);
    return use.state != nullptr && use.state->save(use.plugin, &stream) ? std::optional(bytes) : std::nullopt;
}

// Identifiers of no parameter.
std::vector<clap_id> unknownIds(const ClapUse& use) {
    clap_id highest = 0;
    for (const clap_param_info_t& info : use.infos) {
        highest = std::max(highest, info.id);
    }
    std::vector<clap_id> ids = {CLAP_INVALID_ID, 0x80000000U, highest + 1};
    std::erase_if(ids, [&](clap_id id) {
        return std::ranges::any_of(use.infos, [&](const clap_param_info_t& info) { return info.id == id; });
    });
    return ids;
}

void addParameterCalls(const ClapUse& use, clap_id id, std::vector<Attempt>& attempts) {
    const std::string name = " of parameter " + std::to_string(id);
    attempts.push_back({"get_value()" + name, [use, id] {
                            double value = 0.0;
                            return wrongIf(use.params->get_value(use.plugin, id, &value));
                        }});
    attempts.push_back({"value_to_text()" + name, [use, id] {
                            std::array<char, CLAP_NAME_SIZE> text{};
                            return wrongIf(
                                use.params->value_to_text(use.plugin, id, 0.5, text.data(), CLAP_NAME_SIZE));
                        }});
    attempts.push_back({"text_to_value()" + name, [use, id] {
                            double value = 0.0;
                            return wrongIf(use.params->text_to_value(use.plugin, id, "1", &value));
                        }});
    const auto events = [id] {
        auto made = std::make_shared<Events>();
        made->add(clapValueEvent(id, 1.0));
        made->add(disguised(clapValueEvent(id, 1.0), CLAP_CORE_EVENT_SPACE_ID, CLAP_EVENT_PARAM_MOD));
        made->add(clapGestureEvent(id, true));
        made->add(clapGestureEvent(id, false));
        return made;
    };
    attempts.push_back({"flush() with events" + name, [use, events] {
                            const auto made = events();
                            const clap_input_events_t list = made->list();
                            use.params->flush(use.plugin, &list, &kTakesEvents);
                            return std::string();
                        }});
    attempts.push_back({"process() with events" + name, [use, events] {
                            use.process(events()->list());
                            return std::string();
                        }});
}

// Of types and spaces that there are not, with the identifier of a parameter where that of one would be.
void addUnknownEvents(const ClapUse& use, std::vector<Attempt>& attempts) {
    const clap_id known = use.infos.empty() ? 0 : use.infos.front().id;
    const double most = use.infos.empty() ? 1.0 : use.infos.front().max_value;
    attempts.push_back({"process() with events of unknown types", [use, known, most] {
                            Events events;
                            const auto event = clapValueEvent(known, most);
                            events.add(disguised(event, CLAP_CORE_EVENT_SPACE_ID, kUnknownEventType));
                            events.add(disguised(event, kUnknownSpace, CLAP_EVENT_PARAM_VALUE));
                            use.process(events.list());
                            return std::string();
                        }});
}

// What others' states look like.
std::vector<std::pair<std::string, Bytes>> statesOfOthers(std::size_t size) {
    const auto bytesOf = [](const std::string& text) {
        const auto bytes = std::as_bytes(std::span(text));
        return Bytes(bytes.begin(), bytes.end());
    };
    constexpr std::size_t kLarge = 65536;
    Bytes chunk = bytesOf(std::string("CHNK\x10\0\0\0", 8));
    chunk.resize(std::max<std::size_t>(size, chunk.size()), kAnyByte);
    return {{"of no bytes", {}},
            {"of a text in XML",
             bytesOf("<?xml version=\"1.0\"?>\n<state plugin=\"other\"><p id=\"0\">1</p></state>\n")},
            {"of a text in JSON", bytesOf(R"({"plugin": "other", "0": 1.0, "gain": 1.0})")},
            {"of lines of text", bytesOf("other 1.0\ngain=1.0\n0=1\n")},
            {"of a chunk with a mark of its own", chunk},
            {"of zeros, as long as the own", Bytes(size)},
            {"of 64 KiB", Bytes(kLarge, kAnyByte)}};
}

// A call of the host's within one of the plug-in's.
struct ClapInnerCall {
    const char* name;
    void (*call)(const ClapUse& use);
};

void readAll(const ClapUse& use) {
    for (const clap_param_info_t& info : use.infos) {
        double value = 0.0;
        std::array<char, CLAP_NAME_SIZE> text{};
        (void)use.params->get_value(use.plugin, info.id, &value);
        (void)use.params->value_to_text(use.plugin, info.id, value, text.data(), CLAP_NAME_SIZE);
    }
}

void flushNothing(const ClapUse& use) {
    if (use.params != nullptr) {
        Events none;
        const clap_input_events_t list = none.list();
        use.params->flush(use.plugin, &list, &kTakesEvents);
    }
}

constexpr ClapInnerCall kClapInnerCalls[] = {
    {"get_value() and value_to_text()", readAll},
    {"flush()", flushNothing},
    {"save()", [](const ClapUse& use) { (void)savedBy(use); }},
    {"latency.get()",
     [](const ClapUse& use) { (void)(use.latency != nullptr && use.latency->get(use.plugin) > 0); }},
    {"get_extension()", [](const ClapUse& use) { use.plugin->get_extension(use.plugin, CLAP_EXT_PARAMS); }},
    {"on_main_thread()", [](const ClapUse& use) { use.plugin->on_main_thread(use.plugin); }},
};

// A use of the plug-in, with what the host does whenever it is called.
struct ClapOuterCall {
    const char* name;
    std::string (*use)(const ClapUse& use, const Bytes& state, const std::function<void()>& hook);
};

std::string loadState(const ClapUse& use, const Bytes& state, const std::function<void()>& hook) {
    Source source{.rest = state, .hook = hook};
    const clap_istream_t stream = reading(source);
    return use.state == nullptr || use.state->load(use.plugin, &stream) ? "" : "a state of its own refused";
}

std::string saveState(const ClapUse& use, const Bytes& /*state*/, const std::function<void()>& hook) {
    struct Sink {
        const std::function<void()>& hook;
    } sink{hook};
    const clap_ostream_t stream{&sink, [](const clap_ostream_t* to, const void*, std::uint64_t size) {
                                    static_cast<Sink*>(to->ctx)->hook();
                                    return static_cast<std::int64_t>(size);
                                }};
    return use.state == nullptr || use.state->save(use.plugin, &stream) ? "" : "a state that cannot be saved";
}

// Every parameter to each of its ends, then as it is at the start.
std::string flushValues(const ClapUse& use, const Bytes& /*state*/, const std::function<void()>& /*hook*/) {
    for (const clap_param_info_t& info : use.infos) {
        Events events;
        for (const double value : {info.min_value, info.max_value, info.default_value}) {
            events.add(clapValueEvent(info.id, value));
        }
        const clap_input_events_t list = events.list();
        use.params->flush(use.plugin, &list, &kTakesEvents);
        use.plugin->on_main_thread(use.plugin);
    }
    return {};
}

std::string restart(const ClapUse& use, const Bytes& /*state*/, const std::function<void()>& /*hook*/) {
    return use.restart() ? "" : "it cannot be activated again";
}

constexpr ClapOuterCall kClapOuterCalls[] = {
    {"load()", loadState}, {"save()", saveState}, {"flush()", flushValues}, {"activate()", restart}};

// The host's answer to each call: once, not within itself.
std::function<void()> onceWithin(const ClapUse& use, const ClapInnerCall& inner) {
    return [use, &inner, isWithin = std::make_shared<bool>(false)] {
        if (!std::exchange(*isWithin, true)) {
            inner.call(use);
            *isWithin = false;
        }
    };
}

} // namespace

std::vector<Attempt> unknownIdentifiers(const ClapUse& use) {
    std::vector<Attempt> attempts;
    for (const char* const id : {"", "urn:unknown", "clap.params/none"}) {
        attempts.push_back({"get_extension(\"" + std::string(id) + "\")", [use, id] {
                                return wrongIf(use.plugin->get_extension(use.plugin, id) != nullptr,
                                               "an extension");
                            }});
    }
    if (use.params != nullptr) {
        for (const clap_id id : unknownIds(use)) {
            addParameterCalls(use, id, attempts);
        }
        const auto count = static_cast<std::uint32_t>(use.infos.size());
        for (const std::uint32_t index : {count, count + 1, 0xFFFFFFFFU}) {
            attempts.push_back({"get_info() of index " + std::to_string(index), [use, index] {
                                    clap_param_info_t info{};
                                    return wrongIf(use.params->get_info(use.plugin, index, &info));
                                }});
        }
    }
    addUnknownEvents(use, attempts);
    return attempts;
}

std::vector<Attempt> foreignStates(const ClapUse& use) {
    std::vector<Attempt> attempts;
    const Bytes own = savedBy(use).value_or(Bytes());
    for (const auto& [name, bytes] : statesOfOthers(own.size())) {
        attempts.push_back({"load() " + name, [use, state = bytes] {
                                Source source{.rest = state};
                                const clap_istream_t stream = reading(source);
                                (void)use.state->load(use.plugin, &stream);
                                return std::string();
                            }});
    }
    for (const std::size_t size : {std::size_t{0}, own.size() / 2}) {
        attempts.push_back(
            {"load() of a stream that fails after " + std::to_string(size) + " bytes",
             [use, state = Bytes(own.begin(), own.begin() + static_cast<std::ptrdiff_t>(size))] {
                 Source source{.rest = state, .failsAtEnd = true};
                 const clap_istream_t stream = reading(source);
                 return wrongIf(use.state->load(use.plugin, &stream));
             }});
    }
    return attempts;
}

std::vector<Attempt> callsFromWithin(const ClapUse& use) {
    std::vector<Attempt> attempts;
    const auto state = std::make_shared<const Bytes>(savedBy(use).value_or(Bytes()));
    for (const ClapOuterCall& outer : kClapOuterCalls) {
        for (const ClapInnerCall& inner : kClapInnerCalls) {
            attempts.push_back({std::string(outer.name) + " with a host that calls " + inner.name +
                                    " within its functions and streams",
                                [use, &outer, &inner, state] {
                                    const std::string usual = outer.use(use, *state, [] {});
                                    const auto hook = onceWithin(use, inner);
                                    use.host->setHook(hook);
                                    std::string wrong = outer.use(use, *state, hook);
                                    use.plugin->on_main_thread(use.plugin);
                                    use.host->setHook({});
                                    return wrong == usual ? std::string() : wrong;
                                }});
        }
    }
    return attempts;
}

} // namespace varno::validate
