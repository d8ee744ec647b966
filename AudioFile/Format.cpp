#include "AudioFile/Format.h"

namespace varno {

const char* containerName(Container container) {
    switch (container) {
    case Container::kWav:
        return "WAV";
    case Container::kRf64:
        return "RF64";
    case Container::kW64:
        return "W64";
    case Container::kAiff:
        return "AIFF";
    case Container::kCaf:
        return "CAF";
    case Container::kAu:
        return "AU";
    case Container::kFlac:
        return "FLAC";
    case Container::kOgg:
        return "Ogg";
    case Container::kOther:
        break;
    }
    return "another container";
}

} // namespace varno
