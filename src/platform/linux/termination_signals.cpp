#include "platform/linux/termination_signals.h"

#include <csignal>
#include <utility>

#include <sys/signalfd.h>
#include <unistd.h>

namespace tessellon {

TerminationSignals::TerminationSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGHUP);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    descriptor_ = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor_ < 0) {
        // Better an end without a last save than a program that nobody can end.
        sigprocmask(SIG_UNBLOCK, &signals, nullptr);
    }
}

void TerminationSignals::serve(RunLoop& loop, std::function<void()> callback) {
    if (descriptor_ < 0) {
        return;
    }
    readable_ =
        loop.watchReadable(descriptor_, [descriptor = descriptor_, callback = std::move(callback)] {
            signalfd_siginfo info{};
            while (read(descriptor, &info, sizeof info) == sizeof info) {
                callback();
            }
        });
}

TerminationSignals::~TerminationSignals() {
    readable_.reset();
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

}  // namespace tessellon
