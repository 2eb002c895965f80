#include "platform/linux/desktop_entries.h"

#include "base/text.h"
#include "platform/linux/base_directories.h"
#include "platform/linux/current_desktop.h"
#include "platform/linux/desktop_entry.h"
#include "platform/linux/glib_text.h"
#include "platform/linux/private_file.h"

#include <algorithm>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <tuple>
#include <utility>

#include <glib.h>

namespace tessellon {
namespace {

namespace fs = std::filesystem;

constexpr Seconds checkInterval{2};
constexpr std::size_t maxEntryBytes = std::size_t{1024} * 1024;
constexpr std::size_t maxFolderDepth = 8;
constexpr std::string_view suffix = ".desktop";

/// The absolute path of a program, links resolved, found on PATH unless it is absolute already.
/// Empty when there is no such program, or it runs many others.
std::string resolveProgram(const std::string& program) {
    const GText found(program.empty() ? nullptr : g_find_program_in_path(program.c_str()));
    if (!found || !g_path_is_absolute(found.get())) {
        return {};
    }
    std::error_code error;
    const auto resolved = fs::canonical(found.get(), error);
    return error || isGenericLauncher(resolved.string()) ? std::string() : resolved.string();
}

/// "Calculator" of "org.gnome.Calculator"; empty for names that are not in reverse-DNS form.
std::string_view lastPart(std::string_view identifier) {
    if (std::count(identifier.begin(), identifier.end(), '.') < 2) {
        return {};
    }
    return identifier.substr(identifier.rfind('.') + 1);
}

struct Item {
    std::string identifier;
    DesktopEntry entry;
    ApplicationFolder::Owner owner;
    std::string executable;  // resolved; empty when unknown
};

/// Whether menus of this session show it.
bool isShownHere(const Item& item, const std::vector<std::string>& desktops) {
    return isShown(item.entry, desktops) && canBeRun(item.entry.tryExec);
}

InstalledApplication applicationOf(const Item& item) {
    return {item.identifier, item.entry.name.empty() ? item.identifier : item.entry.name,
            item.entry.icon};
}

/// What sorts texts as people who read the language of the session expect, in any letter case.
std::string collationKey(const std::string& text) {
    const GText folded(g_utf8_casefold(text.data(), static_cast<gssize>(text.size())));
    const GText key(g_utf8_collate_key(folded.get(), -1));
    return key.get();
}

/// Entries by one of their texts, the best of equal ones first.
class Index {
  public:
    void add(std::string key, const Item& item) {
        if (!key.empty()) {
            items_[std::move(key)].push_back(&item);
        }
    }

    const std::vector<const Item*>& all(std::string_view key) const {
        static const std::vector<const Item*> none;
        const auto found = items_.find(key);
        return found != items_.end() ? found->second : none;
    }

    const Item* first(std::string_view key) const {
        const auto& items = all(key);
        return items.empty() ? nullptr : items.front();
    }

    /// Nothing as well when several entries share the key: a guess would often be wrong.
    const Item* only(std::string_view key) const {
        const auto& items = all(key);
        return items.size() == 1 ? items.front() : nullptr;
    }

  private:
    std::map<std::string, std::vector<const Item*>, std::less<>> items_;
};

}  // namespace

/// All entries as they were when the folders were read.
class DesktopEntries::Catalog {
  public:
    explicit Catalog(const std::vector<ApplicationFolder>& folders);
    Catalog(const Catalog&) = delete;
    Catalog& operator=(const Catalog&) = delete;

    bool isStale() const;
    const Item* find(const ApplicationHints& hints) const;
    const Item* withIdentifier(std::string_view identifier) const {
        return byId_.first(identifier);
    }
    /// What is installed, in the order in which equal matches count.
    const std::vector<const Item*>& installed() const { return installed_; }

  private:
    /// `above` are the real paths of the folders that this one is in.
    void scan(const ApplicationFolder& place, const std::string& idPrefix,
              std::vector<fs::path> above);
    void addFile(const fs::path& file, std::string identifier, ApplicationFolder::Owner owner);
    void addToIndexes(const Item& item);
    const Item* runsExecutable(const std::string& executable) const;

