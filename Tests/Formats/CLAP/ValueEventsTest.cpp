// What a host receives of what a window has changed.
#include "CLAP/ValueEvents.h"
#include "Tests/Integration/HostedEffect.h"
#include "Tests/Support/SingleStep.h"

#include <cmath>
#include <gtest/gtest.h>

namespace varno::test {
namespace {

using Change = ValueExchange::Change;

class ClapSending : public HostedEffect {
protected:
    void SetUp() override {
        mList.emplace(*makeInstance(module()));
        mValues.emplace(mList->size());
        mSender.emplace(mList->size());
    }

    // What is sent where so many events find room.
    std::vector<std::string> send(std::size_t room = 100) {
        mRoom = room;
        mSent.clear();
        const clap_output_events_t out{
            this, [](const clap_output_events_t* list, const clap_event_header_t* event) {
                return static_cast<ClapSending*>(list->ctx)->receive(*event);
            }};
        mSender->send(*mList, *mValues, &out);
        return mSent;
    }

    std::optional<ParameterList> mList;
    std::optional<ValueExchange> mValues;
    std::optional<EventSender> mSender;

private:
    bool receive(const clap_event_header_t& event) {
        if (mRoom == 0) {
            return false;
        }
        --mRoom;
        if (event.type == CLAP_EVENT_PARAM_VALUE) {
            const auto& value = reinterpret_cast<const clap_event_param_value_t&>(event);
            EXPECT_EQ(event.size, sizeof value);
            EXPECT_EQ(value.note_id, -1);
            mSent.push_back(std::to_string(value.param_id) + "=" +
                            std::to_string(std::lround(value.value * 100)));
        } else {
            const auto& gesture = reinterpret_cast<const clap_event_param_gesture_t&>(event);
            EXPECT_EQ(event.size, sizeof gesture);
            mSent.push_back((event.type == CLAP_EVENT_PARAM_GESTURE_BEGIN ? "begin " : "end ") +
                            std::to_string(gesture.param_id));
        }
        return true;
    }

    std::size_t mRoom = 0;
    std::vector<std::string> mSent;
};

using Texts = std::vector<std::string>;

TEST_F(ClapSending, sendsNothingWhereNothingWasChanged) {
    EXPECT_EQ(send(), Texts());
    mValues->set(0, 0.25F, Change::kForAudio | Change::kForWindow);
    EXPECT_EQ(send(), Texts());
}

TEST_F(ClapSending, sendsAValueOnce) {
    mValues->set(0, 0.25F, Change::kForHost);
    mValues->set(0, 0.75F, Change::kForHost);
    EXPECT_EQ(send(), Texts({"1=75"}));
    EXPECT_EQ(send(), Texts());
}

TEST_F(ClapSending, sendsAGestureInItsOrder) {
    mValues->mark(3, Change::kTouched | Change::kHeld);
    mValues->set(3, 0.5F, Change::kForHost);
    EXPECT_EQ(send(), Texts({"begin 4", "4=50"}));
    mValues->set(3, 0.6F, Change::kForHost);
    EXPECT_EQ(send(), Texts({"4=60"}));
    mValues->letGo(3);
    EXPECT_EQ(send(), Texts({"end 4"}));
    EXPECT_EQ(send(), Texts());
}

TEST_F(ClapSending, sendsAGestureThatIsOverBeforeTheHostAsks) {
    mValues->mark(3, Change::kTouched | Change::kHeld);
    mValues->set(3, 0.5F, Change::kForHost);
    mValues->letGo(3);
    EXPECT_EQ(send(), Texts({"begin 4", "4=50", "end 4"}));
    EXPECT_EQ(send(), Texts());
}

TEST_F(ClapSending, losesNothingWhereThereIsNoRoom) {
    mValues->mark(3, Change::kTouched | Change::kHeld);
    mValues->set(3, 0.5F, Change::kForHost);
    mValues->letGo(3);
    EXPECT_EQ(send(0), Texts());
    EXPECT_EQ(send(1), Texts({"begin 4"}));
    EXPECT_EQ(send(1), Texts({"4=50"}));
    EXPECT_EQ(send(1), Texts({"end 4"}));
    EXPECT_EQ(send(), Texts());
}

TEST_F(ClapSending, isWithoutEventsWhereTheHostTakesNone) {
    mValues->set(0, 0.25F, Change::kForHost);
    mSender->send(*mList, *mValues, nullptr);
    EXPECT_EQ(send(), Texts({"1=25"}));
}

#if VARNO_HAS_SINGLE_STEP

// Whoever marks or takes in the middle of another one's call: nothing is lost, and nothing is received twice.
class ClapValueExchange : public testing::Test {
protected:
    static constexpr std::uint32_t kBoth = std::uint32_t{Change::kForAudio} | Change::kForHost;

    void clear() {
        mValues.take(0, kBoth);
        mValues.takeAny(kBoth);
    }

    ValueExchange mValues{1};
};

TEST_F(ClapValueExchange, losesNoMarkBesideAnother) {
    const int instructions =
        callAtEachInstruction([this] { mValues.mark(0, Change::kForAudio); },
                              [this] { mValues.mark(0, Change::kForHost); }, [this] { clear(); },
                              [this] {
                                  EXPECT_EQ(mValues.take(0, kBoth), kBoth);
                                  EXPECT_TRUE(mValues.takeAny(Change::kForAudio));
                                  EXPECT_TRUE(mValues.takeAny(Change::kForHost));
                              });
    EXPECT_GT(instructions, 1);
}

TEST_F(ClapValueExchange, losesNoMarkWhileAnotherIsTaken) {
    const auto takeForAudio = [this] {
        mValues.takeAny(Change::kForAudio);
        mValues.take(0, Change::kForAudio);
    };
    const int instructions = callAtEachInstruction(
        takeForAudio, [this] { mValues.mark(0, Change::kForHost); },
        [this] {
            clear();
            mValues.mark(0, Change::kForAudio);
        },
        [this] {
            EXPECT_TRUE(mValues.takeAny(Change::kForHost));
            EXPECT_EQ(mValues.take(0, kBoth), Change::kForHost);
        });
    EXPECT_GT(instructions, 1);
}

TEST_F(ClapValueExchange, givesAMarkToOneReceiver) {
    const auto take = [this] { return mValues.take(0, Change::kForHost) != 0 ? 1 : 0; };
    int within = 0;
    int between = 0;
    const int instructions = callAtEachInstruction([&] { within = take(); }, [&] { between = take(); },
                                                   [this] { mValues.mark(0, Change::kForHost); },
                                                   [&] { EXPECT_EQ(within + between, 1); });
    EXPECT_GT(instructions, 1);
}

#endif

} // namespace
} // namespace varno::test
