// The port for settings and saved data: values under plain keys, with registered defaults beneath
// them. The typed reads convert as a user who edits the file by hand would expect.
#pragma once

#include "base/signal.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tessellon {

struct PropertyValue;
using PropertyData = std::vector<std::uint8_t>;
using PropertyArray = std::vector<PropertyValue>;
using PropertyDictionary = std::map<std::string, PropertyValue, std::less<>>;

/// One value of a property list.
struct PropertyValue : std::variant<bool, std::int64_t, double, std::string, PropertyData,
                                    PropertyArray, PropertyDictionary> {
    using variant::variant;
    /// The value of a number (true counts as 1); nothing for anything else.
    std::optional<double> number() const;
};

class UserDefaults {
  public:
    virtual ~UserDefaults() = default;

    /// What reads return while nothing is stored. Registered values are never stored. Registering a
    /// key again replaces its default.
    void registerDefaults(const PropertyDictionary& defaults);

    /// The stored value, else the registered one, else nothing.
    std::optional<PropertyValue> objectForKey(std::string_view key) const;

    /// Numbers are true when not 0; the texts "yes", "true" and numbers other than 0 are true.
    /// False when there is nothing.
    bool boolForKey(std::string_view key) const;

    /// Texts count as the number they hold. A stored value that is not finite counts as the
    /// registered default. 0 when there is nothing.
    double doubleForKey(std::string_view key) const;

    /// Numbers read as text; nothing for data, arrays and dictionaries.
    std::optional<std::string> stringForKey(std::string_view key) const;

    /// Nothing unless the value is data.
    std::optional<PropertyData> dataForKey(std::string_view key) const;

    /// Nothing unless the value is a dictionary.
    std::optional<PropertyDictionary> dictionaryForKey(std::string_view key) const;

    /// Stores a value; stored for good soon after the current turn of the run loop.
    void setObject(std::string_view key, PropertyValue value);
    void setBool(std::string_view key, bool value) { setObject(key, PropertyValue(value)); }
    void setDouble(std::string_view key, double value) { setObject(key, PropertyValue(value)); }
    void setString(std::string_view key, std::string value) {
        setObject(key, PropertyValue(std::move(value)));
    }

    /// Removes the stored value, so that reads give the registered default again.
    void removeObject(std::string_view key);

    /// Saves a copy of the stored value where the user can find it, before it is replaced by
    /// something that could not be made of it. The stored value itself stays. Says so on stderr.
    /// False when no copy could be saved: the value is then not to be replaced.
    virtual bool keepAside(std::string_view key) = 0;

    /// Emitted with the key after the stored value of a key has changed, by whomever. Writing the
    /// value that is stored already is no change.
    const Signal<std::string_view>& changed() const { return changed_; }

    /// Emitted once after values were changed by somebody else than this program, such as the user
    /// with an editor; changed() has been emitted for each key then.
    const Signal<>& reloaded() const { return reloaded_; }

  protected:
    UserDefaults() = default;

    /// The stored value, or null.
    virtual const PropertyValue* stored(std::string_view key) const = 0;
    /// Stores a value, or removes it when there is none. Only called for real changes.
    virtual void store(std::string_view key, std::optional<PropertyValue> value) = 0;

    Signal<std::string_view> changed_;
    Signal<> reloaded_;

  private:
    PropertyDictionary registered_;
};

}  // namespace tessellon
