// Calls of a host in every order, legal or not: none may crash, and each returns what its state demands.
#include "DemoGain_Parameters.h"
#include "Tests/Support/FakeInstanceHost.h"
#include "Tests/Support/TestEffect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <vector>

namespace varno::test {
namespace {

constexpr AAX_CTypeID kChunkID = AAX_FourCC("elck");
constexpr std::int32_t kParameters = 14;
constexpr std::uint32_t kMarkerBytes = 4;
constexpr std::uint32_t kSavedBytes = 220;
constexpr std::uint32_t kMasterBypassBytes = 24; // Tag and name in 20, the value in 4.
constexpr double kDefaultGain = 0.5;
constexpr double kSavedGain = 0.25;
constexpr AAX_Result kInitFailure = AAX_ERROR_INVALID_INTERNAL_DATA;

// Fields with a packet of their own, and what the handlers of three of them post beside it.
const std::set<AAX_CFieldIndex> kPacketFields = {0, 1, 3, 5, 6, 9, 11, 13, 14, 15, 16};

std::vector<AAX_CFieldIndex> fieldsPostedFor(const std::set<AAX_CFieldIndex>& packets) {
    std::vector<AAX_CFieldIndex> fields(packets.begin(), packets.end());
    const auto add = [&](AAX_CFieldIndex packet, std::initializer_list<AAX_CFieldIndex> others) {
        fields.insert(fields.end(), packets.contains(packet) ? others.begin() : others.end(), others.end());
    };
    add(1, {2});
    add(3, {4});
    add(16, {7, 8, 10, 12, 17, 18, 19, 20, 21, 22, 23});
    std::sort(fields.begin(), fields.end());
    return fields;
}

// The effect, whose initialisation fails at its end where the test says so.
class FailingEffect : public DemoGain_Parameters {
public:
    bool failsToInitialize = false;

protected:
    AAX_Result EffectInit() override {
        const AAX_Result result = DemoGain_Parameters::EffectInit();
        return failsToInitialize ? kInitFailure : result;
    }
};

// What an instance is expected to be.
struct Expected {
    std::int32_t parameters = 0;
    bool hasHost = false;
    bool isBypassExcluded = false; // From the first initialisation that succeeds on.
    double gain = kDefaultGain;
    std::int32_t changes = 0;
    std::uint32_t rememberedSize = 0;
    std::set<AAX_CFieldIndex> dirty;

    bool isBuilt() const { return parameters > 0; }
    std::uint32_t chunkSize() const {
        return !isBuilt() ? kMarkerBytes : kSavedBytes + (isBypassExcluded ? 0 : kMasterBypassBytes);
    }
    void begin(bool isSuccess, bool isInHost) {
        parameters = kParameters;
        hasHost = isInHost;
        isBypassExcluded = isBypassExcluded || isSuccess;
        gain = kDefaultGain;
        dirty = kPacketFields;
    }
    void end() {
        parameters = 0;
        dirty.clear();
    }
    void setGain(double value) {
        changes += gain != value ? 1 : 0;
        gain = value;
        dirty.insert(1);
    }
};

// A chunk with every saved value at its default but the gain.
ChunkRecord savedChunk() {
    const auto model = ACFPtr<AAX_CEffectParameters>::Retain(DemoGain_Parameters::Create());
    model->Initialize(nullptr);
    model->UpdateParameterNormalizedValue("Gain", kSavedGain, AAX_eUpdateSource_Unspecified);
    std::uint32_t size = 0;
    model->GetChunkSize(kChunkID, &size);
    ChunkRecord chunk(size);
    EXPECT_EQ(model->GetChunk(kChunkID, chunk.get()), AAX_SUCCESS);
    return chunk;
}

// One instance, in a host that answers each request at once.
class Life {
public:
    explicit Life(const AAX_SPlugInChunk* saved)
        : mSaved(saved) {
        mHost.offer(IID_IAAXControllerV1, &mController);
        mHost.offer(IID_IAAXAutomationDelegateV1, &mAutomation);
        mAutomation.onRequest = [this](AAX_CParamID id, double value) {
            mEffect->UpdateParameterNormalizedValue(id, value, AAX_eUpdateSource_Unspecified);
        };
    }
    Life(const Life&) = delete;
    Life& operator=(const Life&) = delete;
    ~Life() { mEffect->Uninitialize(); }

