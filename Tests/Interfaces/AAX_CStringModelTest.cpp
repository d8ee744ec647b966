// Two texts in any sequence of operations, against std::string and the numbers of the standard library.
#include "AAX_CString.h"
#include "Tests/Support/ModelCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

namespace varno::test {
namespace {

#if VARNO_HAS_PROPERTIES
constexpr const char* kOutOfRange = "out of range";

// A text with its length, so that nothing hides behind a zero byte.
std::string described(const char* text, std::size_t length) {
    return std::to_string(length) + ":" + text;
}

// How a number is shown.
std::string printed(double number, int decimals) {
    std::array<char, 512> text{};
    const int length = std::snprintf(text.data(), text.size(), "%.*f", decimals, number);
    return {text.data(), static_cast<std::size_t>(length)};
}

// What an input stream without a locale reads.
std::string read(const std::string& text) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    double number = 0.0;
    const bool isNumber = static_cast<bool>(stream >> number);
    return isNumber ? printed(number, 20) : "none";
}

class TextModel {
public:
    std::string set(int place, const std::string& text) {
        mTexts[place] = text;
        return seen();
    }
    std::string copy(int from, int to) { return set(to, std::string(mTexts[from])); }
    std::string exchange() {
        std::swap(mTexts[0], mTexts[1]);
        return seen();
    }
    std::string clear(int place) { return set(place, ""); }
    // So many characters are left behind the position as are less than the count, as the declaration says.
    std::string erase(int place, std::uint32_t pos, std::uint32_t count) {
        std::string& text = mTexts[place];
        if (pos > text.size()) {
            return kOutOfRange;
        }
        const std::size_t behind = text.size() - pos;
        text.erase(pos, behind >= count ? count : count - behind);
        return seen();
    }
    std::string append(int place, double number, int decimals) {
        mTexts[place] += printed(number, decimals);
        return seen();
    }
    std::string part(int place, std::uint32_t pos, std::uint32_t count) {
        std::string& text = mTexts[place];
        if (pos > text.size()) {
            return kOutOfRange;
        }
        text = text.substr(pos, count);
        return seen();
    }
    std::string write(int place, std::uint32_t index, char character) {
        std::string& text = mTexts[place];
        if (!text.empty()) {
            text[index % text.size()] = character;
        }
        return seen();
    }
    std::string number(int place) const { return read(mTexts[place]); }

private:
    std::string seen() const {
        return described(mTexts[0].c_str(), mTexts[0].size()) + ' ' +
               described(mTexts[1].c_str(), mTexts[1].size()) + (mTexts[0] == mTexts[1] ? " equal" : "");
    }

    std::string mTexts[2];
};

class Texts {
public:
    std::string set(int place, const std::string& text) {
        mTexts[place] = text.c_str();
        return seen();
    }
    std::string copy(int from, int to) {
        const AAX_CString copied(static_cast<const AAX_IString&>(mTexts[from]));
        mTexts[to] = copied;
        return seen();
    }
    std::string exchange() {
        mTexts[0] = std::move(mTexts[1]);
        return seen();
    }
    std::string clear(int place) {
        mTexts[place].Clear();
        return seen();
    }
    std::string erase(int place, std::uint32_t pos, std::uint32_t count) {
        return unlessOutOfRange([&] { mTexts[place].Erase(pos, count); });
    }
    std::string append(int place, double number, int decimals) {
        mTexts[place].AppendNumber(number, decimals);
        return seen();
    }
    std::string part(int place, std::uint32_t pos, std::uint32_t count) {
        return unlessOutOfRange([&] {
            AAX_CString part;
            mTexts[place].SubString(pos, count, &part);
            static_cast<AAX_IString&>(mTexts[place]) = part;
        });
    }
    std::string write(int place, std::uint32_t index, char character) {
        if (mTexts[place].Length() > 0) {
            mTexts[place][index % mTexts[place].Length()] = character;
        }
        return seen();
    }
    std::string number(int place) const {
        double number = -1.0;
        const bool isNumber = mTexts[place].ToDouble(&number);
        return isNumber ? printed(number, 20) : number == 0.0 ? "none" : "none, but not 0";
    }

protected:
    std::string seen() const {
        return described(mTexts[0].Get(), mTexts[0].Length()) + ' ' +
               described(mTexts[1].CString(), mTexts[1].Length()) + (mTexts[0] == mTexts[1] ? " equal" : "");
    }
    template<class Work>
    std::string unlessOutOfRange(Work work) {
        try {
            work();
        } catch (const std::out_of_range&) {
            return kOutOfRange;
        }
        return seen();
    }

