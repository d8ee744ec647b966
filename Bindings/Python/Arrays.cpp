#include "Python/Arrays.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <utility>

namespace varno {
namespace {

namespace py = pybind11;

constexpr py::ssize_t kSampleBytes = sizeof(float);

std::string textOf(const py::handle& object) {
    return py::str(object).cast<std::string>();
}

py::array requireSound(const py::object& object, std::int32_t channels, const std::string& name) {
    const std::string expected =
        "; expected a NumPy array of float32 and shape (" + std::to_string(channels) + ", frames)";
    if (!py::isinstance<py::array>(object)) {
        throw py::type_error(name + " is " + textOf(py::type::of(object).attr("__name__")) + expected);
    }
    auto array = py::reinterpret_borrow<py::array>(object);
    if (!py::isinstance<py::array_t<float>>(array)) {
        throw std::invalid_argument(name + " has samples of " + textOf(array.dtype()) + expected);
    }
    if (array.ndim() != 2 || array.shape(0) != channels) {
        throw std::invalid_argument(name + " has the shape " + textOf(array.attr("shape")) + expected);
    }
    return array;
}

// Whether the samples of each channel are one after the other, where a float may be.
bool isUsedInPlace(const py::array& array) {
    const auto address = reinterpret_cast<std::uintptr_t>(array.data());
    return (array.shape(1) <= 1 || array.strides(1) == kSampleBytes) &&
           array.strides(0) % kSampleBytes == 0 && address % alignof(float) == 0;
}

// The bytes of an array, from the first to behind the last.
std::pair<std::intptr_t, std::intptr_t> extentOf(const py::array& array) {
    auto first = reinterpret_cast<std::intptr_t>(array.data());
    std::intptr_t last = first + kSampleBytes;
    for (py::ssize_t axis = 0; axis < array.ndim(); ++axis) {
        const std::intptr_t reach = array.strides(axis) * (array.shape(axis) - 1);
        (reach < 0 ? first : last) += reach;
    }
    return {first, last};
}

bool areApart(const py::array& left, const py::array& right) {
    const auto [leftFirst, leftEnd] = extentOf(left);
    const auto [rightFirst, rightEnd] = extentOf(right);
    return leftEnd <= rightFirst || rightEnd <= leftFirst;
}

// Several elements of such an array have the same memory, as those of a broadcast one.
bool hasSharedElements(const py::array& array) {
    const auto frames = array.shape(1);
    const auto step = array.strides(1) < 0 ? -array.strides(1) : array.strides(1);
    const auto rowStep = array.strides(0) < 0 ? -array.strides(0) : array.strides(0);
    const bool inRow = frames > 1 && step < kSampleBytes;
    // Rows follow each other, or take turns as in interleaved files.
    const bool apart =
        rowStep >= step * frames || (rowStep >= kSampleBytes && step >= rowStep * array.shape(0));
    return inRow || (array.shape(0) > 1 && !apart);
}

} // namespace

SoundArrays::SoundArrays(const py::object& input, const py::object& out, std::int32_t channels)
    : mInput(requireSound(input, channels, "the input")) {
    mSound.frames = mInput.shape(1);
    if (out.is_none()) {
        mOutput = py::array_t<float>({py::ssize_t{channels}, mInput.shape(1)});
    } else {
        mOutput = requireSound(out, channels, "out");
        if (mOutput.shape(1) != mInput.shape(1)) {
            throw std::invalid_argument("out has " + std::to_string(mOutput.shape(1)) +
                                        " frames; expected those of the input, " +
                                        std::to_string(mInput.shape(1)));
        }
        if (!mOutput.writeable()) {
            throw std::invalid_argument("out is read-only; expected an array that can be written");
        }
        if (mSound.frames > 0 && hasSharedElements(mOutput)) {
            throw std::invalid_argument(
                "out has several samples at one place of the memory; expected one that "
                "was not broadcast");
        }
    }
    if (mSound.frames > 0) {
        setOutput();
        setInput(mInput);
    } else { // no element has an address
        mSound.inputs.assign(static_cast<std::size_t>(channels), &mNothing);
        mSound.outputs.assign(static_cast<std::size_t>(channels), &mNothing);
    }
}

void SoundArrays::setOutput() {
    const auto channels = mOutput.shape(0);
    const bool inPlace = isUsedInPlace(mOutput);
    if (!inPlace) {
        mOutputCopy.resize(static_cast<std::size_t>(mOutput.size()));
    }
    for (py::ssize_t channel = 0; channel < channels; ++channel) {
        mSound.outputs.push_back(inPlace ? static_cast<float*>(mOutput.mutable_data(channel, 0))
                                         : mOutputCopy.data() + channel * mSound.frames);
    }
}

void SoundArrays::setInput(const py::array& input) {
    for (py::ssize_t channel = 0; channel < input.shape(0); ++channel) {
        mSound.inputs.push_back(static_cast<const float*>(input.data(channel, 0)));
    }
    const bool isSame = std::ranges::equal(mSound.inputs, mSound.outputs);
    if (isUsedInPlace(input) && (isSame || !mOutputCopy.empty() || areApart(input, mOutput))) {
        return;
    }
    mInputCopy.resize(static_cast<std::size_t>(input.size()));
    for (py::ssize_t channel = 0; channel < input.shape(0); ++channel) {
        float* const copy = mInputCopy.data() + channel * mSound.frames;
        const auto* from = static_cast<const char*>(input.data(channel, 0));
        for (std::int64_t frame = 0; frame < mSound.frames; ++frame) {
            std::memcpy(copy + frame, from + frame * input.strides(1), sizeof(float));
        }
        mSound.inputs[static_cast<std::size_t>(channel)] = copy;
    }
}

py::array SoundArrays::finish() {
    if (!mOutputCopy.empty()) {
        for (py::ssize_t channel = 0; channel < mOutput.shape(0); ++channel) {
            const float* const copy = mOutputCopy.data() + channel * mSound.frames;
            auto* const to = static_cast<char*>(mOutput.mutable_data(channel, 0));
            for (std::int64_t frame = 0; frame < mSound.frames; ++frame) {
                std::memcpy(to + frame * mOutput.strides(1), copy + frame, sizeof(float));
            }
        }
    }
    return mOutput;
}

} // namespace varno
