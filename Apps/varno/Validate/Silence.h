#ifndef VARNO_APPS_VARNO_VALIDATE_SILENCE_H
#define VARNO_APPS_VARNO_VALIDATE_SILENCE_H

#include "Validate/Plugin.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace varno::validate {

/// A buffer of silence for the checks that are not about sound.
class Silence {
public:
    Silence(const PluginInfo& info, std::int32_t frames)
        : mFrames(frames),
          mInputs(static_cast<std::size_t>(info.inputs),
                  std::vector<float>(static_cast<std::size_t>(frames))),
          mOutputs(static_cast<std::size_t>(info.outputs),
                   std::vector<float>(static_cast<std::size_t>(frames))) {
        for (auto& channel : mInputs) {
            mInputPointers.push_back(channel.data());
        }
        for (auto& channel : mOutputs) {
            mOutputPointers.push_back(channel.data());
        }
    }

    /// Processes all of it.
    void through(PluginInstance& instance) { through(instance, mFrames); }
    /// Processes its first frames.
    void through(PluginInstance& instance, std::int32_t frames) {
        instance.process(mInputPointers.data(), mOutputPointers.data(), frames);
    }

    /// Whether all that came out are numbers.
    bool isFinite() const {
        for (const auto& channel : mOutputs) {
            for (const float sample : channel) {
                if (!std::isfinite(sample)) {
                    return false;
                }
            }
        }
        return true;
    }

private:
    std::int32_t mFrames;
    std::vector<std::vector<float>> mInputs;
    std::vector<std::vector<float>> mOutputs;
    std::vector<const float*> mInputPointers;
    std::vector<float*> mOutputPointers;
};

} // namespace varno::validate

#endif