    std::map<fs::path, fs::file_time_type> folderTimes_;
    std::deque<Item> items_;
    std::vector<const Item*> installed_;
    Index byId_;
    Index byLowerId_;
    Index byLastPart_;
    Index byLowerLastPart_;
    Index byClass_;
    Index byLowerClass_;
    Index byExecutable_;
};

DesktopEntries::Catalog::Catalog(const std::vector<ApplicationFolder>& folders) {
    for (const auto& folder : folders) {
        scan(folder, "", {});
    }
    // A file hides those with the same id in less important folders, also when all it says is that
    // the application is not there.
    std::set<std::string_view> seen;
    std::vector<const Item*> notShown;
    for (const auto& item : items_) {
        if (!seen.insert(item.identifier).second || item.entry.hidden) {
            continue;
        }
        if (item.entry.noDisplay) {
            notShown.push_back(&item);
        } else {
            installed_.push_back(&item);
        }
    }
    installed_.insert(installed_.end(), notShown.begin(), notShown.end());
    for (const auto* item : installed_) {
        addToIndexes(*item);
    }
}

void DesktopEntries::Catalog::scan(const ApplicationFolder& place, const std::string& idPrefix,
                                   std::vector<fs::path> above) {
    const auto& folder = place.path;
    std::error_code error;
    auto real = fs::canonical(folder, error);
    // Links may lead back up, and many of them would multiply.
    if (above.size() > maxFolderDepth ||
        std::find(above.begin(), above.end(), real) != above.end()) {
        return;
    }
    above.push_back(std::move(real));
    // A folder that is not there yet is remembered with the time that stands for the failure.
    folderTimes_[folder] = fs::last_write_time(folder, error);
    std::vector<fs::directory_entry> found;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        found.push_back(*it);
    }
    std::sort(found.begin(), found.end());
    for (const auto& file : found) {
        const auto name = file.path().filename().string();
        if (file.is_directory(error)) {
            scan({file.path(), place.owner}, idPrefix + name + "-", above);
        } else if (name.ends_with(suffix)) {
            addFile(file.path(), idPrefix + name.substr(0, name.size() - suffix.size()),
                    place.owner);
        }
    }
}

void DesktopEntries::Catalog::addFile(const fs::path& file, std::string identifier,
                                      ApplicationFolder::Owner owner) {
    const auto content = readPrivateFile(file, maxEntryBytes);
    if (content.outcome != FileContent::Outcome::read) {
        return;
    }
    auto entry = parseDesktopEntry(content.bytes);
    if (!entry) {
        return;
    }
    auto executable = resolveProgram(entry->program);
    if (executable.empty()) {
        executable = resolveProgram(entry->tryProgram);
    }
    items_.push_back({std::move(identifier), std::move(*entry), owner, std::move(executable)});
}

void DesktopEntries::Catalog::addToIndexes(const Item& item) {
    byId_.add(item.identifier, item);
    byLowerId_.add(toLower(item.identifier), item);
    byLastPart_.add(std::string(lastPart(item.identifier)), item);
    byLowerLastPart_.add(toLower(lastPart(item.identifier)), item);
    byClass_.add(item.entry.startupWmClass, item);
    byLowerClass_.add(toLower(item.entry.startupWmClass), item);
    byExecutable_.add(item.executable, item);
}

bool DesktopEntries::Catalog::isStale() const {
    return std::any_of(folderTimes_.begin(), folderTimes_.end(), [](const auto& folder) {
        std::error_code error;
        return fs::last_write_time(folder.first, error) != folder.second;
    });
}

const Item* DesktopEntries::Catalog::find(const ApplicationHints& hints) const {
    if (const auto* item = byId_.first(hints.gtkApplicationId)) {
        return item;
    }
    // The instance is the closer hint where an entry asks for it: web applications have one of
    // their own under the class of their browser.
    const auto lowerInstance = toLower(hints.windowInstance);
    const auto lowerClass = toLower(hints.windowClass);
    for (const auto* item :
         {byClass_.first(hints.windowInstance), byClass_.first(hints.windowClass),
          byLowerClass_.first(lowerInstance), byLowerClass_.first(lowerClass),
          byId_.first(hints.windowClass), byLowerId_.first(lowerClass),
          byLastPart_.only(hints.windowClass), byLowerLastPart_.only(lowerClass)}) {
        if (item != nullptr) {
            return item;
        }
    }
    return runsExecutable(hints.executable);
}

