// Tells when files in a few folders were written, replaced or removed by whomever; made of
// inotify(7).
#pragma once

#include "base/token.h"
#include "platform/run_loop.h"

#include <filesystem>
#include <functional>
#include <map>
#include <vector>

namespace tessellon {

struct FolderChange {
    std::filesystem::path folder;
    /// The name in the folder; empty when the folder itself is gone or has moved, or when it is not
    /// known what has changed.
    std::filesystem::path name;
    bool operator==(const FolderChange&) const = default;
};

class FolderWatch {
  public:
    /// The changes of one turn of the loop together, from within the loop.
    using Callback = std::function<void(const std::vector<FolderChange>&)>;

    FolderWatch(RunLoop& loop, Callback callback);
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;
    ~FolderWatch();

    /// The folders to watch from now on, instead of the former ones. A folder that was replaced by
    /// another of the same name is watched again after a new call. False when one of them cannot be
    /// watched.
    bool setFolders(const std::vector<std::filesystem::path>& folders);

  private:
    void readEvents();

    int descriptor_;
    std::map<int, std::filesystem::path> folders_;
    Callback callback_;
    Token readable_;
};

}  // namespace tessellon
