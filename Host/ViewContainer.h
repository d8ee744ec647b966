/// The native view in which this host places an editor.
#ifndef VARNO_HOST_VIEWCONTAINER_H
#define VARNO_HOST_VIEWCONTAINER_H

#include "AAX_IACFViewContainer.h"
#include "Host/DesktopFacet.h"
#include "Host/HostObject.h"

#include <functional>
#include <string>
#include <vector>

namespace varno {

/// What an editor offers to the host before it handles it itself.
struct MouseOffer {
    enum class Kind { Down, Drag, Up };

    Kind kind = Kind::Down;
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

    /// A container without native view, which takes no mouse offer and any size.
    explicit ViewContainer(std::shared_ptr<HostContext> context);

    /// The native view: its kind (an AAX_EViewContainerType) and the view itself, borrowed.
    void setView(std::int32_t type, void* view);
    /// The desktop around the view (borrowed, outlives the editor); without one the module is told of none.
    void setDesktop(Desktop* desktop) { mDesktop.setDesktop(desktop); }
    /// The modifier keys that are down.
    void setModifiers(std::uint32_t modifiers) { mModifiers = modifiers; }
    /// Answers mouse offers: AAX_SUCCESS takes one. Without a handler none is taken.
    void setMouseHandler(MouseHandler handler) { mMouseHandler = std::move(handler); }
    /// Answers wishes for a size in pixels: AAX_SUCCESS grants it. Without a handler each is granted.
    void setSizeHandler(SizeHandler handler) { mSizeHandler = std::move(handler); }
    /// The size granted last; zero before.
    const AAX_Point& size() const { return mSize; }
    /// All offers so far.
    const std::vector<MouseOffer>& offers() const { return mOffers; }

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
    std::uint32_t mModifiers = 0;
    AAX_Point mSize;
    DesktopFacet mDesktop{*this};
    MouseHandler mMouseHandler;
    SizeHandler mSizeHandler;
    std::vector<MouseOffer> mOffers;
};

} // namespace varno

#endif
