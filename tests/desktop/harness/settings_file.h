// The program's settings file as a user or a script would edit it from outside: read and written
// with the property-list library directly, so that the program's own reading is not trusted.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <variant>

namespace tessellon::desktop {

/// Bytes stored as data rather than as text.
struct StoredData {
    std::string bytes;
    bool operator==(const StoredData&) const = default;
};

/// A dictionary of numbers.
using StoredNumbers = std::map<std::string, double>;

using StoredValue = std::variant<bool, double, std::string, StoredData, StoredNumbers>;
using StoredValues = std::map<std::string, StoredValue, std::less<>>;

/// The values of the file that are of the types above, dictionaries left out. Nothing when the file
/// is not there or is not one whole property-list dictionary.
std::optional<StoredValues> readSettings(const std::filesystem::path& file);

/// Sets some values and keeps the others; replaces the file in one step.
void changeSettings(const std::filesystem::path& file, const StoredValues& changes);

}  // namespace tessellon::desktop
