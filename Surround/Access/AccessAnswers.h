/// What a screen reader is answered about a window.
#ifndef VARNO_SURROUND_ACCESS_ACCESSANSWERS_H
#define VARNO_SURROUND_ACCESS_ACCESSANSWERS_H

#include "Surround/Access/AccessTree.h"
#include "Surround/Access/BusContext.h"

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace varno {

/// A question that cannot be answered: a wrong argument, or a part that refuses.
class AccessRefusal : public std::invalid_argument {
public:
    using std::invalid_argument::invalid_argument;
};

/// An object on the bus.
struct AccessReference {
    std::string owner; ///< Unique bus name; empty for no object.
    std::string path;
};

/// Answers calls about the parts of a tree. Values of GLib are returned floating. [main]
class AccessAnswers {
public:
    /// @param applicationName for people @param window, tree outlive this object
    /// @param refresh called after a change, to describe the window again
    AccessAnswers(std::string applicationName, AccessWindow& window, const AccessTree& tree,
                  std::function<void()> refresh);

    /// The bus name of the connection over which the questions come.
    void setOwner(std::string owner) { mOwner = std::move(owner); }
    /// The object that holds the application, which the registry has reported.
    void setParent(AccessReference parent) { mParent = std::move(parent); }

    /// The part of an object path; nothing where it is no part's.
    std::optional<AccessNumber> partOf(std::string_view path) const;
    static std::string pathOf(AccessNumber part);
    /// The part's node; null for the application.
    const AccessNode* nodeOf(AccessNumber part) const;

    /// The result of a method, a tuple. The arguments have the types that the interface states.
    /// @throws AccessRefusal
    GVariant* call(AccessNumber part, std::string_view interface, std::string_view method,
                   GVariant* arguments);
    /// @throws AccessRefusal
    GVariant* get(AccessNumber part, std::string_view interface, std::string_view property);
    /// @throws AccessRefusal
    void set(AccessNumber part, std::string_view interface, std::string_view property, GVariant* value);

    /// A part as the cache has it.
    GVariant* cacheItem(AccessNumber part) const;
    /// All parts and the application, as the cache's method GetItems returns them.
    GVariant* cacheItems() const;
    GVariant* reference(AccessNumber part) const;

private:
    GVariant* callAccessible(AccessNumber part, std::string_view method, GVariant* arguments);
    GVariant* callComponent(AccessNumber part, std::string_view method, GVariant* arguments);
    GVariant* callAction(AccessNumber part, std::string_view method, GVariant* arguments);
    GVariant* callText(AccessNumber part, std::string_view method, GVariant* arguments);
    GVariant* getAccessible(AccessNumber part, std::string_view property) const;
    GVariant* getApplication(std::string_view property) const;
    GVariant* childAt(AccessNumber part, int index) const;
    GVariant* children(AccessNumber part) const;
    GVariant* parentOf(AccessNumber part) const;
    AccessRectangle extents(AccessNumber part, guint32 coordinates) const;
    AccessNumber partAt(AccessNumber part, int x, int y) const;
    const AccessNode& requireNode(AccessNumber part) const;
    GVariant* changed(bool isDone);

    std::string mApplicationName;
    AccessWindow& mWindow;
    const AccessTree& mTree;
    std::function<void()> mRefresh;
    std::string mOwner;
    AccessReference mParent;
    gint32 mApplicationID = 0; ///< Given by the registry.
};

/// A string as D-Bus takes it: what is not UTF-8 is replaced. Floating. [any]
GVariant* busText(const std::string& text);

} // namespace varno

#endif
