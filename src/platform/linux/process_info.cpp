#include "platform/linux/process_info.h"

#include <string>
#include <string_view>
#include <system_error>

namespace tessellon {

std::optional<std::filesystem::path> processExecutable(Pid pid) {
    if (pid <= 0) {
        return std::nullopt;
    }
    std::error_code error;
    auto program = std::filesystem::read_symlink("/proc/" + std::to_string(pid) + "/exe", error);
    if (error || !program.is_absolute()) {
        return std::nullopt;
    }
    // proc(5): the kernel appends this once the file is unlinked; a file may also be called so.
    constexpr std::string_view deleted = " (deleted)";
    auto text = program.string();
    if (text.ends_with(deleted) && !std::filesystem::exists(program, error)) {
        text.resize(text.size() - deleted.size());
        program = text;
    }
    return program;
}

}  // namespace tessellon
