/// The native view in which this host places an editor, and the desktop around it.
#ifndef VARNO_HOST_VIEWCONTAINER_H
#define VARNO_HOST_VIEWCONTAINER_H

#include "AAX_IACFDesktop.h"
#include "AAX_IACFViewContainer.h"
#include "Host/HostObject.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace varno {

/// Implemented by a front end that runs an event loop, and given to a ViewContainer; outlives the editor in
/// it. An `owner` identifies a watch or timer. Callbacks may start and end watches and timers. [main]
class Desktop {
public:
    using Wake = std::function<void()>;

    virtual ~Desktop() = default;
    /// The factor by which this desktop enlarges what it shows; 1 is the plain size.
    virtual double scale() const = 0;
    /// How knobs follow the mouse: along a straight line, as users of plug-ins expect.
    virtual AAX_EKnobMode knobMode() const { return AAX_eKnobMode_Line; }
    /// Calls `wake` whenever the file descriptor can be read.
    virtual void watch(int descriptor, const void* owner, Wake wake) = 0;
    /// Ends that watch, if there is one.
    virtual void unwatch(int descriptor, const void* owner) = 0;
    /// Calls `wake` every `period`, in the place of an earlier timer of the owner's.
    virtual void startTimer(std::chrono::milliseconds period, const void* owner, Wake wake) = 0;
    /// Ends that timer, if there is one.
    virtual void stopTimer(const void* owner) = 0;
};

/// Part of a view container: forwards every call to the container's desktop. [main]
class DesktopFacet : public Facet<AAX_IACFDesktop> {
public:
    using Facet::Facet;

    /// Borrowed; null takes it away.
    void setDesktop(Desktop* desktop) { mDesktop = desktop; }
    bool hasDesktop() const { return mDesktop != nullptr; }

    AAX_Result GetScale(double* outScale) override;
    AAX_Result GetKnobMode(std::int32_t* outMode) override;
    AAX_Result WatchDescriptor(std::int32_t descriptor, AAX_CWakeProc proc, void* context) override;
    AAX_Result UnwatchDescriptor(std::int32_t descriptor, void* context) override;
    AAX_Result StartTimer(std::uint32_t periodMs, AAX_CWakeProc proc, void* context) override;
    AAX_Result StopTimer(void* context) override;

private:
    Desktop* mDesktop = nullptr;
};

/// A mouse action that an editor offers to the host before it handles it itself.
struct MouseOffer {
    enum class Kind { kDown, kDrag, kUp };

    Kind kind = Kind::kDown;
    std::vector<std::string> parameters;
    std::uint32_t modifiers = 0; ///< AAX_EModifiers bits.
};

/// View container versions 1 and 2, and the desktop around it where there is one. A plain container around a
/// native view that its maker owns. An editor borrows it, so its references are not counted against the
/// module. [main]
class ViewContainer : public HostObject<AAX_IACFViewContainer_V2> {
public:
    using MouseHandler = std::function<AAX_Result(const MouseOffer&)>;
    using SizeHandler = std::function<AAX_Result(const AAX_Point&)>;
    using ModifierSource = std::function<std::uint32_t()>;

    /// A container without native view, which takes no mouse offer and any size.
    explicit ViewContainer(std::shared_ptr<HostContext> context);

    /// The native view: its kind (an AAX_EViewContainerType) and the view itself, borrowed.
    void setView(std::int32_t type, void* view);
    /// The desktop around the view (borrowed, outlives the editor); without one the container does not offer
    /// the interface.
    void setDesktop(Desktop* desktop) { mDesktop.setDesktop(desktop); }
    /// Answers which modifier keys are down (AAX_EModifiers bits), at each mouse action. Without a source,
    /// none is.
    void setModifierSource(ModifierSource source) { mModifierSource = std::move(source); }
    /// Answers mouse offers: AAX_SUCCESS takes one. Without a handler none is taken. Offers are not kept.
    void setMouseHandler(MouseHandler handler) { mMouseHandler = std::move(handler); }
    /// Answers requests for a size in pixels: AAX_SUCCESS grants it. Without a handler each is granted.
    void setSizeHandler(SizeHandler handler) { mSizeHandler = std::move(handler); }
    /// The size granted last; zero before.
    const AAX_Point& size() const { return mSize; }

    std::int32_t GetType() override { return mType; }
    void* GetPtr() override { return mView; }
    AAX_Result GetModifiers(std::uint32_t* outModifiers) override;
    AAX_Result SetViewSize(AAX_Point* size) override;
    AAX_Result HandleParameterMouseDown(AAX_CParamID paramID, std::uint32_t modifiers) override;
    AAX_Result HandleParameterMouseDrag(AAX_CParamID paramID, std::uint32_t modifiers) override;
    AAX_Result HandleParameterMouseUp(AAX_CParamID paramID, std::uint32_t modifiers) override;
    AAX_Result HandleMultipleParametersMouseDown(const AAX_CParamID* paramIDs, std::uint32_t count,
                                                 std::uint32_t modifiers) override;
    AAX_Result HandleMultipleParametersMouseDrag(const AAX_CParamID* paramIDs, std::uint32_t count,
                                                 std::uint32_t modifiers) override;
    AAX_Result HandleMultipleParametersMouseUp(const AAX_CParamID* paramIDs, std::uint32_t count,
                                               std::uint32_t modifiers) override;

protected:
    void* interfaceFor(const acfIID& iid) override;

private:
    AAX_Result take(MouseOffer::Kind kind, const AAX_CParamID* paramIDs, std::uint32_t count,
                    std::uint32_t modifiers);

    std::int32_t mType = AAX_eViewContainerType_None;
    void* mView = nullptr;
    AAX_Point mSize;
    DesktopFacet mDesktop{*this};
    ModifierSource mModifierSource;
    MouseHandler mMouseHandler;
    SizeHandler mSizeHandler;
};

} // namespace varno

#endif
