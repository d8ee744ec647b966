#include "AAX_CPacketDispatcher.h"
#include "Tests/Libs/AAXLibrary/DispatcherFixture.h"
#include "Tests/Support/Properties.h"
#include "Tests/Support/TestEffect.h"
#include "Tests/Support/TestRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace varno::test {
namespace {

TEST(PacketDispatcher, PostsEveryPacketOnceAfterItsRegistration) {
    DispatcherFixture fixture;
    fixture.registerValue("Gain", 1, 10);
    fixture.registerValue("Mix", 13, 20);
    EXPECT_EQ(fixture.dispatch(), "1=10 13=20");
    EXPECT_EQ(fixture.dispatch(), "") << "nothing is dirty";
    EXPECT_EQ(fixture.result, AAX_SUCCESS);
}

TEST(PacketDispatcher, PostsNothingWithoutRegistrations) {
    DispatcherFixture fixture;
    EXPECT_EQ(fixture.dispatch(), "");
    EXPECT_EQ(fixture.result, AAX_SUCCESS);
}

TEST(PacketDispatcher, PostsAgainWhatIsMarked) {
    DispatcherFixture fixture;
    fixture.registerValue("Gain", 1, 10);
    fixture.registerValue("Mix", 13, 20);
    fixture.dispatch();
    EXPECT_EQ(fixture.dispatcher.SetDirty("Mix", true), AAX_SUCCESS);
    EXPECT_EQ(fixture.dispatch(), "13=20");
    fixture.dispatcher.SetDirty("Gain", true);
    fixture.dispatcher.SetDirty("Gain", false);
    EXPECT_EQ(fixture.dispatch(), "") << "unmarked again";
}

TEST(PacketDispatcher, IgnoresMarksOfUnknownIdentifiers) {
    DispatcherFixture fixture;
    fixture.registerValue("Gain", 1, 10);
    fixture.dispatch();
    EXPECT_EQ(fixture.dispatcher.SetDirty("gain", true), AAX_SUCCESS);
    EXPECT_EQ(fixture.dispatcher.SetDirty("", true), AAX_SUCCESS);
    EXPECT_EQ(fixture.dispatcher.SetDirty(nullptr, true), AAX_SUCCESS);
    EXPECT_EQ(fixture.dispatch(), "");
}

TEST(PacketDispatcher, GoesByBytesOfTheIdentifiers) {
    DispatcherFixture fixture;
    std::int32_t field = 0;
    // Compared as unsigned characters: what is not ASCII comes last.
    for (const char* paramID : {"Volume", "UK", "\xC4", "Rls", "Ratio", "Mix", "LinkSw", "Hot", "HSw", "HP",
                                "Gain", "Band", "Atk", "ASw", "a"}) {
        fixture.registerFunction(paramID, field++, [](AAX_CParamID id, AAX_CPacket& packet) {
            *packet.GetPtr<std::int32_t>() = static_cast<unsigned char>(id[0]);
            return AAX_SUCCESS;
        });
    }
    EXPECT_EQ(fixture.dispatch(),
              "13=65 12=65 11=66 10=71 9=72 8=72 7=72 6=76 5=77 4=82 3=82 1=85 0=86 14=97 "
              "2=196");
}

TEST(PacketDispatcher, PostsASharedFieldOnceByTheFirstIdentifier) {
    DispatcherFixture fixture;
    fixture.registerValue("Rls", 16, 2);
    fixture.registerValue("Atk", 16, 1);
    EXPECT_EQ(fixture.dispatch(), "16=1");
    fixture.dispatcher.SetDirty("Rls", true);
    EXPECT_EQ(fixture.dispatch(), "16=1") << "computed at the first entry, whichever was marked";
    fixture.dispatcher.SetDirty("Rls", true);
    fixture.dispatcher.SetDirty("Atk", true);
    EXPECT_EQ(fixture.dispatch(), "16=1");
}

TEST(PacketDispatcher, KeepsAllRegistrationsOfOneIdentifierInTheirOrder) {
    DispatcherFixture fixture;
    fixture.registerValue("Gain", 7, 70);
    fixture.registerValue("Gain", 3, 30);
    fixture.registerValue("Gain", 5, 50);
    EXPECT_EQ(fixture.dispatch(), "7=70 3=30 5=50");
    fixture.dispatcher.SetDirty("Gain", true);
    EXPECT_EQ(fixture.dispatch(), "7=70 3=30 5=50") << "all of them are marked";
}

TEST(PacketDispatcher, KeepsARegistrationWithoutFieldButNeverPostsIt) {
    DispatcherFixture fixture;
    int calls = 0;
    fixture.registerFunction("Gain", -1, [&calls](AAX_CParamID, AAX_CPacket&) {
        ++calls;
        return AAX_SUCCESS;
    });
    EXPECT_EQ(fixture.dispatcher.SetDirty("Gain", true), AAX_SUCCESS);
    EXPECT_EQ(fixture.dispatch(), "");
    EXPECT_EQ(calls, 0);
}

TEST(PacketDispatcher, IgnoresNullAndSucceeds) {
    DispatcherFixture fixture;
    const FunctionHandler handler([](AAX_CParamID, AAX_CPacket&) { return AAX_SUCCESS; });
    EXPECT_EQ(fixture.dispatcher.RegisterPacket(nullptr, 0, &handler), AAX_SUCCESS);
    EXPECT_EQ(fixture.dispatcher.RegisterPacket("Gain", 0, nullptr), AAX_SUCCESS);
    EXPECT_EQ(fixture.dispatcher.RegisterPacket(nullptr, 0), AAX_SUCCESS);
    EXPECT_EQ(fixture.dispatch(), "") << "nothing is registered";
    EXPECT_EQ(fixture.result, AAX_SUCCESS);
}

TEST(PacketDispatcher, NeitherPostsNorRepeatsAHandlerThatFails) {
    DispatcherFixture fixture;
    AAX_Result answer = AAX_ERROR_INVALID_INTERNAL_DATA;
    fixture.registerFunction("Gain", 1, [&answer](AAX_CParamID, AAX_CPacket& packet) {
        *packet.GetPtr<std::int32_t>() = 5;
        return answer;
    });
    EXPECT_EQ(fixture.dispatch(), "");
    EXPECT_EQ(fixture.result, AAX_SUCCESS) << "a handler's failure is not told";
    answer = AAX_SUCCESS;
    EXPECT_EQ(fixture.dispatch(), "") << "clean until the parameter changes";
    fixture.dispatcher.SetDirty("Gain", true);
    EXPECT_EQ(fixture.dispatch(), "1=5");
}

TEST(PacketDispatcher, ReturnsTheResultOfTheLastPost) {
    DispatcherFixture fixture;
    fixture.registerValue("A", 1, 0);
    fixture.registerValue("B", 2, 0);
    fixture.registerFunction("C", 3, [](AAX_CParamID, AAX_CPacket&) { return AAX_ERROR_NULL_OBJECT; });
    fixture.host.controller.postResults = {AAX_ERROR_INVALID_FIELD_INDEX, AAX_SUCCESS};
    EXPECT_EQ(fixture.dispatch(), "1=0 2=0");
    EXPECT_EQ(fixture.result, AAX_SUCCESS) << "a later post overwrites an earlier failure";
    fixture.dispatcher.SetDirty("A", true);
    fixture.dispatcher.SetDirty("B", true);
    fixture.host.controller.postResults = {AAX_SUCCESS, AAX_ERROR_FIFO_FULL};
    fixture.dispatch();
    EXPECT_EQ(fixture.result, AAX_ERROR_FIFO_FULL);
    EXPECT_EQ(fixture.dispatch(), "") << "a failed post is not repeated";
    EXPECT_EQ(fixture.result, AAX_SUCCESS);
}

TEST(PacketDispatcher, ThrowsForAHandlerThatWritesNothing) {
    DispatcherFixture fixture;
    fixture.registerFunction("Gain", 1, [](AAX_CParamID, AAX_CPacket&) { return AAX_SUCCESS; });
    fixture.registerValue("Mix", 2, 20);
    EXPECT_THROW(fixture.dispatcher.Dispatch(), std::out_of_range);
    EXPECT_EQ(fixture.dispatch(), "2=20") << "it does not keep the packets behind it from being posted";
}

TEST(PacketDispatcher, HandsAHandlersExceptionOnAndGoesOnBehindIt) {
    DispatcherFixture fixture;
    fixture.registerFunction(
        "Gain", 1, [](AAX_CParamID, AAX_CPacket&) -> AAX_Result { throw std::runtime_error("broken"); });
    fixture.registerValue("Mix", 2, 20);
    EXPECT_THROW(fixture.dispatcher.Dispatch(), std::runtime_error);
    EXPECT_EQ(fixture.dispatch(), "2=20");
}

TEST(PacketDispatcher, LeavesPacketsDirtyWithoutAController) {
    DispatcherFixture fixture;
    int calls = 0;
    fixture.registerFunction("Gain", 1, [&calls](AAX_CParamID, AAX_CPacket& packet) {
        *packet.GetPtr<std::int32_t>() = ++calls;
        return AAX_SUCCESS;
    });
    AAX_CPacketDispatcher& dispatcher = fixture.dispatcher;
    AAX_VController controller(&fixture.host);
    EXPECT_EQ(dispatcher.Initialize(nullptr, fixture.effect.Get()), AAX_SUCCESS);
    EXPECT_EQ(dispatcher.Dispatch(), AAX_ERROR_NULL_OBJECT);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(dispatcher.Initialize(&controller, fixture.effect.Get()), AAX_SUCCESS);
    EXPECT_EQ(fixture.dispatch(), "1=1");
    dispatcher.Initialize(nullptr, nullptr);
    EXPECT_EQ(dispatcher.Dispatch(), AAX_SUCCESS) << "nothing to post";
}

TEST(PacketDispatcher, LetsAHandlerCallBack) {
    DispatcherFixture fixture;
    AAX_CPacketDispatcher& dispatcher = fixture.dispatcher;
    fixture.registerFunction("Gain", 1, [&](AAX_CParamID, AAX_CPacket& packet) {
        *packet.GetPtr<std::int32_t>() = 10;
        dispatcher.SetDirty("Gain", true); // cleared after this handler
        dispatcher.SetDirty("Mix", true);  // later in the order: posted in this pass
        dispatcher.SetDirty("Band", true); // earlier in the order: posted in the next one
        return AAX_SUCCESS;
    });
    fixture.registerValue("Mix", 2, 20);
    fixture.registerValue("Band", 3, 30);
    EXPECT_EQ(fixture.dispatch(), "3=30 1=10 2=20");
    EXPECT_EQ(fixture.dispatch(), "3=30");
    EXPECT_EQ(fixture.dispatch(), "");
}

TEST(PacketDispatcher, LetsAHandlerRegister) {
    DispatcherFixture fixture;
    bool isFirst = true;
    fixture.registerFunction("Gain", 1, [&](AAX_CParamID, AAX_CPacket& packet) {
        *packet.GetPtr<std::int32_t>() = 10;
        if (std::exchange(isFirst, false)) {
            fixture.registerValue("Mix", 2, 20);
            fixture.registerValue("Band", 3, 30);
        }
        return AAX_SUCCESS;
    });
    EXPECT_EQ(fixture.dispatch(), "1=10 2=20");
    EXPECT_EQ(fixture.dispatch(), "3=30");
}

TEST(PacketDispatcher, KeepsACloneOfTheHandlerForItsLife) {
    int alive = 0;
    struct Counted : AAX_IPacketHandler {
        explicit Counted(int& count)
            : mCount(count) {
            ++mCount;
        }
        Counted(const Counted& other)
            : AAX_IPacketHandler(other),
              mCount(other.mCount) {
            ++mCount;
        }
        Counted& operator=(const Counted&) = delete;
        ~Counted() override { --mCount; }
        std::unique_ptr<AAX_IPacketHandler> Clone() const override {
            return std::make_unique<Counted>(*this);
        }
        AAX_Result Call(AAX_CParamID, AAX_CPacket&) const override { return AAX_SUCCESS; }
        int& mCount;
    };
    {
        AAX_CPacketDispatcher dispatcher;
        {
            const Counted handler(alive);
            dispatcher.RegisterPacket("Gain", 0, &handler);
            dispatcher.RegisterPacket("Gain", 0, &handler);
        }
        EXPECT_EQ(alive, 2);
    }
    EXPECT_EQ(alive, 0);
}

TEST(PacketDispatcher, CallsAMemberOfAnObject) {
    struct Model {
        AAX_Result UpdatePacket(AAX_CPacket& packet) {
            *packet.GetPtr<std::int32_t>() = mValue;
            return AAX_SUCCESS;
        }
        std::int32_t mValue = 41;
    };
    DispatcherFixture fixture;
    Model model;
    EXPECT_EQ(fixture.dispatcher.RegisterPacket("Gain", 4, &model, &Model::UpdatePacket), AAX_SUCCESS);
    model.mValue = 42;
    EXPECT_EQ(fixture.dispatch(), "4=42");
}

// What the generic handler posts for a parameter: "size: bytes in hexadecimal", or its result.
std::string singleValue(std::unique_ptr<AAX_IParameter> parameter) {
    DispatcherFixture fixture;
    const std::string paramID = parameter->Identifier();
    fixture.effect->add(std::move(parameter));
    AAX_CPacket packet(0);
    const AAX_Result result = fixture.dispatcher.GenerateSingleValuePacket(paramID.c_str(), packet);
    if (result != AAX_SUCCESS) {
        EXPECT_EQ(packet.GetSize(), 0U);
        return std::to_string(result);
    }
    const auto* bytes = static_cast<const unsigned char*>(packet.GetPayload());
    std::string text = std::to_string(packet.GetSize()) + ":";
    for (std::size_t i = 0; i < packet.GetSize(); ++i) {
        constexpr char kDigits[] = "0123456789ABCDEF";
        text += {' ', kDigits[bytes[i] / 16], kDigits[bytes[i] % 16]};
    }
    return text;
}

std::unique_ptr<FakeParameter> fake() {
    return std::make_unique<FakeParameter>("Fake");
}

TEST(SingleValuePacket, HoldsTheRealValueByItsType) {
    EXPECT_EQ(singleValue(makeFloatParameter("Gain", 0.5F)), "4: 00 00 00 3F");
    EXPECT_EQ(singleValue(makeDoubleParameter()), "8: 00 00 00 00 00 00 E0 3F");
    EXPECT_EQ(singleValue(makeBoolParameter()), "4: 00 00 00 00");
    auto on = makeBoolParameter();
    on->SetValueWithBool(true);
    EXPECT_EQ(singleValue(std::move(on)), "4: 01 00 00 00");
    auto integer = fake();
    integer->asInt32 = -2;
    EXPECT_EQ(singleValue(std::move(integer)), "4: FE FF FF FF");
}

TEST(SingleValuePacket, TakesTheFirstTypeThatAnswers) {
    const auto answering = [](bool b, bool f, bool i, bool d) {
        auto parameter = fake();
        parameter->asBool = b ? std::optional(true) : std::nullopt;
        parameter->asFloat = f ? std::optional(1.0F) : std::nullopt;
        parameter->asInt32 = i ? std::optional(7) : std::nullopt;
        parameter->asDouble = d ? std::optional(1.0) : std::nullopt;
        parameter->asString = "9";
        return singleValue(std::move(parameter));
    };
    EXPECT_EQ(answering(true, true, true, true), "4: 01 00 00 00");
    EXPECT_EQ(answering(false, true, true, true), "4: 00 00 80 3F");
    EXPECT_EQ(answering(false, false, true, true), "4: 07 00 00 00");
    EXPECT_EQ(answering(false, false, false, true), "8: 00 00 00 00 00 00 F0 3F");
    EXPECT_EQ(answering(false, false, false, false), "-20004") << "a text is no value to post";
}

TEST(SingleValuePacket, NeedsTheParameter) {
    DispatcherFixture fixture;
    AAX_CPacket packet(0);
    EXPECT_EQ(fixture.dispatcher.GenerateSingleValuePacket("Gain", packet), AAX_ERROR_NULL_OBJECT);
    EXPECT_EQ(fixture.dispatcher.GenerateSingleValuePacket(nullptr, packet), AAX_ERROR_NULL_OBJECT);
    AAX_CPacketDispatcher alone;
    EXPECT_EQ(alone.GenerateSingleValuePacket("Gain", packet), AAX_ERROR_NULL_OBJECT);
    EXPECT_EQ(packet.GetSize(), 0U);
}

TEST(SingleValuePacket, IsRegisteredWithoutAHandler) {
    DispatcherFixture fixture;
    fixture.effect->add(makeBoolParameter("Bypass"));
    EXPECT_EQ(fixture.dispatcher.RegisterPacket("Bypass", 0), AAX_SUCCESS);
    EXPECT_EQ(fixture.dispatch(), "0=0");
}

#if VARNO_HAS_PROPERTIES
// The simplest model of packets, registrations and dirty flags.
class Model {
public:
    void add(const std::string& paramID, std::int32_t field, std::int32_t value) {
        mRegistrations.push_back({paramID, field, value});
        if (field >= 0 && mKnown.insert(field).second) {
            mDirty.insert(field);
        }
    }
    void setDirty(const std::string& paramID, bool dirty) {
        for (const Registration& registration : mRegistrations) {
            if (registration.paramID == paramID && registration.field >= 0) {
                if (dirty) {
                    mDirty.insert(registration.field);
                } else {
                    mDirty.erase(registration.field);
                }
            }
        }
    }
    std::string dispatch() {
        std::vector<Registration> ordered = mRegistrations;
        std::stable_sort(ordered.begin(), ordered.end(),
                         [](const auto& left, const auto& right) { return left.paramID < right.paramID; });
        std::ostringstream text;
        for (const Registration& registration : ordered) {
            if (mDirty.erase(registration.field) > 0) {
                text << (text.tellp() > 0 ? " " : "") << registration.field << "=" << registration.value;
            }
        }
        return text.str();
    }

private:
    struct Registration {
        std::string paramID;
        std::int32_t field;
        std::int32_t value;
    };
    std::vector<Registration> mRegistrations;
    std::set<std::int32_t> mKnown;
    std::set<std::int32_t> mDirty;
};

RC_GTEST_PROP(PacketDispatcherProperty, PostsWhatThePlainModelPosts, ()) {
    DispatcherFixture fixture;
    Model model;
    const std::vector<std::string> identifiers = {"A", "Atk", "B", "a", "Hot", "HSw"};
    const int operations = *rc::gen::inRange(0, 60);
    for (int i = 0; i < operations; ++i) {
        const std::string paramID = *rc::gen::elementOf(identifiers);
        switch (*rc::gen::inRange(0, 4)) {
        case 0: {
            const std::int32_t field = *rc::gen::inRange(-1, 5);
            fixture.registerValue(paramID.c_str(), field, i);
            model.add(paramID, field, i);
            break;
        }
        case 1:
            RC_ASSERT(fixture.dispatch() == model.dispatch());
            RC_ASSERT(fixture.result == AAX_SUCCESS);
            break;
        default: {
            const bool dirty = *rc::gen::inRange(0, 4) > 0;
            fixture.dispatcher.SetDirty(paramID.c_str(), dirty);
            model.setDirty(paramID, dirty);
            break;
        }
        }
    }
    RC_ASSERT(fixture.dispatch() == model.dispatch());
}
#endif

} // namespace
} // namespace varno::test