    void initialize() {
        EXPECT_EQ(mEffect->Initialize(&mHost), AAX_SUCCESS);
        mExpected.begin(true, true);
    }
    void initializeWithoutHost() {
        EXPECT_EQ(mEffect->Initialize(nullptr), AAX_SUCCESS);
        mExpected.begin(true, false);
    }
    void failToInitialize() {
        mEffect->failsToInitialize = true;
        EXPECT_EQ(mEffect->Initialize(&mHost), kInitFailure);
        mEffect->failsToInitialize = false;
        mExpected.begin(false, true);
    }
    void uninitialize() {
        EXPECT_EQ(mEffect->Uninitialize(), AAX_SUCCESS);
        EXPECT_EQ(mHost.references() + mController.references() + mAutomation.references(), 0);
        mExpected.end();
    }
    void generateCoefficients() {
        mController.posts.clear();
        const bool isLost = !mExpected.hasHost && !mExpected.dirty.empty();
        EXPECT_EQ(mEffect->GenerateCoefficients(), isLost ? AAX_ERROR_NULL_OBJECT : AAX_SUCCESS);
        std::vector<AAX_CFieldIndex> posted = mController.fields();
        std::sort(posted.begin(), posted.end());
        EXPECT_EQ(posted, fieldsPostedFor(mExpected.hasHost ? mExpected.dirty : std::set<AAX_CFieldIndex>()));
        mExpected.dirty.clear();
    }
    void getChunkSize() {
        std::uint32_t size = 7;
        EXPECT_EQ(mEffect->GetChunkSize(kChunkID, &size), AAX_SUCCESS);
        EXPECT_EQ(size, mExpected.chunkSize());
        mExpected.rememberedSize = mExpected.chunkSize();
    }
    void getChunk() {
        const std::uint32_t size = mExpected.chunkSize();
        ChunkRecord chunk(size);
        const bool isAnnounced = size == mExpected.rememberedSize;
        EXPECT_EQ(mEffect->GetChunk(kChunkID, chunk.get()),
                  isAnnounced ? AAX_SUCCESS : AAX_ERROR_INCORRECT_CHUNK_SIZE);
        EXPECT_EQ(chunk->fVersion, isAnnounced ? -1 : 7);
        EXPECT_EQ(chunk.data().starts_with(kChunkMarker), isAnnounced);
    }
    void setChunk() {
        EXPECT_EQ(mEffect->SetChunk(kChunkID, mSaved), AAX_SUCCESS);
        if (mExpected.isBuilt() && mExpected.hasHost) {
            const bool isBypassDirty = mExpected.dirty.contains(0);
            mExpected.setGain(kSavedGain);
            mExpected.dirty = kPacketFields; // The host has answered for every saved value.
            if (!isBypassDirty) {
                mExpected.dirty.erase(0);
            }
        }
    }
    void compareActiveChunk() {
        std::uint8_t isEqual = 7;
        EXPECT_EQ(mEffect->CompareActiveChunk(mSaved, &isEqual), AAX_SUCCESS);
        const bool isAsSaved = mExpected.gain == kSavedGain && mExpected.isBypassExcluded;
        EXPECT_EQ(isEqual, !mExpected.isBuilt() || isAsSaved ? 1 : 0);
    }
    void setValue() {
        constexpr double kValue = 0.75;
        EXPECT_EQ(mEffect->SetParameterNormalizedValue("Gain", kValue), resultOfParameterCall());
        if (mExpected.isBuilt() && mExpected.hasHost) {
            mExpected.setGain(kValue);
        }
    }
    void updateValue() {
        constexpr double kValue = 0.125;
        EXPECT_EQ(mEffect->UpdateParameterNormalizedValue("Gain", kValue, AAX_eUpdateSource_Unspecified),
                  resultOfParameterCall());
        if (mExpected.isBuilt()) {
            mExpected.setGain(kValue);
        }
    }
    void passNull() {
        double value = 7.0;
        std::uint8_t isEqual = 7;
        AAX_IACFEffectParameters& effect = *mEffect;
        EXPECT_EQ(effect.GetChunkSize(kChunkID, nullptr), AAX_ERROR_NULL_ARGUMENT);
        EXPECT_EQ(effect.GetChunk(kChunkID, nullptr), AAX_ERROR_NULL_ARGUMENT);
        EXPECT_EQ(effect.SetChunk(kChunkID, nullptr), AAX_ERROR_NULL_ARGUMENT);
        EXPECT_EQ(effect.CompareActiveChunk(nullptr, &isEqual), AAX_ERROR_NULL_ARGUMENT);
        EXPECT_EQ(effect.CompareActiveChunk(mSaved, nullptr), AAX_ERROR_NULL_ARGUMENT);
        EXPECT_EQ(effect.GetParameterNormalizedValue(nullptr, &value), AAX_ERROR_INVALID_PARAMETER_ID);
        EXPECT_EQ(effect.GetParameterNormalizedValue("Gain", nullptr), AAX_ERROR_NULL_ARGUMENT);
        EXPECT_EQ(effect.SetParameterNormalizedValue(nullptr, 0.0), AAX_ERROR_INVALID_PARAMETER_ID);
        EXPECT_EQ(effect.UpdateParameterNormalizedValue(nullptr, 0.0, AAX_eUpdateSource_Unspecified),
                  AAX_ERROR_INVALID_PARAMETER_ID);
        EXPECT_EQ(effect.GetParameterNameOfLength("Gain", nullptr, 2), AAX_ERROR_INVALID_STRING_CONVERSION);
        EXPECT_EQ(effect.NotificationReceived(AAX_FourCC("ASPv"), nullptr, 4), AAX_SUCCESS);
        EXPECT_EQ(effect.UpdatePageTable(0, 0, nullptr, nullptr), AAX_SUCCESS);
        EXPECT_EQ(effect.ResetFieldData(29, nullptr, 0), AAX_ERROR_INVALID_FIELD_INDEX);
        EXPECT_EQ(value, 7.0);
        EXPECT_EQ(isEqual, 7);
    }

