#include "AAX_CEffectParameters.h"
#include "Tests/Support/FakeHostServices.h"
#include "Tests/Support/FakeInstanceHost.h"
#include "Tests/Support/Properties.h"
#include "Tests/Support/TestEffect.h"
#include "Tests/Support/TestRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace varno::test {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr AAX_CTypeID kChunkID = 0x656C636B;
const std::string kGainAndHot =
    kChunkMarker + "d_Gain\0\0\x3F\xE0\0\0\0\0\0\0d_Hot\0\0\0\x3F\xD0\0\0\0\0\0\0"s;

// An effect with a master bypass, "Gain" (0.5), "Hot" (0.25) and a switch, in a host that keeps its requests.
class EffectWithChunks {
public:
    EffectWithChunks() {
        effect.onInit = [](TestEffect& self) {
            self.add(makeBoolParameter(cDefaultMasterBypassID));
            self.add(makeFloatParameter("Gain", 0.5F));
            self.add(makeFloatParameter("Hot", 0.25F));
            return AAX_SUCCESS;
        };
        effect.Initialize(&host);
    }
    EffectWithChunks(const EffectWithChunks&) = delete;
    EffectWithChunks& operator=(const EffectWithChunks&) = delete;
    ~EffectWithChunks() { effect.Uninitialize(); }

    void update(const char* id, double value) {
        effect.UpdateParameterNormalizedValue(id, value, AAX_eUpdateSource_Unspecified);
    }
    // What a host does that saves: asks for the size and reserves the memory.
    ChunkRecord reserve() {
        std::uint32_t size = 0;
        EXPECT_EQ(effect.GetChunkSize(kChunkID, &size), AAX_SUCCESS);
        return ChunkRecord(std::size_t{size});
    }
    ChunkRecord save() {
        ChunkRecord record = reserve();
        EXPECT_EQ(effect.GetChunk(kChunkID, record.get()), AAX_SUCCESS);
        return record;
    }
    bool isAsIn(ChunkRecord& record) {
        std::uint8_t isEqual = 7;
        EXPECT_EQ(effect.CompareActiveChunk(record.get(), &isEqual), AAX_SUCCESS);
        EXPECT_LE(isEqual, 1);
        return isEqual == 1;
    }
    // The values that restoring requests, as "Gain=0.5 Hot=0.25".
    std::string restore(ChunkRecord& record) {
        EXPECT_EQ(effect.SetChunk(kChunkID, record.get()), AAX_SUCCESS);
        std::ostringstream text;
        for (const auto& [id, value] : std::exchange(host.automation.requests, {})) {
            text << (text.tellp() > 0 ? " " : "") << id << "=" << value;
        }
        return text.str();
    }

    FakeInstanceHost host;
    ACFPtr<TestEffect> owned = makeTestEffect();
    TestEffect& effect = *owned;
};

TEST(EffectChunks, AreOfOneKind) {
    EffectWithChunks fixture;
    std::int32_t count = 0;
    EXPECT_EQ(fixture.effect.GetNumberOfChunks(&count), AAX_SUCCESS);
    EXPECT_EQ(count, 1);
    AAX_CTypeID id = 0;
    EXPECT_EQ(fixture.effect.GetChunkIDFromIndex(0, &id), AAX_SUCCESS);
    EXPECT_EQ(id, kChunkID);
    for (const std::int32_t index : {-1, 1}) {
        id = 7;
        EXPECT_EQ(fixture.effect.GetChunkIDFromIndex(index, &id), AAX_ERROR_INVALID_CHUNK_INDEX);
        EXPECT_EQ(id, 0U);
    }
}

TEST(EffectChunks, RefuseAnotherKind) {
    EffectWithChunks fixture;
    ChunkRecord record(kGainAndHot);
    const AAX_CTypeID other = AAX_FourCC("elcK");
    std::uint32_t size = 7;
    EXPECT_EQ(fixture.effect.GetChunkSize(other, &size), AAX_ERROR_INVALID_CHUNK_ID);
    EXPECT_EQ(size, 0U);
    EXPECT_EQ(fixture.effect.GetChunk(other, record.get()), AAX_ERROR_INVALID_CHUNK_ID);
    EXPECT_EQ(fixture.effect.SetChunk(other, record.get()), AAX_ERROR_INVALID_CHUNK_ID);
    EXPECT_THAT(fixture.host.automation.requests, IsEmpty());
}

