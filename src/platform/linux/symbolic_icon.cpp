#include "platform/linux/symbolic_icon.h"

#include "platform/linux/private_file.h"
#include "platform/linux/symbolic_icon_data.h"

#include <string>
#include <string_view>
#include <system_error>

namespace tessellon {
namespace {

using std::filesystem::path;

path iconFile() {
    return path("hicolor/symbolic/apps") / (std::string(symbolicIconName) + ".svg");
}

/// Whether the file is there with this content afterwards.
bool put(const path& file, std::string_view content) {
    const auto there = readPrivateFile(file, content.size());
    if (there.outcome == FileContent::Outcome::read && there.bytes == content) {
        return true;
    }
    std::error_code error;
    makePrivateFolder(file.parent_path(), error);
    return !error && replacePrivateFile(file, content, error);
}

}  // namespace

std::optional<path> symbolicIconFolder(const path& program,
                                       const std::optional<path>& runtimeFolder) {
    std::error_code error;
    const auto installed = program.parent_path().parent_path() / "share/icons";
    if (std::filesystem::is_regular_file(installed / iconFile(), error)) {
        return installed;
    }
    if (!runtimeFolder) {
        return std::nullopt;
    }
    const auto own = *runtimeFolder / "tessellon/icons";
    // Some hosts look for themes below the path, others only for the file in it.
    if (!put(own / iconFile(), symbolicIconData) ||
        !put(own / iconFile().filename(), symbolicIconData)) {
        return std::nullopt;
    }
    return own;
}

}  // namespace tessellon
