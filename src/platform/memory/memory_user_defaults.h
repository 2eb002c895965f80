// Settings that live only as long as the process: for tests, and for running without a home folder.
#pragma once

#include "platform/user_defaults.h"

#include <string>
#include <string_view>
#include <vector>

namespace tessellon {

class MemoryUserDefaults final : public UserDefaults {
  public:
    struct KeptAside {
        std::string key;
        PropertyValue value;
    };

    bool keepAside(std::string_view key) override;

    /// The copies made by keepAside, oldest first.
    const std::vector<KeptAside>& keptAside() const { return keptAside_; }

    /// Whether there is room for copies.
    void setRefusesCopies(bool refuses) { refusesCopies_ = refuses; }

    /// Changes a stored value, or removes it, as somebody else would.
    void edit(std::string_view key, std::optional<PropertyValue> value);

    /// Everything stored, registered defaults left out.
    const PropertyDictionary& storedValues() const { return values_; }

  private:
    const PropertyValue* stored(std::string_view key) const override;
    void store(std::string_view key, std::optional<PropertyValue> value) override;

    PropertyDictionary values_;
    std::vector<KeptAside> keptAside_;
    bool refusesCopies_ = false;
};

}  // namespace tessellon
