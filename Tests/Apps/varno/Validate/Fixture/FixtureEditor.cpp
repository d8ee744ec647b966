// The editor of the fixture that has one: which fault it has, the environment states.
#include "AAX_CEffectGUI.h"
#include "AAX_Guarded.h"
#include "AAX_IACFDesktop.h"
#include "AAX_IViewContainer.h"
#include "AAX_UIDs.h"
#include "Tests/Apps/varno/Validate/Fixture/Faults.h"
#include "Tests/Apps/varno/Validate/Formats/FaultyEditor.h"
#include "Tests/Apps/varno/Validate/Formats/FaultyGain.h"

#include <memory>

namespace varno::fixture {
namespace {

class FixtureEditor final : public AAX_CEffectGUI {
public:
    static AAX_IEffectGUI* Create() {
        return AAX_GuardedCreation({"FixtureEditor", __func__}, [] { return new FixtureEditor; });
    }
    ~FixtureEditor() override {
        AAX_CEffectGUI::Uninitialize();
        mEditor.reset();
    }

    AAX_Result SetViewContainer(IACFUnknown* container) override {
        mDesktop = ACFPtr<AAX_IACFDesktop>::Query(container, IID_IVarnoDesktopV1);
        return AAX_CEffectGUI::SetViewContainer(container);
    }
    AAX_Result GetViewSize(AAX_Point* outSize) const override {
        *outSize = mEditor == nullptr ? AAX_Point{} : sizeOf(mEditor->width(), mEditor->height());
        return AAX_SUCCESS;
    }
    AAX_Result TimerWakeup() override {
        const auto self = Hold();
        // The host may close this editor from within.
        if (const auto editor = mEditor) {
            editor->idle();
        }
        double value = 0.0;
        if (mEditor != nullptr &&
            GetEffectParameters()->GetParameterNormalizedValue("Gain", &value) == AAX_SUCCESS) {
            mEditor->told(value);
        }
        return AAX_SUCCESS;
    }

private:
    static AAX_Point sizeOf(int width, int height) {
        AAX_Point size;
        size.horz = static_cast<float>(width);
        size.vert = static_cast<float>(height);
        return size;
    }

    void CreateViewContents() override {}
    void CreateViewContainer() override {
        double scale = 1.0;
        mDesktop->GetScale(&scale);
        fixtureSound().isActive = true; // As it is made.
        mEditor = std::make_shared<FaultyEditor>(
            FaultyEditor::Host{
                [this](int width, int height) {
                    AAX_Point size = sizeOf(width, height);
                    GetViewContainer()->SetViewSize(size);
                },
                [this](bool isTouched) {
                    AAX_IACFEffectParameters& model = *GetEffectParameters();
                    isTouched ? model.TouchParameter("Gain") : model.ReleaseParameter("Gain");
                },
                [this](double value) { GetEffectParameters()->SetParameterNormalizedValue("Gain", value); }},
            static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(GetViewContainerPtr())), scale);
        if (isPlanted("editor-leaves-timer")) {
            constexpr std::uint32_t kPeriodMs = 5;
            mDesktop->StartTimer(
                kPeriodMs, [](void*) {}, this);
        }
    }
    void DeleteViewContainer() override { mEditor.reset(); }

    ACFPtr<AAX_IACFDesktop> mDesktop;
    std::shared_ptr<FaultyEditor> mEditor;
};

} // namespace

void* fixtureEditorProcedure() {
    return reinterpret_cast<void*>(&FixtureEditor::Create);
}

void countFixtureBuffer() {
    fixtureSound().count();
}

} // namespace varno::fixture
