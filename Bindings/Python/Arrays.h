/// Sound in NumPy arrays: float32 of shape (channels, frames).
#ifndef VARNO_BINDINGS_PYTHON_ARRAYS_H
#define VARNO_BINDINGS_PYTHON_ARRAYS_H

#include "Python/ScriptEffect.h"

#include <cstdint>
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <vector>

namespace varno {

/// Input and output of a call, used in place where their layout allows: where the samples of a channel are
/// one after the other. Everything else is copied. Python's lock is held by who makes one and who calls
/// finish().
class SoundArrays {
public:
    /// @param input array @param out array, or None for a new one; may be the input itself
    /// @throws pybind11::type_error for what is no array; std::invalid_argument for another type of samples,
    ///         another shape or an output that cannot be written: what was found and expected
    SoundArrays(const pybind11::object& input, const pybind11::object& out, std::int32_t channels);
    SoundArrays(const SoundArrays&) = delete;
    SoundArrays& operator=(const SoundArrays&) = delete;
    ~SoundArrays() = default;

    /// Valid as long as this object.
    const Sound& sound() const { return mSound; }
    /// After the processing: the output.
    pybind11::array finish();

private:
    void setInput(const pybind11::array& input);
    void setOutput();

    pybind11::array mInput;
    pybind11::array mOutput;
    std::vector<float> mInputCopy;
    std::vector<float> mOutputCopy; ///< Empty where the array itself is written.
    float mNothing = 0.0F;          ///< What the channels of an empty sound point to.
    Sound mSound;
};

} // namespace varno

#endif