TEST(EffectChunks, RefuseNull) {
    EffectWithChunks fixture;
    ChunkRecord record(kGainAndHot);
    std::uint8_t isEqual = 7;
    EXPECT_EQ(fixture.effect.GetNumberOfChunks(nullptr), AAX_ERROR_NULL_ARGUMENT);
    EXPECT_EQ(fixture.effect.GetChunkIDFromIndex(0, nullptr), AAX_ERROR_NULL_ARGUMENT);
    EXPECT_EQ(fixture.effect.GetChunkSize(kChunkID, nullptr), AAX_ERROR_NULL_ARGUMENT);
    EXPECT_EQ(fixture.effect.GetChunk(kChunkID, nullptr), AAX_ERROR_NULL_ARGUMENT);
    EXPECT_EQ(fixture.effect.SetChunk(kChunkID, nullptr), AAX_ERROR_NULL_ARGUMENT);
    EXPECT_EQ(fixture.effect.CompareActiveChunk(nullptr, &isEqual), AAX_ERROR_NULL_ARGUMENT);
    EXPECT_EQ(fixture.effect.CompareActiveChunk(record.get(), nullptr), AAX_ERROR_NULL_ARGUMENT);
}

TEST(EffectChunks, HoldTheSavedParametersInOrder) {
    EffectWithChunks fixture;
    ChunkRecord record = fixture.save();
    EXPECT_EQ(record.data(), kGainAndHot);
    EXPECT_EQ(record->fSize, static_cast<std::int32_t>(kGainAndHot.size()));
    EXPECT_EQ(record->fVersion, -1) << "building clears the version, deliberately";
    EXPECT_EQ(record.name(), "Complete Controls State"s + std::string(9, '\0'));
}

TEST(EffectChunks, LeaveTheHostsPartOfTheHeaderAlone) {
    EffectWithChunks fixture;
    ChunkRecord record = fixture.reserve();
    record->fChunkID = 0xEEEEEEEE;
    EXPECT_EQ(fixture.effect.GetChunk(kChunkID, record.get()), AAX_SUCCESS);
    EXPECT_EQ(record->fManufacturerID, 0xEEEEEEEEU);
    EXPECT_EQ(record->fProductID, 0xEEEEEEEEU);
    EXPECT_EQ(record->fPlugInID, 0xEEEEEEEEU);
    EXPECT_EQ(record->fChunkID, 0xEEEEEEEEU);
}

// A host may ask for the size once and save often.
TEST(EffectChunks, HoldTheValuesOfTheCallThatReadsThem) {
    EffectWithChunks fixture;
    ChunkRecord record = fixture.reserve();
    fixture.update("Hot", 0.5);
    EXPECT_EQ(fixture.effect.GetChunk(kChunkID, record.get()), AAX_SUCCESS);
    EXPECT_TRUE(fixture.isAsIn(record));
    fixture.update("Gain", 0.125);
    EXPECT_EQ(fixture.effect.GetChunk(kChunkID, record.get()), AAX_SUCCESS);
    EXPECT_TRUE(fixture.isAsIn(record));
}

TEST(EffectChunks, KeepTheSizeThatWasAskedForWhenAnotherKindIs) {
    EffectWithChunks fixture;
    ChunkRecord record = fixture.reserve();
    std::uint32_t size = 7;
    EXPECT_EQ(fixture.effect.GetChunkSize(AAX_FourCC("oher"), &size), AAX_ERROR_INVALID_CHUNK_ID);
    EXPECT_EQ(fixture.effect.GetChunk(kChunkID, record.get()), AAX_SUCCESS);
    EXPECT_EQ(record.data(), kGainAndHot);
}

TEST(EffectChunks, HaveNoVersionEvenAfterLoadingOne) {
    EffectWithChunks fixture;
    ChunkRecord loaded(kGainAndHot);
    fixture.restore(loaded);
    EXPECT_EQ(fixture.save()->fVersion, -1);
}

