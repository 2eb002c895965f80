#include "platform/linux/private_file.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <ctime>
#include <utility>

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

namespace tessellon {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view asideMark = ".unreadable-";

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    explicit operator bool() const { return number_ >= 0; }
    int get() const { return number_; }
    /// False when the system reports a write error as late as this.
    bool close() { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }

  private:
    int number_;
};

std::error_code lastError() {
    return {errno, std::generic_category()};
}

FileStamp stampOf(const struct stat& status) {
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
            status.st_mtim.tv_nsec};
}

FileContent notRead(FileContent::Outcome outcome, std::string problem) {
    FileContent content;
    content.outcome = outcome;
    content.problem = std::move(problem);
    return content;
}

FileContent notRead(std::error_code error) {
    using Outcome = FileContent::Outcome;
    if (error == std::errc::no_such_file_or_directory) {
        return notRead(Outcome::missing, error.message());
    }
    const bool isOfTheMoment = error == std::errc::too_many_files_open ||
                               error == std::errc::too_many_files_open_in_system ||
                               error == std::errc::not_enough_memory ||
                               error == std::errc::interrupted ||
                               error == std::errc::not_a_directory;
    return notRead(isOfTheMoment ? Outcome::failed : Outcome::unreadable, error.message());
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// ".NAME." and ".tmp" with the process id between them.
fs::path temporaryFor(const fs::path& path, pid_t pid) {
    return path.parent_path() /
           ("." + path.filename().string() + "." + std::to_string(pid) + ".tmp");
}

std::string timeText() {
    const auto now = std::time(nullptr);
    std::tm parts{};
    localtime_r(&now, &parts);
    std::array<char, 32> buffer{};
    const auto length = std::strftime(buffer.data(), buffer.size(), "%Y%m%d-%H%M%S", &parts);
    return {buffer.data(), length};
}

/// Tries names until `take` succeeds or fails for another reason than that the name exists.
template <typename Take>
std::optional<fs::path> underFreeName(const fs::path& folder, std::string_view stem,
                                      std::string_view extension, Take take,
                                      std::error_code& error) {
    const auto base = std::string(stem) + std::string(asideMark) + timeText();
    constexpr int mostNames = 1000;
    for (int i = 1; i <= mostNames; ++i) {
        auto name = base;
        if (i > 1) {
            name += "-" + std::to_string(i);
        }
        name += extension;
        auto candidate = folder / name;
        error = take(candidate);
        if (!error) {
            return candidate;
        }
        if (error != std::errc::file_exists) {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

std::error_code renameToNew(const fs::path& from, const fs::path& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return {};
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return lastError();
    }
    // A file system without this kind of rename.
    std::error_code error;
    if (fs::exists(fs::symlink_status(to, error))) {
        return std::make_error_code(std::errc::file_exists);
    }
    fs::rename(from, to, error);
    return error;
}

std::error_code writeNew(const fs::path& path, std::string_view bytes) {
    Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file) {
        return lastError();
    }
    if (writeAll(file.get(), bytes) && ::fsync(file.get()) == 0 && file.close()) {
        return {};
    }
    const auto error = lastError();
    ::unlink(path.c_str());
    return error;
}

bool isKeptAlready(const fs::path& folder, std::string_view stem, std::string_view bytes) {
    const auto start = std::string(stem) + std::string(asideMark);
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        if (!it->path().filename().string().starts_with(start)) {
            continue;
        }
        const auto copy = readPrivateFile(it->path(), bytes.size());
        if (copy.outcome == FileContent::Outcome::read && copy.bytes == bytes) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::optional<FileStamp> fileStamp(const fs::path& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return stampOf(status);
}

FileContent readPrivateFile(const fs::path& path, std::size_t limit) {
    using Outcome = FileContent::Outcome;
    // Not blocking, so that a pipe put in the file's place does not stop the program.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file) {
        return notRead(lastError());
    }
    struct stat status {};
    if (::fstat(file.get(), &status) != 0) {
        return notRead(lastError());
    }
    if (!S_ISREG(status.st_mode)) {
        return notRead(Outcome::unreadable, "not a regular file");
    }
    if (status.st_size > static_cast<off_t>(limit)) {
        return notRead(Outcome::unreadable,
                       "too large (" + std::to_string(status.st_size) + " bytes)");
    }
    FileContent content;
    content.outcome = Outcome::read;
    content.stamp = stampOf(status);
    content.bytes.resize(static_cast<std::size_t>(status.st_size));
    std::size_t length = 0;
    while (length < content.bytes.size()) {
        const auto got =
            ::read(file.get(), content.bytes.data() + length, content.bytes.size() - length);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            return notRead(lastError());
        }
        if (got == 0) {
            break;
        }
        length += static_cast<std::size_t>(got);
    }
    content.bytes.resize(length);
    return content;
}

std::optional<FileStamp> replacePrivateFile(const fs::path& path, std::string_view bytes,
                                            std::error_code& error) {
    const auto temporary = temporaryFor(path, ::getpid());
    ::unlink(temporary.c_str());
    Descriptor file(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file) {
        error = lastError();
        return std::nullopt;
    }
    struct stat status {};
    if (writeAll(file.get(), bytes) && ::fstat(file.get(), &status) == 0 && file.close() &&
        ::rename(temporary.c_str(), path.c_str()) == 0) {
        error.clear();
        return stampOf(status);
    }
    error = lastError();
    ::unlink(temporary.c_str());
    return std::nullopt;
}

void syncPrivateFile(const fs::path& path, std::error_code& error) {
    error.clear();
    for (const auto& each : {path, path.parent_path()}) {
        const Descriptor opened(::open(each.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        if (!opened || ::fsync(opened.get()) != 0) {
            error = lastError();
        }
    }
}

void removeLeftoversOf(const fs::path& path) {
    const auto start = "." + path.filename().string() + ".";
    constexpr std::string_view end = ".tmp";
    std::error_code error;
    for (fs::directory_iterator it(path.parent_path(), error), last; !error && it != last;
         it.increment(error)) {
        const auto name = it->path().filename().string();
        if (name.size() <= start.size() + end.size() || !name.starts_with(start) ||
            !name.ends_with(end)) {
            continue;
        }
        const auto* digits = name.data() + start.size();
        const auto* digitsEnd = name.data() + name.size() - end.size();
        pid_t pid = 0;
        const auto parsed = std::from_chars(digits, digitsEnd, pid);
        if (parsed.ec != std::errc() || parsed.ptr != digitsEnd || pid <= 0) {
            continue;
        }
        if (pid == ::getpid() || (::kill(pid, 0) != 0 && errno == ESRCH)) {
            ::unlink(it->path().c_str());
        }
    }
}

void makePrivateFolder(const fs::path& folder, std::error_code& error) {
    error.clear();
    if (folder.empty() || fs::is_directory(folder, error)) {
        return;
    }
    makePrivateFolder(folder == folder.root_path() ? fs::path() : folder.parent_path(), error);
    if (!error && ::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) {
        error = lastError();
    }
}

fs::path followLinks(const fs::path& path) {
    constexpr int mostLinks = 40;
    auto end = path;
    for (int i = 0; i < mostLinks; ++i) {
        std::error_code error;
        const auto target = fs::read_symlink(end, error);
        if (error) {
            return end;
        }
        end = end.parent_path() / target;
    }
    return path;
}

std::optional<fs::path> moveAside(const fs::path& path, std::error_code& error) {
    return underFreeName(
        path.parent_path(), path.stem().string(), path.extension().string(),
        [&path](const fs::path& candidate) { return renameToNew(path, candidate); }, error);
}

std::optional<fs::path> writeAside(const fs::path& folder, std::string_view stem,
                                   std::string_view extension, std::string_view bytes,
                                   std::error_code& error) {
    error.clear();
    if (isKeptAlready(folder, stem, bytes)) {
        return std::nullopt;
    }
    return underFreeName(
        folder, stem, extension,
        [bytes](const fs::path& candidate) { return writeNew(candidate, bytes); }, error);
}

}  // namespace tessellon
