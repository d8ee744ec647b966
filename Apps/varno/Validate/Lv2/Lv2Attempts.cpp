#include "Validate/Lv2/Lv2Attempts.h"

#include "Validate/Lv2/StateStore.h"

#include <array>
#include <cstring>
#include <lv2/atom/atom.h>
#include <lv2/atom/forge.h>
#include <lv2/options/options.h>
#include <lv2/patch/patch.h>
#include <memory>
#include <string>
#include <utility>

namespace varno::validate {
namespace {

constexpr const char* kUnknownKey = "urn:varno:unknown#key";
constexpr const char* kUnknownType = "urn:varno:unknown#type";

struct FreesInstance {
    void operator()(LilvInstance* instance) const { lilv_instance_free(instance); }
};

LV2_Handle handleOf(const Lv2Use& use) {
    return lilv_instance_get_handle(use.instance);
}

void addExtensions(const Lv2Use& use, std::vector<Attempt>& attempts) {
    for (const char* const uri : {"", "urn:varno:unknown", "http://lv2plug.in/ns/ext/state#none"}) {
        attempts.push_back({"extension_data(\"" + std::string(uri) + "\")", [use, uri]() -> std::string {
                                const void* const data = lilv_instance_get_extension_data(use.instance, uri);
                                return data == nullptr ? "" : "an extension";
                            }});
    }
}

// Reading and writing an option that there is not.
void addOptions(const Lv2Use& use, std::vector<Attempt>& attempts) {
    const auto* const options = static_cast<const LV2_Options_Interface*>(
        lilv_instance_get_extension_data(use.instance, LV2_OPTIONS__interface));
    if (options == nullptr) {
        return;
    }
    const auto call = [use](auto* function) -> std::string {
        const std::int32_t value = 1;
        std::array<LV2_Options_Option, 2> asked{};
        asked[0] = {LV2_OPTIONS_INSTANCE,
                    0,
                    use.numbers->numberOf(kUnknownKey),
                    sizeof value,
                    use.numbers->numberOf(kUnknownType),
                    &value};
        return function == nullptr || function(handleOf(use), asked.data()) != LV2_OPTIONS_SUCCESS
                   ? ""
                   : "success";
    };
    attempts.push_back({"get() of an unknown option", [options, call] { return call(options->get); }});
    // It may ignore what it does not know.
    attempts.push_back({"set() of an unknown option", [options, call] {
                            (void)call(options->set);
                            return std::string();
                        }});
}

// Events of unknown types, an object of an unknown class, and a value for an unknown property.
std::vector<std::byte> unknownEvents(UriNumbers& numbers) {
    std::vector<std::byte> bytes(4096);
    LV2_Atom_Forge forge{};
    lv2_atom_forge_init(&forge, &numbers.map());
    lv2_atom_forge_set_buffer(&forge, reinterpret_cast<std::uint8_t*>(bytes.data()), bytes.size());
    const LV2_URID unknown = numbers.numberOf(kUnknownKey);
    LV2_Atom_Forge_Frame sequence{};
    LV2_Atom_Forge_Frame object{};
    lv2_atom_forge_sequence_head(&forge, &sequence, 0);
    lv2_atom_forge_frame_time(&forge, 0);
    lv2_atom_forge_atom(&forge, sizeof unknown, numbers.numberOf(kUnknownType));
    lv2_atom_forge_write(&forge, &unknown, sizeof unknown);
    lv2_atom_forge_frame_time(&forge, 0);
    lv2_atom_forge_object(&forge, &object, 0, unknown);
    lv2_atom_forge_pop(&forge, &object);
    lv2_atom_forge_frame_time(&forge, 0);
    lv2_atom_forge_object(&forge, &object, 0, numbers.numberOf(LV2_PATCH__Set));
    lv2_atom_forge_key(&forge, numbers.numberOf(LV2_PATCH__property));
    lv2_atom_forge_urid(&forge, unknown);
    lv2_atom_forge_key(&forge, numbers.numberOf(LV2_PATCH__value));
    lv2_atom_forge_float(&forge, 1.0F);
    lv2_atom_forge_pop(&forge, &object);
    lv2_atom_forge_pop(&forge, &sequence);
    bytes.resize(forge.offset);
    return bytes;
}

// A state of others: their keys, or the own ones with other types.
Lv2State stateOfOthers(bool isOfNumbers) {
    Lv2State state;
    const std::string text = "other=1;gain=1";
    const auto bytes = std::as_bytes(std::span(text));
    constexpr std::size_t kLarge = 65536;
    if (isOfNumbers) {
        state.properties["urn:varno:unknown#gain"] = {LV2_ATOM__Float, LV2_STATE_IS_POD,
                                                      std::vector<std::byte>(sizeof(float))};
        state.properties["urn:varno:unknown#mode"] = {LV2_ATOM__Int, LV2_STATE_IS_POD,
                                                      std::vector<std::byte>(sizeof(std::int32_t))};
    } else {
        state.properties["urn:varno:unknown#state"] = {
            LV2_ATOM__String, LV2_STATE_IS_POD, {bytes.begin(), bytes.end()}};
        state.properties["urn:varno:unknown#chunk"] = {kUnknownType, 0, std::vector<std::byte>(kLarge)};
    }
    return state;
}

// What a new instance stores.
Lv2State stateOfNew(const Lv2Use& use) {
    HostSide host(*use.numbers, use.rateHz, use.mostFrames);
    const std::unique_ptr<LilvInstance, FreesInstance> instance(
        lilv_plugin_instantiate(use.plugin, use.rateHz, host.features()));
    Lv2State state;
    if (instance != nullptr) {
        StateStore(*use.numbers, state)
            .save(lilv_instance_get_handle(instance.get()), *use.state, host.features());
    }
    return state;
}

void restoreFrom(const Lv2Use& use, Lv2State state) {
    StateStore(*use.numbers, state).restore(handleOf(use), *use.state, use.host->features());
    use.host->work().doRequests(handleOf(use), use.worker);
}

// A call of the host's within one of the plug-in's.
struct Lv2InnerCall {
    const char* name;
    void (*call)(const Lv2Use& use);
};

constexpr Lv2InnerCall kLv2InnerCalls[] = {
    {"save()",
     [](const Lv2Use& use) {
         Lv2State other;
         StateStore(*use.numbers, other).save(handleOf(use), *use.state, use.host->features());
     }},
    {"extension_data()",
     [](const Lv2Use& use) { (void)lilv_instance_get_extension_data(use.instance, LV2_STATE__interface); }},
};

void addStateCalls(const Lv2Use& use, std::vector<Attempt>& attempts) {
    for (const Lv2InnerCall& inner : kLv2InnerCalls) {
        const auto hook = [use, &inner] { inner.call(use); };
        attempts.push_back(
            {std::string("save() with a host that calls ") + inner.name + " within store()", [use, hook] {
                 Lv2State state;
                 StateStore(*use.numbers, state, hook).save(handleOf(use), *use.state, use.host->features());
                 return std::string();
             }});
        attempts.push_back(
            {std::string("restore() with a host that calls ") + inner.name + " within retrieve()",
             [use, hook]() -> std::string {
                 Lv2State state;
                 StateStore(*use.numbers, state).save(handleOf(use), *use.state, use.host->features());
                 const auto restored = [&](const std::function<void()>& within) {
                     const auto status = StateStore(*use.numbers, state, within)
                                             .restore(handleOf(use), *use.state, use.host->features());
                     use.host->work().doRequests(handleOf(use), use.worker);
                     return status;
                 };
                 return restored({}) == restored(hook) ? "" : "a state of its own refused";
             }});
    }
}

} // namespace

std::vector<Attempt> unknownIdentifiers(const Lv2Use& use) {
    std::vector<Attempt> attempts;
    addExtensions(use, attempts);
    addOptions(use, attempts);
    attempts.push_back({"instantiate() with unknown options and features", [use]() -> std::string {
                            HostSide host(*use.numbers, use.rateHz, use.mostFrames,
                                          HostSide::Offer::kUnknownToo);
                            const std::unique_ptr<LilvInstance, FreesInstance> made(
                                lilv_plugin_instantiate(use.plugin, use.rateHz, host.features()));
                            return made == nullptr ? "no instance" : "";
                        }});
    if (use.takesEvents) {
        attempts.push_back({"run() with unknown events", [use] {
                                use.run(unknownEvents(*use.numbers));
                                return std::string();
                            }});
    }
    return attempts;
}

std::vector<Attempt> foreignStates(const Lv2Use& use) {
    std::vector<Attempt> attempts;
    if (use.state == nullptr) {
        return attempts;
    }
    const auto add = [&](const std::string& name, const Lv2State& state) {
        attempts.push_back({"restore() of " + name, [use, state] {
                                restoreFrom(use, state);
                                return std::string();
                            }});
    };
    add("nothing", {});
    add("the numbers of another plug-in", stateOfOthers(true));
    add("the text and the chunk of another plug-in", stateOfOthers(false));
    Lv2State retyped = stateOfNew(use);
    for (auto& [key, property] : retyped.properties) {
        property.type = kUnknownType;
    }
    add("its keys with values of an unknown type", retyped);
    for (auto& [key, property] : retyped.properties) {
        property = {LV2_ATOM__Bool, LV2_STATE_IS_POD, std::vector<std::byte>(1)};
    }
    add("its keys with values of a byte", retyped);
    return attempts;
}

std::vector<Attempt> callsFromWithin(const Lv2Use& use) {
    std::vector<Attempt> attempts;
    if (use.state != nullptr) {
        addStateCalls(use, attempts);
    }
    if (use.worker != nullptr) {
        attempts.push_back({"run() with a host that works within schedule_work()", [use] {
                                use.host->work().doAtOnce(handleOf(use), use.worker);
                                for (const bool isMost : {true, false}) {
                                    use.setAll(isMost);
                                    use.run({});
                                }
                                use.host->work().doLater();
                                return std::string();
                            }});
    }
    return attempts;
}

} // namespace varno::validate
