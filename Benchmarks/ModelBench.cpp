// The data model at its own border, under a host that grants every wish at once and takes packets without
// looking at them. Each iteration works through a hundred models, so that reading the clock does not count.
#include "AAX_IACFAutomationDelegate.h"
#include "ACF/ACFPtr.h"
#include "Benchmarks/PricedLoop.h"
#include "DemoGain_ParameterTable.h"
#include "DemoGain_Parameters.h"
#include "Tests/Support/FakeInstanceHost.h"
#include "Tests/Support/FakeUnknown.h"
#include "Tests/Support/TestEffect.h"

#include <array>
#include <memory>
#include <stdexcept>
#include <utility>

namespace varno::bench {
namespace {

class CountingController : public test::FakeController {
public:
    AAX_Result PostPacket(AAX_CFieldIndex /*field*/, const void* payload, std::uint32_t /*size*/) override {
        benchmark::DoNotOptimize(payload);
        ++posted;
        return AAX_SUCCESS;
    }

    std::int64_t posted = 0;
};

class GrantingAutomation : public FakeUnknown<AAX_IACFAutomationDelegate> {
public:
    AAX_Result PostSetValueRequest(AAX_CParamID id, double value) override {
        return model->UpdateParameterNormalizedValue(id, value, AAX_eUpdateSource_Unspecified);
    }
    AAX_Result RegisterParameter(AAX_CParamID /*id*/) override { return AAX_SUCCESS; }
    AAX_Result UnregisterParameter(AAX_CParamID /*id*/) override { return AAX_SUCCESS; }
    AAX_Result PostTouchRequest(AAX_CParamID /*id*/) override { return AAX_SUCCESS; }
    AAX_Result PostReleaseRequest(AAX_CParamID /*id*/) override { return AAX_SUCCESS; }
    AAX_Result PostCurrentValue(AAX_CParamID /*id*/, double /*value*/) override { return AAX_SUCCESS; }

    DemoGain_Parameters* model = nullptr;
};

void require(bool condition, const char* what) {
    if (!condition) {
        throw std::runtime_error(what);
    }
}

// A data model with its host.
class Hosted {
public:
    Hosted() {
        mHost.offer(IID_IAAXControllerV1, &mController);
        mHost.offer(IID_IAAXAutomationDelegateV1, &mAutomation);
        mAutomation.model = mModel.Get();
        require(mModel->Initialize(&mHost) == AAX_SUCCESS, "the data model is not initialised");
        mModel->GenerateCoefficients();
    }
    Hosted(const Hosted&) = delete;
    Hosted& operator=(const Hosted&) = delete;
    ~Hosted() { mModel->Uninitialize(); }

    // A value that differs from the one before.
    double nextValue() { return mValue = mValue == 0.25 ? 0.75 : 0.25; }
    void changeAll() {
        const double value = nextValue();
        for (const SDemoGain_Parameter& parameter : kDemoGain_Parameters) {
            mModel->SetParameterNormalizedValue(parameter.mIdentifier, value);
        }
    }
    // Packets posted since the last time this was asked.
    std::int64_t takePosted() { return std::exchange(mController.posted, 0); }

    DemoGain_Parameters& model() { return *mModel; }

