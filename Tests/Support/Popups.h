/// Menus and tips on the screen, which are windows without a frame.
#ifndef VARNO_TESTS_SUPPORT_POPUPS_H
#define VARNO_TESTS_SUPPORT_POPUPS_H

#include "Tests/Support/XClient.h"

namespace varno::test {

/// The kinds of popups, by the names that desktops know them by.
inline constexpr const char* kMenuType = "_NET_WM_WINDOW_TYPE_POPUP_MENU";
inline constexpr const char* kTipType = "_NET_WM_WINDOW_TYPE_TOOLTIP";

/// The popup of a kind that is shown, on the screen; empty for none.
Area shownPopup(const XClient& client, const char* type);

} // namespace varno::test

#endif
