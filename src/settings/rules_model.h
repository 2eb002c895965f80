// Which applications never snap, and how one finds more of them.
#pragma once

#include "base/signal.h"
#include "base/token.h"
#include "platform/application_directory.h"
#include "platform/applications.h"
#include "platform/user_defaults.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon {

/// One of the list.
struct IgnoredApplication {
    std::string identifier;
    /// For people; the identifier where nothing of it is installed.
    std::string name;
    /// The name or the absolute path of its icon; empty when it has none.
    std::string icon;
    bool isInstalled = false;
    bool operator==(const IgnoredApplication&) const = default;
};

/// One of those that may be added.
struct ChoosableApplication {
    InstalledApplication application;
    /// On the list already.
    bool isIgnored = false;
};

class RulesModel {
  public:
    /// How many tints the list goes round in.
    static constexpr std::size_t tintCount = 4;

    /// Everything that is passed must outlive the model.
    RulesModel(UserDefaults& defaults, const ApplicationDirectory& directory,
               const Applications& applications);

    /// In stored order.
    std::vector<IgnoredApplication> entries() const;
    /// How many there are, in words: "1 app".
    std::string count() const;

    const std::string& query() const { return query_; }
    void setQuery(std::string query);
    /// What went wrong with the last search, in words for the user.
    const std::optional<std::string>& error() const { return error_; }

    /// Adds the application that the query names, by its identifier or its exact name; says in
    /// error() that there is none. Applications that are installed come before those that merely
    /// run. A query of spaces does nothing.
    void search();

    /// Appends the identifier unless it is listed. Clears the query and the error in any case.
    void add(std::string_view identifier);
    /// Removes every entry that equals the identifier.
    void remove(std::string_view identifier);

    /// What menus show, in their order.
    std::vector<ChoosableApplication> choosable() const;

    /// Emitted after the list, the query or the error has changed, by whomever.
    const Signal<>& changed() const { return changed_; }

  private:
    std::optional<std::string> find(const std::string& text) const;

    UserDefaults& defaults_;
    const ApplicationDirectory& directory_;
    const Applications& applications_;
    std::string query_;
    std::optional<std::string> error_;
    Signal<> changed_;
    Token defaultsToken_;
};

}  // namespace tessellon