    AAX_CString mTexts[2];
};

// It erases up to the end where fewer characters are left than are to be erased.
class GreedyTexts : public Texts {
public:
    std::string erase(int place, std::uint32_t pos, std::uint32_t count) {
        return unlessOutOfRange(
            [&] { mTexts[place].Erase(pos, std::min(count, mTexts[place].Length() - pos)); });
    }
};

// Moving takes the text and leaves none.
class EmptyingTexts : public Texts {
public:
    std::string exchange() {
        Texts::exchange();
        return clear(1);
    }
};

// A decimal less.
class CoarseTexts : public Texts {
public:
    std::string append(int place, double number, int decimals) {
        return Texts::append(place, number, decimals > 12 ? decimals - 1 : decimals);
    }
};

// What could be part of a number, and what could not.
std::string anyText() {
    return *rc::gen::container<std::string>(rc::gen::elementOf(std::string("0123456789+-.eE \tx")));
}

double anyNumber() {
    const double fraction = *rc::gen::arbitrary<std::int32_t>() / 1024.0;
    return *rc::gen::element(fraction, fraction * 1e-9, fraction * 1e200, 0.5, -0.0,
                             std::numeric_limits<double>::denorm_min());
}

template<class Subject>
typename ModelCheck<TextModel, Subject>::Operation anyTextOperation() {
    using Check = ModelCheck<TextModel, Subject>;
    const int place = *rc::gen::inRange(0, 2);
    const auto pos = *rc::gen::inRange<std::uint32_t>(0, 40);
    const auto count = *rc::gen::inRange<std::uint32_t>(0, 40);
    const std::string where = std::to_string(place) + ' ' + std::to_string(pos) + ' ' + std::to_string(count);
    switch (*rc::gen::inRange(0, 9)) {
    case 0: {
        const std::string text = *rc::gen::resize(24, rc::gen::exec(anyText));
        return Check::operation("set " + where + " \"" + text + '"',
                                [=](auto& texts) { return texts.set(place, text); });
    }
    case 1:
        return Check::operation("copy " + where, [=](auto& texts) { return texts.copy(place, 1 - place); });
    case 2:
        return Check::operation("exchange", [](auto& texts) { return texts.exchange(); });
    case 3:
        return Check::operation("clear " + where, [=](auto& texts) { return texts.clear(place); });
    case 4:
        return Check::operation("erase " + where,
                                [=](auto& texts) { return texts.erase(place, pos, count); });
    case 5: {
        const double number = anyNumber();
        const int decimals = static_cast<int>(count / 2);
        return Check::operation("append " + where,
                                [=](auto& texts) { return texts.append(place, number, decimals); });
    }
    case 6:
        return Check::operation("part " + where, [=](auto& texts) { return texts.part(place, pos, count); });
    case 7: {
        const char character = *rc::gen::elementOf(std::string("09.-xyz"));
        return Check::operation("write " + where + ' ' + character,
                                [=](auto& texts) { return texts.write(place, pos, character); });
    }
    default:
        return Check::operation("number " + where, [=](auto& texts) { return texts.number(place); });
    }
}

template<class Subject>
ModelCheck<TextModel, Subject> textCheck(int cases) {
    return {.draw = anyTextOperation<Subject>, .cases = cases};
}

TEST(StringModelTest, textsAreAsThoseOfTheStandardLibrary) {
    expectHolds(textCheck<Texts>(50 * testScale()), std::int64_t{7500} * testScale());
}

TEST(StringModelTest, rejectsTextsThatEraseMoveOrPrintDifferently) {
    expectRejects(textCheck<GreedyTexts>(50), "it erases to the end");
    expectRejects(textCheck<EmptyingTexts>(50), "moving leaves nothing");
    expectRejects(textCheck<CoarseTexts>(50), "a decimal less");
}
#endif

} // namespace
} // namespace varno::test
