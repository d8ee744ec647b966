/// A packet dispatcher in an effect and a host of its own, for tests.
#ifndef VARNO_TESTS_LIBS_AAXLIBRARY_DISPATCHERFIXTURE_H
#define VARNO_TESTS_LIBS_AAXLIBRARY_DISPATCHERFIXTURE_H

#include "AAX_CPacketDispatcher.h"
#include "AAX_VController.h"
#include "Tests/Support/FakeInstanceHost.h"
#include "Tests/Support/TestEffect.h"

#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

namespace varno::test {

/// A handler whose behaviour the test sets.
class FunctionHandler : public AAX_IPacketHandler {
public:
    using Function = std::function<AAX_Result(AAX_CParamID, AAX_CPacket&)>;

    explicit FunctionHandler(Function function)
        : mFunction(std::move(function)) {}
    std::unique_ptr<AAX_IPacketHandler> Clone() const override {
        return std::make_unique<FunctionHandler>(*this);
    }
    AAX_Result Call(AAX_CParamID paramID, AAX_CPacket& packet) const override {
        return mFunction(paramID, packet);
    }

private:
    Function mFunction;
};

/// The dispatcher looks its parameters up in `effect`, which has none yet.
class DispatcherFixture {
public:
    DispatcherFixture() { dispatcher.Initialize(&mController, effect.Get()); }
    DispatcherFixture(const DispatcherFixture&) = delete;
    DispatcherFixture& operator=(const DispatcherFixture&) = delete;

    /// Registers a handler that posts `value` and succeeds.
    void registerValue(const char* paramID, AAX_CFieldIndex field, std::int32_t value) {
        registerFunction(paramID, field, [value](AAX_CParamID, AAX_CPacket& packet) {
            *packet.GetPtr<std::int32_t>() = value;
            return AAX_SUCCESS;
        });
    }
    void registerFunction(const char* paramID, AAX_CFieldIndex field, FunctionHandler::Function function) {
        const FunctionHandler handler(std::move(function));
        dispatcher.RegisterPacket(paramID, field, &handler);
    }
    /// Dispatches and returns what was posted, such as "3=70 5=71".
    std::string dispatch() {
        result = dispatcher.Dispatch();
        std::ostringstream text;
        for (const auto& post : std::exchange(host.controller.posts, {})) {
            text << (text.tellp() > 0 ? " " : "") << post.field << "=" << post.as<std::int32_t>();
        }
        return text.str();
    }

    FakeInstanceHost host;
    ACFPtr<TestEffect> effect = makeTestEffect();

private:
    AAX_VController mController{&host};

public:
    AAX_CPacketDispatcher dispatcher;
    AAX_Result result = AAX_SUCCESS; ///< Of the last dispatch.
};

} // namespace varno::test

#endif
