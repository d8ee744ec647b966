#ifndef VARNO_TESTS_APPS_VARNO_SESSION_FAKEJACK_H
#define VARNO_TESTS_APPS_VARNO_SESSION_FAKEJACK_H

#include "Session/JackBackend.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// A JACK library for which the test acts as the server.

namespace varno::test {

/// Only one may exist at a time: the library's functions receive no object.
class FakeJack {
public:
    struct Port {
        std::string name;
        unsigned long flags = 0;
        std::vector<float> samples;
        jack_latency_range_t capture{0, 0};
        jack_latency_range_t playback{0, 0};
    };

    FakeJack();
    FakeJack(const FakeJack&) = delete;
    FakeJack& operator=(const FakeJack&) = delete;
    ~FakeJack();

    static JackFunctions functions();
    Port& port(const std::string& name);

    // Properties of the server.
    jack_status_t refusal{}; ///< Why clients are refused; 0: they are not.
    bool refusesPorts = false;
    bool refusesToStart = false;
    jack_nframes_t rateHz = 44'100;
    jack_nframes_t periodFrames = 128;
    jack_nframes_t frame = 0;       ///< At which the block begins.
    jack_nframes_t framesSince = 0; ///< That have passed since it began.
    std::vector<const char*> captures = {"system:capture_1", "system:capture_2"};
    std::vector<const char*> playbacks = {"system:playback_1", "system:playback_2"};

    // What the client has done.
    std::string clientName;
    jack_options_t options{};
    bool isActive = false;
    bool isClosed = false;
    std::vector<std::unique_ptr<Port>> ports;
    std::vector<std::pair<std::string, std::string>> connections;

    // The callbacks that it has registered, and their argument.
    JackProcessCallback process = nullptr;
    JackXRunCallback xrun = nullptr;
    JackBufferSizeCallback bufferSize = nullptr;
    JackSampleRateCallback sampleRate = nullptr;
    JackFreewheelCallback freewheel = nullptr;
    JackLatencyCallback latency = nullptr;
    JackInfoShutdownCallback shutdown = nullptr;
    void* self = nullptr;
};

} // namespace varno::test

#endif