    // The state, which every call above must leave as expected.
    void check() const {
        std::int32_t count = -1;
        EXPECT_EQ(mEffect->GetNumberOfParameters(&count), AAX_SUCCESS);
        EXPECT_EQ(count, mExpected.parameters);
        double gain = -1.0;
        EXPECT_EQ(mEffect->GetParameterNormalizedValue("Gain", &gain), resultOfParameterCall());
        EXPECT_EQ(gain, mExpected.isBuilt() ? mExpected.gain : -1.0);
        std::int32_t changes = -1;
        EXPECT_EQ(mEffect->GetNumberOfChanges(&changes), AAX_SUCCESS);
        EXPECT_EQ(changes, mExpected.changes);
    }

private:
    AAX_Result resultOfParameterCall() const {
        return mExpected.isBuilt() ? AAX_SUCCESS : AAX_ERROR_INVALID_PARAMETER_ID;
    }

    const AAX_SPlugInChunk* mSaved;
    FakeHost mHost;
    FakeController mController;
    ImmediateAutomation mAutomation;
    ACFPtr<FailingEffect> mEffect = ACFPtr<FailingEffect>::Retain(new FailingEffect);
    Expected mExpected;
};

struct Call {
    const char* name;
    void (Life::*member)();
};

constexpr Call kCalls[] = {
    {"Initialize", &Life::initialize},
    {"Initialize without a host", &Life::initializeWithoutHost},
    {"Initialize that fails", &Life::failToInitialize},
    {"Uninitialize", &Life::uninitialize},
    {"GenerateCoefficients", &Life::generateCoefficients},
    {"GetChunkSize", &Life::getChunkSize},
    {"GetChunk", &Life::getChunk},
    {"SetChunk", &Life::setChunk},
    {"CompareActiveChunk", &Life::compareActiveChunk},
    {"SetParameterNormalizedValue", &Life::setValue},
    {"UpdateParameterNormalizedValue", &Life::updateValue},
    {"null arguments", &Life::passNull},
};

constexpr std::size_t kLength = 4;
using Sequence = std::array<std::size_t, kLength>; // Indices of kCalls.

std::string textOf(const Sequence& sequence) {
    std::string text;
    for (const std::size_t call : sequence) {
        text.append(text.empty() ? "" : ", ").append(kCalls[call].name);
    }
    return text;
}

// The next sequence; false after the last one.
bool advance(Sequence& sequence) {
    for (std::size_t& call : sequence) {
        call = (call + 1) % std::size(kCalls);
        if (call != 0) {
            return true;
        }
    }
    return false;
}

TEST(ParametersSequences, ofAnyFourCallsReturnWhatTheirStateDemands) {
    ChunkRecord saved = savedChunk();
    Sequence sequence{};
    int sequences = 0;
    do {
        Life life(saved.get());
        life.check();
        for (const std::size_t call : sequence) {
            (life.*kCalls[call].member)();
            life.check();
        }
        ASSERT_FALSE(HasFailure()) << textOf(sequence);
        ++sequences;
    } while (advance(sequence));
    EXPECT_EQ(sequences, 12 * 12 * 12 * 12);
}

} // namespace
} // namespace varno::test
