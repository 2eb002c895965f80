#include "platform/linux/defaults_file.h"

#include "base/log.h"
#include "platform/linux/base_directories.h"
#include "platform/linux/property_list_limits.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace tessellon {
namespace {

namespace fs = std::filesystem;

constexpr Seconds syncDelay{1};

/// Editors and version control take a file away for a moment before they put the new one there.
constexpr Seconds restoreDelay{0.2};

constexpr std::size_t longestNamePart = 100;

/// A key as part of a file name.
std::string fileNameFor(std::string_view key) {
    std::string name(key.substr(0, longestNamePart));
    for (char& c : name) {
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                             (c >= '0' && c <= '9') || c == '-' || c == '_';
        if (!isPlain) {
            c = '_';
        }
    }
    return name;
}

}  // namespace

std::optional<fs::path> standardDefaultsPath() {
    auto folder = configFolder();
    if (!folder) {
        return std::nullopt;
    }
    return *folder / "tessellon" / "defaults.plist";
}

DefaultsFile::DefaultsFile(RunLoop& loop, fs::path path)
    : loop_(loop),
      path_(std::move(path)),
      tree_(plist_new_dict()),
      watch_(loop, [this](const auto& changes) { folderChanged(changes); }) {
    std::error_code error;
    makePrivateFolder(path_.parent_path(), error);  // a failure is said when it matters: at a write
    removeLeftoversOf(followLinks(path_));
    watchFolders();
    readFile();
}

DefaultsFile::~DefaultsFile() {
    flush();
}

const PropertyValue* DefaultsFile::stored(std::string_view key) const {
    const auto found = values_.find(key);
    return found != values_.end() ? &found->second : nullptr;
}

void DefaultsFile::store(std::string_view key, std::optional<PropertyValue> value) {
    if (value) {
        values_.insert_or_assign(std::string(key), std::move(*value));
    } else if (const auto found = values_.find(key); found != values_.end()) {
        values_.erase(found);
    }
    changedKeys_.emplace(key);
    scheduleWrite();
}

void DefaultsFile::scheduleWrite() {
    if (!writing_) {
        writing_ = loop_.after(Seconds(0), [this] { write(); });
    }
}

DefaultsFile::OnDisk DefaultsFile::readFile() {
    const auto target = followLinks(path_);
    auto content = readPrivateFile(target, maxPropertyListBytes);
    switch (content.outcome) {
        case FileContent::Outcome::missing:
            return OnDisk::missing;
        case FileContent::Outcome::failed:
            sayOnce("the settings in " + path_.string() + " cannot be read (" + content.problem +
                    "); changes are kept in memory only");
            return OnDisk::unusable;
        case FileContent::Outcome::unreadable:
            return setAside(target, content.problem);
        case FileContent::Outcome::read:
            break;
    }
    if (content.bytes == content_) {
        stamp_ = content.stamp;
        return OnDisk::ours;
    }
    auto tree = parsePropertyList(content.bytes);
    if (!tree) {
        return setAside(target, content.bytes.empty() ? "it is empty" : "not a property list");
    }
    adopt(std::move(content), std::move(tree));
    return OnDisk::ours;
}

void DefaultsFile::adopt(FileContent content, PropertyList tree) {
    auto values = propertyDictionary(tree.get());
    for (const auto& key : changedKeys_) {
        if (const auto* ours = stored(key)) {
            values.insert_or_assign(key, *ours);
        } else {
            values.erase(key);
        }
    }
    std::vector<std::string> changed;
    for (const auto& [key, value] : values) {
        if (const auto* before = stored(key); before == nullptr || !(*before == value)) {
            changed.push_back(key);
        }
    }
    for (const auto& [key, value] : values_) {
        if (!values.contains(key)) {
            changed.push_back(key);
        }
    }
    values_ = std::move(values);
    tree_ = std::move(tree);
    content_ = std::move(content.bytes);
    stamp_ = content.stamp;
    for (const auto& key : changed) {
        changed_.emit(key);
    }
    if (!changed.empty()) {
        reloaded_.emit();
    }
}

DefaultsFile::OnDisk DefaultsFile::setAside(const fs::path& target, std::string_view reason) {
    // Behind a link only a plain file is moved: the link may lead to a folder or a device.
    std::error_code error;
    const bool movesTarget = fs::is_regular_file(target, error);
    auto kept = moveAside(movesTarget ? target : path_, error);
    if (!kept && movesTarget && target != path_) {
        kept = moveAside(path_, error);
    }
    const auto problem =
        "the settings in " + path_.string() + " cannot be read (" + std::string(reason) + ")";
    if (!kept) {
        sayOnce(problem + " nor moved aside (" + error.message() +
                "); changes are kept in memory only");
        return OnDisk::unusable;
    }
    logWarning(problem + "; they are kept as " + kept->string());
    content_.reset();
    stamp_.reset();
    return OnDisk::replaced;
}

