#include "CLAP/Window/HostMenu.h"

#include "CLAP/Clap/ContextMenu.h"

namespace varno {

namespace {

// What a menu is made for, while the host fills it.
struct MenuInTheMaking {
    const HostCalls& host;
    const clap_host_context_menu_t& functions;
    clap_context_menu_target_t target;
    std::vector<HostMenuItem> items;

    void addEntry(const char* label, bool isEnabled, bool isChecked, clap_id action) {
        items.push_back({.text = label,
                         .isEnabled = isEnabled,
                         .isChecked = isChecked,
                         .run = [&host = host, &functions = functions, target = target, action] {
                             functions.perform(&host.table(), &target, action);
                         }});
    }
};

bool addItem(const clap_context_menu_builder_t* builder, std::uint32_t kind, const void* data) noexcept {
    auto& menu = *static_cast<MenuInTheMaking*>(builder->ctx);
    if (kind == CLAP_CONTEXT_MENU_ITEM_SEPARATOR) {
        menu.items.push_back({.kind = HostMenuItem::Kind::kSeparator});
        return true;
    }
    if (kind == CLAP_CONTEXT_MENU_ITEM_END_SUBMENU) {
        return true;
    }
    if (data == nullptr) {
        return false;
    }
    if (kind == CLAP_CONTEXT_MENU_ITEM_ENTRY) {
        const auto& entry = *static_cast<const clap_context_menu_entry_t*>(data);
        menu.addEntry(entry.label, entry.is_enabled, false, entry.action_id);
    } else if (kind == CLAP_CONTEXT_MENU_ITEM_CHECK_ENTRY) {
        const auto& entry = *static_cast<const clap_context_menu_check_entry_t*>(data);
        menu.addEntry(entry.label, entry.is_enabled, entry.is_checked, entry.action_id);
    } else if (kind == CLAP_CONTEXT_MENU_ITEM_TITLE) {
        const auto& title = *static_cast<const clap_context_menu_item_title_t*>(data);
        menu.items.push_back({.kind = HostMenuItem::Kind::kHeading, .text = title.title});
    } else if (kind == CLAP_CONTEXT_MENU_ITEM_BEGIN_SUBMENU) {
        const auto& inner = *static_cast<const clap_context_menu_submenu_t*>(data);
        menu.items.push_back({.kind = HostMenuItem::Kind::kHeading, .text = inner.label});
    } else {
        return false;
    }
    return true;
}

bool supportsItem(const clap_context_menu_builder_t* /*builder*/, std::uint32_t kind) noexcept {
    return kind <= CLAP_CONTEXT_MENU_ITEM_TITLE;
}

} // namespace

std::vector<HostMenuItem> hostMenuOf(const HostCalls& host, clap_id parameter) {
    const auto* const functions = host.extension<clap_host_context_menu_t>(CLAP_EXT_CONTEXT_MENU);
    if (functions == nullptr) {
        return {};
    }
    MenuInTheMaking menu{host, *functions, {CLAP_CONTEXT_MENU_TARGET_KIND_PARAM, parameter}, {}};
    const clap_context_menu_builder_t builder{&menu, addItem, supportsItem};
    return functions->populate(&host.table(), &menu.target, &builder) ? menu.items
                                                                      : std::vector<HostMenuItem>();
}

} // namespace varno
