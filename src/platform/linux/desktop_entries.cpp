#include "platform/linux/desktop_entries.h"

#include "base/text.h"
#include "platform/linux/base_directories.h"
#include "platform/linux/desktop_entry.h"
#include "platform/linux/private_file.h"

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <tuple>
#include <utility>

#include <unistd.h>

namespace tessellon {
namespace {

namespace fs = std::filesystem;

constexpr Seconds checkInterval{2};
constexpr std::size_t maxEntryBytes = std::size_t{1024} * 1024;
constexpr int maxFolderDepth = 8;
constexpr std::string_view suffix = ".desktop";

bool isExecutableFile(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error) && access(path.c_str(), X_OK) == 0;
}

/// The absolute path of a program, links resolved, found on PATH unless it is absolute already.
/// Empty when there is no such program.
std::string resolveProgram(const std::string& program) {
    if (program.empty()) {
        return {};
    }
    fs::path found;
    if (program.find('/') != std::string::npos) {
        found = program;
    } else {
        const char* variable = std::getenv("PATH");
        std::string_view rest = variable != nullptr ? variable : "/usr/local/bin:/usr/bin:/bin";
        while (!rest.empty() && found.empty()) {
            const auto end = std::min(rest.find(':'), rest.size());
            const auto candidate = fs::path(rest.substr(0, end)) / program;
            if (candidate.is_absolute() && isExecutableFile(candidate)) {
                found = candidate;
            }
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }
    std::error_code error;
    const auto resolved = found.is_absolute() ? fs::canonical(found, error) : fs::path();
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
    std::string executable;  // resolved; empty when unknown
};

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
    explicit Catalog(const std::vector<fs::path>& folders);
    Catalog(const Catalog&) = delete;
    Catalog& operator=(const Catalog&) = delete;

    bool isStale() const;
    const Item* find(const ApplicationHints& hints) const;

  private:
    void scan(const fs::path& folder, const std::string& idPrefix, int depth);
    void addFile(const fs::path& file, std::string identifier);
    void addToIndexes(const Item& item);
    const Item* runsExecutable(const std::string& executable) const;

    std::map<fs::path, fs::file_time_type> folderTimes_;
    std::deque<Item> items_;
    Index byId_;
    Index byLowerId_;
    Index byLastPart_;
    Index byLowerLastPart_;
    Index byClass_;
    Index byLowerClass_;
    Index byExecutable_;
};

DesktopEntries::Catalog::Catalog(const std::vector<fs::path>& folders) {
    for (const auto& folder : folders) {
        scan(folder, "", 0);
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
            addToIndexes(item);
        }
    }
    for (const auto* item : notShown) {
        addToIndexes(*item);
    }
}

void DesktopEntries::Catalog::scan(const fs::path& folder, const std::string& idPrefix, int depth) {
    std::error_code error;
    // A folder that is not there yet is remembered with the time that stands for the failure.
    folderTimes_[folder] = fs::last_write_time(folder, error);
    std::vector<fs::directory_entry> found;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        found.push_back(*it);
    }
    std::sort(found.begin(), found.end());
    for (const auto& file : found) {
        const auto name = file.path().filename().string();
        if (!file.is_directory(error)) {
            if (name.ends_with(suffix)) {
                addFile(file.path(), idPrefix + name.substr(0, name.size() - suffix.size()));
            }
        } else if (depth < maxFolderDepth) {
            scan(file.path(), idPrefix + name + "-", depth + 1);
        }
    }
}

void DesktopEntries::Catalog::addFile(const fs::path& file, std::string identifier) {
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
    items_.push_back({std::move(identifier), std::move(*entry), std::move(executable)});
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

std::vector<fs::path> applicationFolders() {
    auto folders = dataFolders();
    for (auto& folder : folders) {
        folder /= "applications";
    }
    return folders;
}

DesktopEntries::DesktopEntries(const RunLoop& loop, std::vector<fs::path> folders)
    : loop_(loop), folders_(std::move(folders)) {}

DesktopEntries::~DesktopEntries() = default;

std::optional<InstalledApplication> DesktopEntries::lookUp(const ApplicationHints& hints) const {
    const auto* item = catalog().find(hints);
    if (item == nullptr) {
        return std::nullopt;
    }
    return InstalledApplication{item->identifier,
                                item->entry.name.empty() ? item->identifier : item->entry.name};
}

std::optional<InstalledApplication> DesktopEntries::withIdentifier(
    std::string_view /*identifier*/) const {
    return std::nullopt;
}

std::optional<InstalledApplication> DesktopEntries::named(std::string_view /*name*/) const {
    return std::nullopt;
}

std::vector<InstalledApplication> DesktopEntries::shown() const {
    return {};
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
