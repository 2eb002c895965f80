// The receiver of logind's word on sleep, as QtDBus wants one; for LogindPowerEvents alone.
#pragma once

#include <QObject>
#include <functional>
#include <utility>

namespace tessellon {

class SleepListener : public QObject {
    Q_OBJECT

  public:
    /// `woke` is called in the thread of this object.
    explicit SleepListener(std::function<void()> woke) : woke_(std::move(woke)) {}

    /// logind says true before it sleeps and false after it woke.
    Q_SLOT void prepareForSleep(bool aboutToSleep) {
        if (!aboutToSleep) {
            woke_();
        }
    }

  private:
    std::function<void()> woke_;
};

}  // namespace tessellon
