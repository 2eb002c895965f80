// The user's settings and saved data in one property-list file, which people may also edit by hand
// while the program runs.
#pragma once

#include "base/token.h"
#include "platform/linux/folder_watch.h"
#include "platform/linux/private_file.h"
#include "platform/linux/property_list.h"
#include "platform/run_loop.h"
#include "platform/user_defaults.h"

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon {

/// "tessellon/defaults.plist" in the user's folder for configuration; nothing when the user has no
/// home folder.
std::optional<std::filesystem::path> standardDefaultsPath();

/// The file is always replaced as a whole, so every reader finds the old or the new one. What
/// cannot be read is never overwritten but moved aside. When the file cannot be written the values
/// stay in memory, the trouble is said once on standard error, and each later change tries again.
class DefaultsFile final : public UserDefaults {
  public:
    /// Reads the file, if there is one, and creates its folder. The loop must outlive this object.
    DefaultsFile(RunLoop& loop, std::filesystem::path path);
    /// Flushes.
    ~DefaultsFile() override;
    DefaultsFile(const DefaultsFile&) = delete;
    DefaultsFile& operator=(const DefaultsFile&) = delete;

    /// Writes what is not written yet and has the disk hold it before it returns.
    void flush();

    /// Writes "KEY.unreadable-TIME.json" (data, as it is) or ".plist" (anything else) beside the
    /// file, once for each value.
    bool keepAside(std::string_view key) override;

  private:
    enum class OnDisk { ours, missing, replaced, unusable };

    const PropertyValue* stored(std::string_view key) const override;
    void store(std::string_view key, std::optional<PropertyValue> value) override;

    OnDisk readFile();
    OnDisk checkBeforeWriting();
    void adopt(FileContent content, PropertyList tree);
    OnDisk setAside(const std::filesystem::path& target, std::string_view reason);
    void scheduleWrite();
    void write();
    void sync();
    void watchFolders();
    void folderChanged(const std::vector<FolderChange>& changes);
    void sayOnce(const std::string& problem);

    RunLoop& loop_;
    std::filesystem::path path_;
    PropertyDictionary values_;
    /// What the file is written from; the entries of `changedKeys_` are brought up to date first.
    PropertyList tree_;
    std::set<std::string, std::less<>> changedKeys_;
    /// The bytes and the stamp of the file as last read or written; nothing while there has been
    /// none that could be read.
    std::optional<std::string> content_;
    std::optional<FileStamp> stamp_;
    std::string lastProblem_;
    bool needsSync_ = false;
    FolderWatch watch_;
    Token writing_;
    Token syncing_;
    Token restoring_;
};

}  // namespace tessellon
