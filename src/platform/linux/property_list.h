// Property lists as trees of libplist, and their values in the form the rest of the program uses.
// The tree is what a file is written from, so that entries nobody here understands come back out as
// they went in.
#pragma once

#include "platform/user_defaults.h"

#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include <plist/plist.h>

namespace tessellon {

struct PropertyListDeleter {
    void operator()(plist_t node) const { plist_free(node); }
};
using PropertyList = std::unique_ptr<std::remove_pointer_t<plist_t>, PropertyListDeleter>;

/// Reads a whole property list, XML or binary, whose outermost value is a dictionary. Null for
/// anything else, and for what is beyond the limits of property_list_limits.h. What it returns can
/// be written and read again without a change.
PropertyList parsePropertyList(std::string_view bytes);

/// The XML form; empty when there is no memory for it. Numbers read back exactly.
std::string propertyListXml(plist_t root);

/// The value of a node. Dates become texts in the form 2001-01-01T00:00:00Z, the references of
/// keyed archives a dictionary with the one key "CF$UID", and integers beyond 64 bits with sign the
/// nearest double.
PropertyValue propertyValue(plist_t node);

/// The values of a dictionary node.
PropertyDictionary propertyDictionary(plist_t dictionary);

/// A new node for a value. What XML cannot hold in a text is replaced by U+FFFD.
PropertyList propertyNode(const PropertyValue& value);

/// Sets one entry of a dictionary node, or removes it when there is no value.
void setPropertyNode(plist_t dictionary, std::string_view key, const PropertyValue* value);

}  // namespace tessellon
