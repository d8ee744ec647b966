#ifndef VARNO_APPS_VARNO_DESCRIBE_PROPERTYTEXT_H
#define VARNO_APPS_VARNO_DESCRIBE_PROPERTYTEXT_H

#include "Host/ModuleDescription.h"

#include <string>

namespace varno {

/// What a property is called: "manufacturer", or "property 54" where its meaning is the host's own.
std::string propertyName(AAX_EProperty property);

/// Whether a property has a name of its own.
bool isNamedProperty(AAX_EProperty property);

/// The value of a property: identifiers as their four characters, stem formats and meter kinds by name, other
/// integers as they are.
std::string propertyText(AAX_EProperty property, const PropertyValue& value);

/// What a category is called: "dynamics", or its number.
std::string categoryName(std::uint32_t category);

/// What a creation procedure makes: "data model", "editor".
std::string procedureName(AAX_CProcPtrID procedure);

/// What a resource is: "page table", or its number.
std::string resourceName(AAX_EResourceType type);

} // namespace varno

#endif