    static constexpr AAX_CTypeID kChunkID = AAX_FourCC("elck");
    void save(test::ChunkRecord& record) {
        require(mModel->GetChunk(kChunkID, record.get()) == AAX_SUCCESS, "the chunk is not written");
    }
    std::uint32_t chunkSize() {
        std::uint32_t size = 0;
        require(mModel->GetChunkSize(kChunkID, &size) == AAX_SUCCESS, "the chunk has no size");
        return size;
    }

private:
    CountingController mController;
    GrantingAutomation mAutomation;
    FakeHost mHost;
    ACFPtr<DemoGain_Parameters> mModel =
        ACFPtr<DemoGain_Parameters>::Retain(static_cast<DemoGain_Parameters*>(DemoGain_Parameters::Create()));
    double mValue = 0.5;
};

using Models = std::array<Hosted, 100>;

template<class Operation>
void each(Models& models, Operation operation) {
    for (Hosted& hosted : models) {
        operation(hosted);
    }
}

constexpr std::int64_t kModels = std::tuple_size_v<Models>;

void nothing() {
}

// From the wish for a value to its packets at the host.
void parameterChange(benchmark::State& state, const char* id) {
    const auto models = std::make_unique<Models>();
    measurePriced(state, kModels, nothing, [&] {
        each(*models, [&](Hosted& hosted) {
            hosted.model().SetParameterNormalizedValue(id, hosted.nextValue());
            hosted.model().GenerateCoefficients();
        });
    });
    require(models->front().takePosted() > 0, "no packet was posted");
}
// A packet of the value itself, one computed for a level, and one for the time constants and the curve.
BENCHMARK_CAPTURE(parameterChange, Mix, "Mix")->Name("model/parameter_change/Mix")->UseManualTime();
BENCHMARK_CAPTURE(parameterChange, Gain, "Gain")->Name("model/parameter_change/Gain")->UseManualTime();
BENCHMARK_CAPTURE(parameterChange, Ratio, "Ratio")->Name("model/parameter_change/Ratio")->UseManualTime();

void generate(Models& models) {
    each(models, [](Hosted& hosted) { hosted.model().GenerateCoefficients(); });
}

void coefficientsAllDirty(benchmark::State& state) {
    const auto models = std::make_unique<Models>();
    measurePriced(
        state, kModels, [&] { each(*models, [](Hosted& hosted) { hosted.changeAll(); }); },
        [&] { generate(*models); });
    require(models->front().takePosted() > 0, "no packet was posted");
}
BENCHMARK(coefficientsAllDirty)->Name("model/coefficients/all_dirty")->UseManualTime();

void coefficientsNoneDirty(benchmark::State& state) {
    const auto models = std::make_unique<Models>();
    each(*models, [](Hosted& hosted) { hosted.takePosted(); });
    measurePriced(state, kModels, nothing, [&] { generate(*models); });
    require(models->front().takePosted() == 0, "a packet was posted");
}
BENCHMARK(coefficientsNoneDirty)->Name("model/coefficients/none_dirty")->UseManualTime();

// Asking for the size is part of it: a host that saves must.
void chunkSave(benchmark::State& state) {
    const auto models = std::make_unique<Models>();
    test::ChunkRecord record(models->front().chunkSize());
    measurePriced(state, kModels, nothing, [&] {
        each(*models, [&](Hosted& hosted) {
            require(hosted.chunkSize() == static_cast<std::uint32_t>(record->fSize),
                    "the chunk's size has changed");
            hosted.save(record);
        });
    });
}
BENCHMARK(chunkSave)->Name("model/chunk/save")->UseManualTime();

// Two chunks in turn that differ in every value.
void chunkRestore(benchmark::State& state) {
    const auto models = std::make_unique<Models>();
    const std::uint32_t size = models->front().chunkSize();
    std::array<test::ChunkRecord, 2> records{test::ChunkRecord(size), test::ChunkRecord(size)};
    for (test::ChunkRecord& record : records) {
        models->front().changeAll();
        models->front().chunkSize();
        models->front().save(record);
    }
    std::size_t turn = 0;
    measurePriced(
        state, kModels, [&] { turn = 1 - turn; },
        [&] {
            each(*models,
                 [&](Hosted& hosted) { hosted.model().SetChunk(Hosted::kChunkID, records[turn].get()); });
        });
    std::uint8_t isEqual = 0;
    models->front().model().CompareActiveChunk(records[turn].get(), &isEqual);
    require(isEqual != 0, "the chunk was not restored");
}
BENCHMARK(chunkRestore)->Name("model/chunk/restore")->UseManualTime();

// An equal one, which takes longest.
void chunkCompare(benchmark::State& state) {
    const auto models = std::make_unique<Models>();
    test::ChunkRecord record(models->front().chunkSize());
    models->front().save(record);
    std::uint8_t isEqual = 0;
    measurePriced(state, kModels, nothing, [&] {
        each(*models, [&](Hosted& hosted) { hosted.model().CompareActiveChunk(record.get(), &isEqual); });
    });
    require(isEqual != 0, "the chunk does not compare equal");
}
BENCHMARK(chunkCompare)->Name("model/chunk/compare")->UseManualTime();

} // namespace
} // namespace varno::bench