TEST(EffectChunks, AreRefusedWhenTheSizeWasNotAskedForOrHasChanged) {
    EffectWithChunks fixture;
    ChunkRecord record(std::size_t{500});
    EXPECT_EQ(fixture.effect.GetChunk(kChunkID, record.get()), AAX_ERROR_INCORRECT_CHUNK_SIZE);
    std::uint32_t size = 0;
    EXPECT_EQ(fixture.effect.GetChunkSize(kChunkID, &size), AAX_SUCCESS);
    EXPECT_EQ(fixture.effect.mChunkSize, static_cast<std::int32_t>(size));
    fixture.effect.add(makeFloatParameter("New"));
    EXPECT_EQ(fixture.effect.GetChunk(kChunkID, record.get()), AAX_ERROR_INCORRECT_CHUNK_SIZE);
    EXPECT_EQ(record.data(), std::string(500, '\xEE'));
}

TEST(EffectChunks, AreRefusedWhenTheyHaveBecomeSmaller) {
    FakeInstanceHost host;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    FakeParameter* const text = effect->add(std::make_unique<FakeParameter>("S"));
    text->asString = "four more bytes";
    std::uint32_t size = 0;
    EXPECT_EQ(effect->GetChunkSize(kChunkID, &size), AAX_SUCCESS);
    ChunkRecord record(std::size_t{size});
    text->asString = "none";
    EXPECT_EQ(effect->GetChunk(kChunkID, record.get()), AAX_ERROR_INCORRECT_CHUNK_SIZE);
    EXPECT_EQ(record.data(), std::string(size, '\xEE'));
}

TEST(EffectChunks, HoldTheMarkerAloneWithoutParameters) {
    const ACFPtr<TestEffect> effect = makeTestEffect();
    std::uint32_t size = 0;
    EXPECT_EQ(effect->GetChunkSize(kChunkID, &size), AAX_SUCCESS);
    EXPECT_EQ(size, 4U);
    ChunkRecord record(size);
    EXPECT_EQ(effect->GetChunk(kChunkID, record.get()), AAX_SUCCESS);
    EXPECT_EQ(record.data(), kChunkMarker);
    std::uint8_t isEqual = 0;
    EXPECT_EQ(effect->CompareActiveChunk(record.get(), &isEqual), AAX_SUCCESS);
    EXPECT_EQ(isEqual, 1) << "nothing can differ";
}

TEST(EffectChunks, AreRestoredThroughAutomation) {
    EffectWithChunks fixture;
    ChunkRecord record(kChunkMarker + "d_Hot\0\0\0\x3F\xE8\0\0\0\0\0\0"s);
    EXPECT_EQ(fixture.restore(record), "Hot=0.75") << "what has no entry keeps its value";
    EXPECT_THAT(fixture.host.automation.takeCalls(),
                testing::IsSupersetOf({"touch Hot", "request Hot 0.75", "release Hot"}));
}

TEST(EffectChunks, AreRestoredInTheOrderOfTheParameters) {
    EffectWithChunks fixture;
    ChunkRecord record(kChunkMarker + "d_Hot\0\0\0\x3F\xE8\0\0\0\0\0\0d_Gain\0\0\x3F\xD0\0\0\0\0\0\0"s);
    EXPECT_EQ(fixture.restore(record), "Gain=0.25 Hot=0.75");
}

// The kind is the host's argument; the record's own is what comparing goes by.
TEST(EffectChunks, AreRestoredWhateverKindTheRecordNames) {
    EffectWithChunks fixture;
    ChunkRecord record(kGainAndHot);
    record->fChunkID = AAX_FourCC("oher");
    EXPECT_EQ(fixture.restore(record), "Gain=0.5 Hot=0.25");
}

TEST(EffectChunks, RestoreAndCompareEveryIntegerButZeroAsTrue) {
    const ACFPtr<TestEffect> effect = makeTestEffect();
    FakeParameter* const flag = effect->add(std::make_unique<FakeParameter>("B"));
    flag->asBool = false;
    for (const std::string& stored : {"\xFF\xFF\xFF\xFF"s, "\x80\0\0\0"s, "\0\0\0\2"s}) {
        ChunkRecord record(kChunkMarker + "l_B\0"s + stored);
        flag->asBool = false;
        std::uint8_t isEqual = 7;
        EXPECT_EQ(effect->CompareActiveChunk(record.get(), &isEqual), AAX_SUCCESS);
        EXPECT_EQ(isEqual, 0);
        EXPECT_EQ(effect->SetChunk(kChunkID, record.get()), AAX_SUCCESS);
        EXPECT_EQ(flag->asBool, true);
        EXPECT_EQ(effect->CompareActiveChunk(record.get(), &isEqual), AAX_SUCCESS);
        EXPECT_EQ(isEqual, 1);
    }
}

