#include "base/log.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace tessellon {

void log(LogPriority priority, std::string_view message) {
    static const bool wantsDebug = std::getenv("TESSELLON_DEBUG") != nullptr;
    static const bool toJournal = std::getenv("JOURNAL_STREAM") != nullptr;
    if (priority == LogPriority::debug && !wantsDebug) {
        return;
    }
    std::string line;
    if (toJournal) {
        line += '<';
        line += std::to_string(static_cast<int>(priority));
        line += '>';
    }
    line += "tessellon: ";
    for (const char c : message) {
        // What others have named may hold anything, and the reader may be a terminal.
        const auto byte = static_cast<unsigned char>(c);
        line += byte < 0x20 || byte == 0x7F ? ' ' : c;
    }
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace tessellon
