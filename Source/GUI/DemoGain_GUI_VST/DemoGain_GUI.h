/// The plug-in's editor.
#ifndef VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_GUI_H
#define VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_GUI_H

#include "GUI/AAX_CEffectGUI_VST.h"

#include <memory>

class DemoGain_View;

namespace varno {
class Clipboard;
}

/// Forwards the host's calls to the view. [main]
class DemoGain_GUI : public AAX_CEffectGUI_VST {
public:
    /// Makes an editor without a reference; it is destroyed with the release of its last one. Null when that
    /// fails, with one trace line. [main]
    static AAX_IEffectGUI* Create();

    AAX_Result TimerWakeup() override;
    AAX_Result ParameterUpdated(AAX_CParamID paramID) override;
    /// Shows the highlight of any parameter on the gain knob, and that of the volume on its own knob too.
    AAX_Result SetControlHighlightInfo(AAX_CParamID paramID, uint8_t isHighlighted,
                                       AAX_EHighlightColor colour) override;

    /// What the host's desktop asks for, else -1, the library's own.
    int32_t getKnobMode() const override;

    /// The arguments of the last SetControlHighlightInfo, for any parameter; 0 before. Kept when the view is
    /// deleted, and not applied to a new one.
    uint8_t GetLastHighlight() const { return mLastHighlight; }
    AAX_EHighlightColor GetLastHighlightColour() const { return mLastHighlightColour; }

protected:
    ~DemoGain_GUI() override = default;

    /// Loads the bitmaps of the module's bundle. Without a bundle, which is an assertion failure, there are
    /// none.
    void CreateViewContents() override;
    void CreateEffectView(void* nativeView) override;

private:
    /// Null while there is none.
    VSTGUI::SharedPointer<DemoGain_View> View() const;

    /// Held from the first view on: a copied preset stays available while the host calls TimerWakeup.
    std::shared_ptr<varno::Clipboard> mClipboard;
    uint8_t mLastHighlight = 0;
    AAX_EHighlightColor mLastHighlightColour{};
};

#endif
