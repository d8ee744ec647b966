/// What a fuzzer calls: hostile input for one subject, and what must hold of it.
#ifndef VARNO_TESTS_FUZZ_FUZZTARGET_H
#define VARNO_TESTS_FUZZ_FUZZTARGET_H

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace varno::fuzz {

/// Something that must hold does not.
class Broken : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

/// @throws Broken with the text where `holds` is false
inline void require(bool holds, const std::string& text) {
    if (!holds) {
        throw Broken(text);
    }
}

/// Calls functions of the product with any input. What it makes is kept from input to input, and is as it was
/// at the start after each, so that an input alone repeats what it has found.
class FuzzTarget {
public:
    FuzzTarget() = default;
    FuzzTarget(const FuzzTarget&) = delete;
    FuzzTarget& operator=(const FuzzTarget&) = delete;
    virtual ~FuzzTarget() = default;

    /// @throws Broken, or anything that the product should not have thrown
    virtual void run(std::string_view input) = 0;
};

/// A fault of the product that the target must find.
struct PlantedFault {
    std::string name;
    std::function<std::unique_ptr<FuzzTarget>()> make; ///< The target with the fault in the product's place.
};

/// One subject: a file of this folder.
struct FuzzSubject {
    std::string name;
    std::function<std::unique_ptr<FuzzTarget>()> make;
    /// Where fuzzers begin; also what an earlier fault was found with.
    std::vector<std::string> seeds;
    std::vector<PlantedFault> faults;
    /// Files of the product whose line coverage is stated.
    std::vector<std::string> files;
};

/// The target of a class; the arguments are what it is made of in the place of the product's functions.
template<class Target, class... Arguments>
std::function<std::unique_ptr<FuzzTarget>()> makerOf(Arguments... arguments) {
    return [=] { return std::make_unique<Target>(arguments...); };
}

} // namespace varno::fuzz

#endif
