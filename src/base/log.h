// What the program tells whoever reads its standard error: one line a message, with the priority
// prefix of sd-daemon(3) when the journal is listening. Silent in normal use.
#pragma once

#include <string_view>

namespace tessellon {

enum class LogPriority { error = 3, warning = 4, notice = 5, debug = 7 };

/// Writes one line "tessellon: MESSAGE" to standard error. Debug messages appear only when the
/// environment variable TESSELLON_DEBUG is set.
void log(LogPriority priority, std::string_view message);

inline void logError(std::string_view message) {
    log(LogPriority::error, message);
}
inline void logWarning(std::string_view message) {
    log(LogPriority::warning, message);
}
inline void logNotice(std::string_view message) {
    log(LogPriority::notice, message);
}
inline void logDebug(std::string_view message) {
    log(LogPriority::debug, message);
}

}  // namespace tessellon
