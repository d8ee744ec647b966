#ifndef VARNO_APPS_VARNO_COMMANDS_PARAMETERDIAL_H
#define VARNO_APPS_VARNO_COMMANDS_PARAMETERDIAL_H

#include "Host/Instance.h"

#include <string>

namespace varno {

/// Chooses one of an instance's parameters and turns it. [main]
class ParameterDial {
public:
    /// Starts with the first parameter that is no master bypass. @param instance outlives this object; has
    /// parameters
    explicit ParameterDial(Instance& instance);

    /// Moves on by so many parameters, around the ends, past the master bypass.
    void choose(int by);
    /// Moves the chosen parameter by so many of its steps, within its range.
    void turn(int steps);
    /// Puts it to its default.
    void reset();
    /// Turns the master bypass over. Does nothing where the effect has none.
    void toggleBypass();

    bool isBypassed() const;
    /// "Hot 0.0700": name and value.
    std::string text() const;

private:
    const ParameterInfo& chosen() const { return mInstance.parameters()[mChosen]; }
    const ParameterInfo* bypass() const;
    void set(double normalized);

    Instance& mInstance;
    std::size_t mChosen = 0;
};

} // namespace varno

#endif
