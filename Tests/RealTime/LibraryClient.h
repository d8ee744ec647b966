/// The effect in the host library, as a client of it has it.
#ifndef VARNO_TESTS_REALTIME_LIBRARYCLIENT_H
#define VARNO_TESTS_REALTIME_LIBRARYCLIENT_H

#include "DemoGain_ParameterTable.h"
#include "Host/Module.h"
#include "Play/LiveEffect.h"
#include "Tests/RealTime/AudioClient.h"

#include <array>
#include <cstdint>
#include <memory>
#include <random>
#include <string>

namespace varno::test {

/// The module that is linked in. Its breaches of contracts become complaints.
class WatchedModule {
public:
    WatchedModule();
    const std::shared_ptr<Module>& get() const { return mModule; }
    std::string complaints();

private:
    std::shared_ptr<ContractMonitor> mMonitor = std::make_shared<ContractMonitor>();
    std::shared_ptr<Module> mModule;
};

/// With bypass and oversampling, as each client of the host library has it.
class LibraryClient : public AudioClient {
public:
    void prepare(int frames, std::mt19937& ioRandom) override;
    void process(int frames) override;
    void disturb(std::mt19937& ioRandom) override;
    std::string complaints() override { return mModule.complaints(); }

protected:
    /// Gives the effect the values of the block.
    void give();
    LiveEffect& effect() { return mEffect; }

private:
    void applyPreset(std::mt19937& ioRandom);
    void readMeters();

    WatchedModule mModule;
    LiveEffect mEffect{mModule.get(), 2, kRateHz};
    LiveProcess mProcess = mEffect.process();
    StoredChunk mSaved = mEffect.instance().save();
    std::array<BufferValue, std::size(kDemoGain_Parameters)> mValues{};
    std::int32_t mFactor = 0; ///< To change to; 0: no change.
    double mMeters = 0.0;
};

} // namespace varno::test

#endif
