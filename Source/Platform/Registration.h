/// What was registered stays so as long as this lives.
#ifndef VARNO_SOURCE_PLATFORM_REGISTRATION_H
#define VARNO_SOURCE_PLATFORM_REGISTRATION_H

#include <functional>
#include <utility>

namespace varno {

/// Moves but does not copy. [main]
class Registration {
public:
    Registration() = default;
    /// @param undo takes the registration back; must not throw.
    explicit Registration(std::function<void()> undo)
        : mUndo(std::move(undo)) {}
    Registration(Registration&& other) noexcept
        : mUndo(std::exchange(other.mUndo, nullptr)) {}
    Registration& operator=(Registration&& other) noexcept {
        Registration(std::move(other)).mUndo.swap(mUndo);
        return *this;
    }
    ~Registration() { reset(); }

    /// Takes the registration back now; nothing the second time. [main]
    void reset() {
        if (const auto undo = std::exchange(mUndo, nullptr)) {
            undo();
        }
    }

private:
    std::function<void()> mUndo;
};

} // namespace varno

#endif