TEST(EffectChunks, RestoreNeitherForeignNorFilteredNorWronglyTypedEntries) {
    EffectWithChunks fixture;
    ChunkRecord record(
        kChunkMarker +
        "d_Nobody\0\0\x3F\xE8\0\0\0\0\0\0l_MasterBypassID\0\0\0\0\0\0\0\1f_Gain\0\0\x3F\0\0\0"s);
    EXPECT_EQ(fixture.restore(record), "");
}

TEST(EffectChunks, RestoreWhatIsNotANumberAsTheLowerBound) {
    EffectWithChunks fixture;
    ChunkRecord record(kChunkMarker + "d_Gain\0\0\x7F\xF8\0\0\0\0\0\0d_Hot\0\0\0\x7F\xE0\0\0\0\0\0\0"s);
    EXPECT_EQ(fixture.restore(record), "Gain=0 Hot=1") << "and 9e307 as the upper";
}

TEST(EffectChunks, RestoreNothingFromWhatIsNoChunk) {
    EffectWithChunks fixture;
    for (const std::string& data :
         {""s, "\1\1\1"s, kChunkMarker, "\1\1\1\2d_Gain\0\0\x3F\xE0\0\0\0\0\0\0"s}) {
        ChunkRecord record(data);
        EXPECT_EQ(fixture.restore(record), "");
        EXPECT_FALSE(fixture.isAsIn(record));
    }
}

TEST(EffectChunks, RestoreWhatLiesBeforeACut) {
    EffectWithChunks fixture;
    ChunkRecord record(kGainAndHot.substr(0, kGainAndHot.size() - 1));
    EXPECT_EQ(fixture.restore(record), "Gain=0.5");
}

TEST(EffectChunks, CompareEqualToTheCurrentValues) {
    EffectWithChunks fixture;
    ChunkRecord record = fixture.save();
    EXPECT_TRUE(fixture.isAsIn(record));
    fixture.update("Gain", static_cast<double>(std::nextafter(0.5F, 1.0F)));
    EXPECT_FALSE(fixture.isAsIn(record)) << "the smallest step of a float";
    fixture.update("Gain", 0.5);
    EXPECT_TRUE(fixture.isAsIn(record));
    fixture.update(cDefaultMasterBypassID, 1.0);
    EXPECT_TRUE(fixture.isAsIn(record)) << "the master bypass is not compared";
}

TEST(EffectChunks, CompareDifferentWhenAValueIsMissing) {
    EffectWithChunks fixture;
    ChunkRecord record(kChunkMarker + "d_Gain\0\0\x3F\xE0\0\0\0\0\0\0"s);
    EXPECT_FALSE(fixture.isAsIn(record));
    ChunkRecord notANumber(kChunkMarker + "d_Gain\0\0\x3F\xE0\0\0\0\0\0\0d_Hot\0\0\0\x7F\xF8\0\0\0\0\0\0"s);
    EXPECT_FALSE(fixture.isAsIn(notANumber));
}

TEST(EffectChunks, CompareEqualToAnotherKind) {
    EffectWithChunks fixture;
    ChunkRecord record(std::string_view("nothing like a chunk"));
    record->fChunkID = AAX_FourCC("oher");
    EXPECT_TRUE(fixture.isAsIn(record)) << "deliberately never different";
}

