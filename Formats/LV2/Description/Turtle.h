/// The text form of the description that hosts read.
#ifndef VARNO_FORMATS_LV2_DESCRIPTION_TURTLE_H
#define VARNO_FORMATS_LV2_DESCRIPTION_TURTLE_H

#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// The prefixes that every file of the bundle begins with.
std::string turtlePrefixes();
/// A text between quotes, with special characters escaped.
std::string turtleText(std::string_view text);
/// An identifier between angle brackets.
std::string turtleUri(std::string_view uri);
/// The shortest decimal number that reads as this float, always with a point: some hosts ignore whole
/// numbers.
std::string turtleDecimal(float value);

/// A subject and its properties, one line each.
class TurtleSubject {
public:
    /// `name` as it is to be written: a URI between brackets, or "[" for one without a name.
    explicit TurtleSubject(std::string name)
        : mText(std::move(name)) {}

    /// Adds a property: a predicate and its objects as text, with a comma between any two.
    void add(std::string_view predicate, std::string_view objects);
    void add(std::string_view predicate, const std::vector<std::string>& objects);

    /// All of it as a statement of a file.
    std::string statement() const { return mText + " .\n\n"; }
    /// All of it, for a subject without a name, as an object of another statement.
    std::string object() const { return mText + "\n\t]"; }

private:
    std::string mText;
    bool mIsEmpty = true;
};

} // namespace varno

#endif
