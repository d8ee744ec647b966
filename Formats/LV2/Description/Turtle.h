/// The text form of the description that hosts read.
#ifndef VARNO_FORMATS_LV2_DESCRIPTION_TURTLE_H
#define VARNO_FORMATS_LV2_DESCRIPTION_TURTLE_H

#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// The prefixes that every file of the bundle begins with.
std::string turtlePrefixes();
/// A text between quotes, with what it may not hold written otherwise.
std::string turtleText(std::string_view text);
/// An identifier between angle brackets.
std::string turtleUri(std::string_view uri);
/// The shortest decimal number that reads as this float, with a point in any case: some hosts take whole
/// numbers for nothing.
std::string turtleDecimal(float value);

/// A thing and what is said of it, one line each.
class TurtleSubject {
public:
    /// `name` as it is to be written: a URI between brackets, or "[" for one without a name.
    explicit TurtleSubject(std::string name)
        : mText(std::move(name)) {}

    /// Says something: a predicate and its objects, written out, with a comma between any two.
    void say(std::string_view predicate, std::string_view objects);
    void say(std::string_view predicate, const std::vector<std::string>& objects);

    /// All of it as a statement of a file.
    std::string statement() const { return mText + " .\n\n"; }
    /// All of it, for a thing without a name, as an object of another statement.
    std::string object() const { return mText + "\n\t]"; }

private:
    std::string mText;
    bool mIsEmpty = true;
};

} // namespace varno

#endif