DefaultsFile::OnDisk DefaultsFile::checkBeforeWriting() {
    const auto stamp = fileStamp(path_);
    return stamp && stamp == stamp_ ? OnDisk::ours : readFile();
}

void DefaultsFile::write() {
    writing_.reset();
    restoring_.reset();
    const auto found = checkBeforeWriting();
    if (found == OnDisk::unusable) {
        return;
    }
    if (found == OnDisk::missing && content_) {
        logNotice(path_.string() + " is gone; it is written again");
    }
    for (const auto& key : changedKeys_) {
        setPropertyNode(tree_.get(), key, stored(key));
    }
    auto xml = propertyListXml(tree_.get());
    if (found == OnDisk::ours && xml == content_) {
        changedKeys_.clear();
        return;
    }
    const auto target = followLinks(path_);
    std::error_code error = std::make_error_code(std::errc::not_enough_memory);
    std::optional<FileStamp> stamp;
    if (!xml.empty()) {
        makePrivateFolder(target.parent_path(), error);
        stamp = replacePrivateFile(target, xml, error);
    }
    if (!stamp) {
        sayOnce("the settings cannot be written to " + path_.string() + " (" + error.message() +
                "); changes are kept in memory only");
        return;
    }
    changedKeys_.clear();
    content_ = std::move(xml);
    stamp_ = stamp;
    lastProblem_.clear();
    needsSync_ = true;
    if (!syncing_) {
        syncing_ = loop_.after(syncDelay, [this] { sync(); });
    }
    watchFolders();
}

void DefaultsFile::sync() {
    syncing_.reset();
    if (!needsSync_) {
        return;
    }
    std::error_code error;
    syncPrivateFile(followLinks(path_), error);
    needsSync_ = false;
    if (error && error != std::errc::no_such_file_or_directory) {
        sayOnce("the settings in " + path_.string() + " may not be on disk: " + error.message());
    }
}

void DefaultsFile::flush() {
    if (!changedKeys_.empty() || restoring_) {
        write();
    }
    sync();
}

void DefaultsFile::watchFolders() {
    std::vector<fs::path> folders{path_.parent_path()};
    if (auto folder = followLinks(path_).parent_path(); folder != folders.front()) {
        folders.push_back(std::move(folder));
    }
    if (!watch_.setFolders(folders)) {
        logDebug("edits of " + path_.string() + " are noticed only before it is written");
    }
}

void DefaultsFile::folderChanged(const std::vector<FolderChange>& changes) {
    const auto target = followLinks(path_);
    const auto isOurs = [&](const FolderChange& change) {
        return change.name.empty() || change.name == path_.filename() ||
               change.name == target.filename();
    };
    if (std::none_of(changes.begin(), changes.end(), isOurs)) {
        return;
    }
    watchFolders();
    const auto found = readFile();
    if (found == OnDisk::replaced) {
        write();
    } else if (found == OnDisk::missing && content_ && !restoring_) {
        restoring_ = loop_.after(restoreDelay, [this] { write(); });
    }
}

void DefaultsFile::sayOnce(const std::string& problem) {
    if (problem != lastProblem_) {
        logWarning(problem);
        lastProblem_ = problem;
    }
}

bool DefaultsFile::keepAside(std::string_view key) {
    const auto* value = stored(key);
    if (value == nullptr) {
        return true;
    }
    const auto* data = std::get_if<PropertyData>(value);
    const auto bytes = data != nullptr ? std::string(data->begin(), data->end())
                                       : propertyListXml(propertyNode(*value).get());
    std::error_code error;
    const auto copy = writeAside(path_.parent_path(), fileNameFor(key),
                                 data != nullptr ? ".json" : ".plist", bytes, error);
    if (copy) {
        logWarning("the stored value of '" + std::string(key) +
                   "' cannot be understood; it is kept as " + copy->string());
    } else if (error) {
        logWarning("the stored value of '" + std::string(key) +
                   "' cannot be understood, nor a copy of it be kept (" + error.message() +
                   "); it stays as it is");
    }
    return copy || !error;  // without either there was such a copy already
}

}  // namespace tessellon
