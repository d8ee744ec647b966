/// The extensions of CLAP that a window needs, as Clap/Plugin.h: those of a plug-in, then what a host offers
/// for them. Sizes are in pixels.
#ifndef VARNO_FORMATS_CLAP_CLAP_GUI_H
#define VARNO_FORMATS_CLAP_CLAP_GUI_H

#include "CLAP/Clap/Plugin.h"

extern "C" {

/// A window of a window system.
struct clap_window_t {
    const char* api; ///< CLAP_WINDOW_API_...
    union {
        void* cocoa;
        void* uikit;
        unsigned long x11; ///< Its number.
        void* win32;
        void* ptr;
    };
};

/// How a user may resize a window.
struct clap_gui_resize_hints_t {
    bool can_resize_horizontally;
    bool can_resize_vertically;
    bool preserve_aspect_ratio;
    std::uint32_t aspect_ratio_width;
    std::uint32_t aspect_ratio_height;
};

/// The window of a plug-in. Each function returns whether it succeeded. [main]
struct clap_plugin_gui_t {
    /// [main]
    bool (*is_api_supported)(const clap_plugin_t* plugin, const char* api, bool isFloating);
    /// Sets *api to a constant. [main]
    bool (*get_preferred_api)(const clap_plugin_t* plugin, const char** api, bool* isFloating);
    /// Makes it, not shown: for a window of the host's, or floating on its own. [main]
    bool (*create)(const clap_plugin_t* plugin, const char* api, bool isFloating);
    /// [main]
    void (*destroy)(const clap_plugin_t* plugin);
    /// 2 is twice the plain size. [main]
    bool (*set_scale)(const clap_plugin_t* plugin, double scale);
    /// [main]
    bool (*get_size)(const clap_plugin_t* plugin, std::uint32_t* width, std::uint32_t* height);
    /// Whether a user may resize it. [main]
    bool (*can_resize)(const clap_plugin_t* plugin);
    /// [main]
    bool (*get_resize_hints)(const clap_plugin_t* plugin, clap_gui_resize_hints_t* hints);
    /// Changes a size to the next one that it can have. [main]
    bool (*adjust_size)(const clap_plugin_t* plugin, std::uint32_t* width, std::uint32_t* height);
    /// [main]
    bool (*set_size)(const clap_plugin_t* plugin, std::uint32_t width, std::uint32_t height);
    /// Puts it into a window of the host's. [main]
    bool (*set_parent)(const clap_plugin_t* plugin, const clap_window_t* window);
    /// Keeps a floating one above a window. [main]
    bool (*set_transient)(const clap_plugin_t* plugin, const clap_window_t* window);
    /// [main]
    void (*suggest_title)(const clap_plugin_t* plugin, const char* title);
    /// [main]
    bool (*show)(const clap_plugin_t* plugin);
    /// [main]
    bool (*hide)(const clap_plugin_t* plugin);
};

/// What a host does for a window.
struct clap_host_gui_t {
    /// Has the host read the hints again. [any]
    void (*resize_hints_changed)(const clap_host_t* host);
    /// Has the host give the window this size; returns whether it will. [any]
    bool (*request_resize)(const clap_host_t* host, std::uint32_t width, std::uint32_t height);
    /// [any]
    bool (*request_show)(const clap_host_t* host);
    /// [any]
    bool (*request_hide)(const clap_host_t* host);
    /// A floating window was closed, or its display is lost, so that destroy() must follow. [any]
    void (*closed)(const clap_host_t* host, bool wasDestroyed);
};

/// A plug-in that a host's timers call.
struct clap_plugin_timer_support_t {
    /// [main]
    void (*on_timer)(const clap_plugin_t* plugin, clap_id timer);
};

/// A host's timers. Both return whether they succeeded.
struct clap_host_timer_support_t {
    /// [main]
    bool (*register_timer)(const clap_host_t* host, std::uint32_t periodMs, clap_id* timer);
    /// [main]
    bool (*unregister_timer)(const clap_host_t* host, clap_id timer);
};

/// A plug-in that is called when a file descriptor is ready.
struct clap_plugin_posix_fd_support_t {
    /// @param flags CLAP_POSIX_FD_... [main]
    void (*on_fd)(const clap_plugin_t* plugin, int descriptor, std::uint32_t flags);
};

/// A host that watches file descriptors. Each returns whether it succeeded.
struct clap_host_posix_fd_support_t {
    /// [main]
    bool (*register_fd)(const clap_host_t* host, int descriptor, std::uint32_t flags);
    /// [main]
    bool (*modify_fd)(const clap_host_t* host, int descriptor, std::uint32_t flags);
    /// [main]
    bool (*unregister_fd)(const clap_host_t* host, int descriptor);
};

} // extern "C"

inline constexpr char CLAP_EXT_GUI[] = "clap.gui";
inline constexpr char CLAP_EXT_TIMER_SUPPORT[] = "clap.timer-support";
inline constexpr char CLAP_EXT_POSIX_FD_SUPPORT[] = "clap.posix-fd-support";

inline constexpr char CLAP_WINDOW_API_X11[] = "x11";
inline constexpr std::uint32_t CLAP_POSIX_FD_READ = 1U << 0;

#endif
