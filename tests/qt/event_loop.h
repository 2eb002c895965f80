// Running the toolkit's event loop until something is the case.
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <functional>

namespace tessellon {

/// Runs the event loop until the condition holds; false when it does not come to hold.
inline bool waitFor(const std::function<bool()>& condition) {
    for (QDeadlineTimer deadline(20000); !condition();) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    }
    return true;
}

}  // namespace tessellon
