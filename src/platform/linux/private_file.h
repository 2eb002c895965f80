// Reading and replacing a small private file so that a crash at any moment leaves the old or the
// new content whole, and setting aside what could not be read. Nothing here knows what the file
// holds.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include <sys/stat.h>

namespace tessellon {

/// Tells whether a file is still the one it was, without reading it.
struct FileStamp {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    time_t seconds = 0;
    long nanoseconds = 0;
    bool operator==(const FileStamp&) const = default;
};

/// The stamp of the regular file at `path`, links followed; nothing when there is none.
std::optional<FileStamp> fileStamp(const std::filesystem::path& path);

struct FileContent {
    enum class Outcome {
        read,
        missing,
        unreadable,  // and will stay so: no permission, no regular file, too large
        failed,      // for a reason of the moment, such as too many open files
    };
    Outcome outcome = Outcome::missing;
    std::string bytes;
    std::optional<FileStamp> stamp;
    /// Why it was not read, for people; empty when it was.
    std::string problem;
};

/// Reads a regular file of at most `limit` bytes.
FileContent readPrivateFile(const std::filesystem::path& path, std::size_t limit);

/// Puts a file of mode 0600 with these bytes in the place of `path`, which may not exist yet, by
/// way of a temporary file in the same folder. Nothing has changed when it gives nothing.
std::optional<FileStamp> replacePrivateFile(const std::filesystem::path& path,
                                            std::string_view bytes, std::error_code& error);

/// Has the disk hold the file and its name before it returns.
void syncPrivateFile(const std::filesystem::path& path, std::error_code& error);

/// Removes temporary files that processes which are no more have left beside `path`.
void removeLeftoversOf(const std::filesystem::path& path);

/// Creates a folder, and what is missing above it, for this user alone (mode 0700). One that exists
/// stays as it is.
void makePrivateFolder(const std::filesystem::path& folder, std::error_code& error);

/// What a file's path leads to when it is a link, or a link to a link; the end need not exist. The
/// path itself when it is no link or the links go in a circle.
std::filesystem::path followLinks(const std::filesystem::path& path);

/// Renames whatever is at `path` to "STEM.unreadable-TIME.EXTENSION" beside it, never over another
/// file. Gives the new path.
std::optional<std::filesystem::path> moveAside(const std::filesystem::path& path,
                                               std::error_code& error);

/// Writes a copy as a new file "STEM.unreadable-TIME" plus `extension` (dot included) in the
/// folder, mode 0600, unless one of the copies there under this stem already holds these bytes:
/// then nothing is written and nothing returned, and `error` is clear.
std::optional<std::filesystem::path> writeAside(const std::filesystem::path& folder,
                                                std::string_view stem, std::string_view extension,
                                                std::string_view bytes, std::error_code& error);

}  // namespace tessellon
