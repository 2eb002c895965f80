#include "platform/linux/detached_program.h"

#include <csignal>

#include <glib.h>
#include <unistd.h>

namespace tessellon {
namespace {

/// Runs in the child: the signals that this program reads elsewhere are to reach the other one.
void leaveOurSession(gpointer /*unused*/) {
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    setsid();
}

}  // namespace

bool startDetached(const std::vector<std::string>& words) {
    constexpr auto flags = static_cast<GSpawnFlags>(
        G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL);
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (const auto& word : words) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    return !words.empty() && g_spawn_async(nullptr, arguments.data(), nullptr, flags,
                                           leaveOurSession, nullptr, nullptr, nullptr) != FALSE;
}

}  // namespace tessellon
