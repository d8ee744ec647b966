/// The extension of CLAP for menus, as Clap/Plugin.h.
#ifndef VARNO_FORMATS_CLAP_CLAP_CONTEXTMENU_H
#define VARNO_FORMATS_CLAP_CLAP_CONTEXTMENU_H

#include "CLAP/Clap/Plugin.h"

extern "C" {

/// What a menu is of.
struct clap_context_menu_target_t {
    std::uint32_t kind; ///< CLAP_CONTEXT_MENU_TARGET_KIND_...
    clap_id id;         ///< Of a parameter.
};

/// An item that can be chosen.
struct clap_context_menu_entry_t {
    const char* label;
    bool is_enabled;
    clap_id action_id; ///< For perform().
};

/// The same with a mark.
struct clap_context_menu_check_entry_t {
    const char* label;
    bool is_enabled;
    bool is_checked;
    clap_id action_id;
};

struct clap_context_menu_item_title_t {
    const char* title;
    bool is_enabled;
};

/// The begin of a menu in the menu.
struct clap_context_menu_submenu_t {
    const char* label;
    bool is_enabled;
};

/// Collects the items of a menu, on the thread that it was given on.
struct clap_context_menu_builder_t {
    void* ctx;
    /// @param data of the structure that belongs to the kind, null for none; borrowed for the call
    /// @return whether the item was taken [main]
    bool (*add_item)(const clap_context_menu_builder_t* builder, std::uint32_t kind, const void* data);
    /// [main]
    bool (*supports)(const clap_context_menu_builder_t* builder, std::uint32_t kind);
};

/// What a host has for menus. Each returns whether it succeeded; a null target is the whole plug-in.
struct clap_host_context_menu_t {
    /// Adds the host's items. [main]
    bool (*populate)(const clap_host_t* host, const clap_context_menu_target_t* target,
                     const clap_context_menu_builder_t* builder);
    /// Does what one of them is for. [main]
    bool (*perform)(const clap_host_t* host, const clap_context_menu_target_t* target, clap_id action);
    /// [main]
    bool (*can_popup)(const clap_host_t* host);
    /// [main]
    bool (*popup)(const clap_host_t* host, const clap_context_menu_target_t* target, std::int32_t screen,
                  std::int32_t x, std::int32_t y);
};

} // extern "C"

inline constexpr char CLAP_EXT_CONTEXT_MENU[] = "clap.context-menu/1";

inline constexpr std::uint32_t CLAP_CONTEXT_MENU_TARGET_KIND_PARAM = 1;

inline constexpr std::uint32_t CLAP_CONTEXT_MENU_ITEM_ENTRY = 0;
inline constexpr std::uint32_t CLAP_CONTEXT_MENU_ITEM_CHECK_ENTRY = 1;
inline constexpr std::uint32_t CLAP_CONTEXT_MENU_ITEM_SEPARATOR = 2;
inline constexpr std::uint32_t CLAP_CONTEXT_MENU_ITEM_BEGIN_SUBMENU = 3;
inline constexpr std::uint32_t CLAP_CONTEXT_MENU_ITEM_END_SUBMENU = 4;
inline constexpr std::uint32_t CLAP_CONTEXT_MENU_ITEM_TITLE = 5;

#endif