/// Several entries may run one program, as an editor's "new window" does: the one named like the
/// program is meant first, then the one that says least else.
const Item* DesktopEntries::Catalog::runsExecutable(const std::string& executable) const {
    const auto name = fs::path(executable).filename().string();
    const auto rank = [&name](const Item* item) {
        return std::tuple(item->entry.noDisplay, item->identifier != name, item->entry.execWords);
    };
    const auto& candidates = byExecutable_.all(executable);
    const auto best =
        std::min_element(candidates.begin(), candidates.end(),
                         [&rank](const auto* a, const auto* b) { return rank(a) < rank(b); });
    return best != candidates.end() ? *best : nullptr;
}

std::vector<ApplicationFolder> applicationFolders() {
    using Owner = ApplicationFolder::Owner;
    const auto home = homeFolder();
    std::vector<ApplicationFolder> folders;
    const auto add = [&folders](const fs::path& path, Owner owner) {
        const auto normal = path.lexically_normal();
        if (std::none_of(folders.begin(), folders.end(),
                         [&normal](const auto& folder) { return folder.path == normal; })) {
            folders.push_back({normal, owner});
        }
    };
    const auto isInHome = [&home](const fs::path& path) {
        return home && !path.lexically_relative(*home).string().starts_with("..");
    };
    const auto own = ownDataFolder();
    for (const auto& folder : dataFolders()) {
        add(folder / "applications",
            folder == own || isInHome(folder) ? Owner::user : Owner::everyone);
    }
    if (own) {
        add(*own / "flatpak/exports/share/applications", Owner::user);
    }
    add("/var/lib/flatpak/exports/share/applications", Owner::everyone);
    add("/var/lib/snapd/desktop/applications", Owner::everyone);
    return folders;
}

DesktopEntries::DesktopEntries(const RunLoop& loop, std::vector<ApplicationFolder> folders)
    : loop_(loop), folders_(std::move(folders)) {}

DesktopEntries::~DesktopEntries() = default;

std::optional<InstalledApplication> DesktopEntries::lookUp(const ApplicationHints& hints) const {
    const auto* item = catalog().find(hints);
    if (item == nullptr) {
        return std::nullopt;
    }
    return applicationOf(*item);
}

std::optional<InstalledApplication> DesktopEntries::withIdentifier(
    std::string_view identifier) const {
    const auto* item = catalog().withIdentifier(identifier);
    return item != nullptr ? std::optional(applicationOf(*item)) : std::nullopt;
}

std::optional<InstalledApplication> DesktopEntries::named(std::string_view name) const {
    const auto desktops = currentDesktops();
    const auto rank = [&desktops](const Item& item) {
        return std::tuple(!isShownHere(item, desktops),
                          item.owner == ApplicationFolder::Owner::user);
    };
    const Item* best = nullptr;
    for (const auto* item : catalog().installed()) {
        const bool matches =
            !name.empty() && (item->entry.name == name || item->entry.plainName == name);
        if (matches && (best == nullptr || rank(*item) < rank(*best))) {
            best = item;
        }
    }
    return best != nullptr ? std::optional(applicationOf(*best)) : std::nullopt;
}

std::vector<InstalledApplication> DesktopEntries::shown() const {
    const auto desktops = currentDesktops();
    std::vector<std::pair<std::string, InstalledApplication>> sorted;
    for (const auto* item : catalog().installed()) {
        if (isShownHere(*item, desktops)) {
            sorted.emplace_back(collationKey(item->entry.name), applicationOf(*item));
        }
    }
    std::sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) {
        return std::tie(a.first, a.second.name, a.second.identifier) <
               std::tie(b.first, b.second.name, b.second.identifier);
    });
    std::vector<InstalledApplication> result;
    result.reserve(sorted.size());
    for (auto& [key, application] : sorted) {
        result.push_back(std::move(application));
    }
    return result;
}

const DesktopEntries::Catalog& DesktopEntries::catalog() const {
    const auto now = loop_.uptime();
    const bool isCheckDue = !catalog_ || now - checkedAt_ >= checkInterval;
    if (isCheckDue) {
        checkedAt_ = now;
        if (!catalog_ || catalog_->isStale()) {
            catalog_ = std::make_unique<const Catalog>(folders_);
        }
    }
    return *catalog_;
}

}  // namespace tessellon
