#include "platform/linux/folder_watch.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <utility>

#include <sys/inotify.h>
#include <unistd.h>

namespace tessellon {
namespace {

// A file is looked at when its writer closes it, not while it is being written.
constexpr std::uint32_t watchedEvents = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE |
                                        IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;

}  // namespace

FolderWatch::FolderWatch(RunLoop& loop, Callback callback)
    : descriptor_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)), callback_(std::move(callback)) {
    if (descriptor_ >= 0) {
        readable_ = loop.watchReadable(descriptor_, [this] { readEvents(); });
    }
}

FolderWatch::~FolderWatch() {
    readable_.reset();
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

bool FolderWatch::setFolders(const std::vector<std::filesystem::path>& folders) {
    std::map<int, std::filesystem::path> watched;
    bool all = true;
    for (const auto& folder : folders) {
        const int watch = inotify_add_watch(descriptor_, folder.c_str(), watchedEvents);
        if (watch >= 0) {
            watched.emplace(watch, folder);
        } else {
            all = false;
        }
    }
    for (const auto& [watch, folder] : folders_) {
        if (!watched.contains(watch)) {
            inotify_rm_watch(descriptor_, watch);
        }
    }
    folders_ = std::move(watched);
    return all;
}

void FolderWatch::readEvents() {
    std::vector<FolderChange> changes;
    const auto note = [&changes](FolderChange change) {
        if (std::find(changes.begin(), changes.end(), change) == changes.end()) {
            changes.push_back(std::move(change));
        }
    };
    alignas(inotify_event) std::array<char, 4096> buffer{};
    ssize_t length = 0;
    while ((length = read(descriptor_, buffer.data(), buffer.size())) > 0) {
        for (std::size_t at = 0; at < static_cast<std::size_t>(length);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            const char* name = event.len > 0 ? buffer.data() + at + sizeof event : "";
            at += sizeof event + event.len;
            if ((event.mask & IN_Q_OVERFLOW) != 0) {
                note({});
                continue;
            }
            const auto found = folders_.find(event.wd);
            if (found != folders_.end()) {
                note({found->second, name});
            }
        }
    }
    if (!changes.empty()) {
        callback_(changes);
    }
}

}  // namespace tessellon