TEST(EffectChunks, SaveAndRestoreEveryType) {
    FakeInstanceHost host;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    std::vector<FakeParameter*> fakes;
    effect->onInit = [&](TestEffect& self) {
        for (const char* id : {"I", "B", "D", "S", "N"}) {
            fakes.push_back(self.add(std::make_unique<FakeParameter>(id)));
        }
        fakes[0]->asInt32 = -2;
        fakes[1]->asBool = true;
        fakes[2]->asDouble = 0.5;
        fakes[3]->asString = "abc";
        return AAX_SUCCESS;
    };
    effect->Initialize(&host);
    std::uint32_t size = 0;
    EXPECT_EQ(effect->GetChunkSize(kChunkID, &size), AAX_SUCCESS);
    ChunkRecord record(size);
    EXPECT_EQ(effect->GetChunk(kChunkID, record.get()), AAX_SUCCESS);
    EXPECT_EQ(record.data(),
              kChunkMarker + "l_I\0\xFF\xFF\xFF\xFEl_B\0\0\0\0\1d_D\0\x3F\xE0\0\0\0\0\0\0r_S\0abc\0"s);

    std::uint8_t isEqual = 0;
    EXPECT_EQ(effect->CompareActiveChunk(record.get(), &isEqual), AAX_SUCCESS);
    EXPECT_EQ(isEqual, 1);
    fakes[3]->asString = "xyz";
    EXPECT_EQ(effect->CompareActiveChunk(record.get(), &isEqual), AAX_SUCCESS);
    EXPECT_EQ(isEqual, 0);

    EXPECT_EQ(effect->SetChunk(kChunkID, record.get()), AAX_SUCCESS);
    EXPECT_THAT(fakes[0]->sets, ElementsAre("int32 -2"));
    EXPECT_THAT(fakes[1]->sets, ElementsAre("bool 1"));
    EXPECT_THAT(fakes[2]->sets, ElementsAre("double 0.5"));
    EXPECT_THAT(fakes[3]->sets, ElementsAre("string abc"));
    EXPECT_THAT(fakes[4]->sets, IsEmpty());
}

TEST(EffectChunks, LetNoExceptionEscape) {
    const ListeningHost listening;
    EffectWithChunks fixture;
    ChunkRecord record = fixture.save();
    FakeParameter* const fake = fixture.effect.add(std::make_unique<FakeParameter>("Fake"));
    fake->before = [] { throw std::runtime_error("broken"); };
    std::uint32_t size = 7;
    std::uint8_t isEqual = 7;
    EXPECT_EQ(fixture.effect.GetChunkSize(kChunkID, &size), AAX_ERROR_UNKNOWN_EXCEPTION);
    EXPECT_EQ(size, 0U);
    EXPECT_EQ(fixture.effect.GetChunk(kChunkID, record.get()), AAX_ERROR_UNKNOWN_EXCEPTION);
    EXPECT_EQ(fixture.effect.SetChunk(kChunkID, record.get()), AAX_ERROR_UNKNOWN_EXCEPTION);
    EXPECT_EQ(fixture.effect.CompareActiveChunk(record.get(), &isEqual), AAX_ERROR_UNKNOWN_EXCEPTION);
    EXPECT_EQ(isEqual, 0);
    std::vector<std::string> lines;
    for (const auto& line : listening.lines()) {
        lines.push_back(line.text);
    }
    EXPECT_THAT(lines, ElementsAre("AAX_CEffectParameters::GetChunkSize exception caught: broken",
                                   "AAX_CEffectParameters::GetChunk exception caught: broken",
                                   "AAX_CEffectParameters::SetChunk exception caught: broken",
                                   "AAX_CEffectParameters::CompareActiveChunk exception caught: broken"));
    fake->before = [] {};
}

#if VARNO_HAS_PROPERTIES
RC_GTEST_PROP(EffectChunksProperty, RestoreWhatTheySaved, ()) {
    EffectWithChunks fixture;
    const auto anyValue = [] { return *rc::gen::inRange(0, 1 << 24) / 16777216.0; };
    fixture.update("Gain", anyValue());
    fixture.update("Hot", anyValue());
    ChunkRecord record = fixture.save();
    fixture.update("Gain", anyValue());
    fixture.update("Hot", anyValue());
    RC_ASSERT(fixture.effect.SetChunk(kChunkID, record.get()) == AAX_SUCCESS);
    for (const auto& [id, value] : std::exchange(fixture.host.automation.requests, {})) {
        fixture.update(id.c_str(), value);
    }
    RC_ASSERT(fixture.isAsIn(record));
    RC_ASSERT(fixture.save().data() == record.data());
}
#endif

} // namespace
} // namespace varno::test
