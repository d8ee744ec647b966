/// The host's side of gestures on controls.
#ifndef VARNO_TESTS_SOURCE_GUI_HOSTMOUSE_H
#define VARNO_TESTS_SOURCE_GUI_HOSTMOUSE_H

#include "AAX_Errors.h"
#include "AAX_IViewContainer.h"

#include <string>
#include <utility>
#include <vector>

namespace varno::test {

/// Records each offer, as "down Gain 9", and accepts those that the test chooses.
class HostMouse : public AAX_IViewContainer {
public:
    std::int32_t GetType() override { return 0; }
    void* GetPtr() override { return nullptr; }
    AAX_Result GetModifiers(std::uint32_t* outModifiers) override {
        // Adds to 0: the caller has cleared the word.
        *outModifiers |= modifiers;
        return AAX_SUCCESS;
    }
    AAX_Result SetViewSize(AAX_Point&) override { return AAX_SUCCESS; }
    AAX_Result HandleParameterMouseDown(AAX_CParamID paramID, std::uint32_t word) override {
        return note("down", paramID, word, takesDown);
    }
    AAX_Result HandleParameterMouseDrag(AAX_CParamID paramID, std::uint32_t word) override {
        return note("drag", paramID, word, takesDrag);
    }
    AAX_Result HandleParameterMouseUp(AAX_CParamID paramID, std::uint32_t word) override {
        return note("up", paramID, word, takesUp);
    }
    AAX_Result HandleMultipleParametersMouseDown(const AAX_CParamID*, std::uint32_t, std::uint32_t) override {
        return AAX_ERROR_UNIMPLEMENTED;
    }
    AAX_Result HandleMultipleParametersMouseDrag(const AAX_CParamID*, std::uint32_t, std::uint32_t) override {
        return AAX_ERROR_UNIMPLEMENTED;
    }
    AAX_Result HandleMultipleParametersMouseUp(const AAX_CParamID*, std::uint32_t, std::uint32_t) override {
        return AAX_ERROR_UNIMPLEMENTED;
    }

    std::vector<std::string> takeOffers() { return std::exchange(mOffers, {}); }

    std::uint32_t modifiers = 0; ///< The keys that only the host sees.
    bool takesDown = false;
    bool takesDrag = false;
    bool takesUp = false;

private:
    AAX_Result note(const char* kind, AAX_CParamID paramID, std::uint32_t word, bool takes) {
        mOffers.push_back(std::string(kind) + " " + paramID + " " + std::to_string(word));
        return takes ? AAX_SUCCESS : AAX_ERROR_UNIMPLEMENTED;
    }

    std::vector<std::string> mOffers;
};

} // namespace varno::test

#endif
