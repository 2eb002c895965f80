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
        line += c == '\n' ? ' ' : c;
    }
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace tessellon
