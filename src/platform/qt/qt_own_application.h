// The program itself, as the toolkit knows it: its windows and its end.
#pragma once

#include "base/token.h"
#include "platform/own_application.h"
#include "platform/qt/qt_run_loop.h"

#include <QAbstractNativeEventFilter>
#include <QByteArray>

namespace tessellon {

/// While it lives, the program's windows stay active for the toolkit as long as they are the
/// desktop's active ones, whoever grabs the keyboard: a recording, the launcher, a window manager
/// that deals with a key. And the pointer does nothing to a window that is hidden already.
class QtOwnApplication final : public OwnApplication, private QAbstractNativeEventFilter {
  public:
    /// A QApplication must exist; the loop must outlive this object.
    explicit QtOwnApplication(QtRunLoop& loop);
    ~QtOwnApplication() override;
    QtOwnApplication(const QtOwnApplication&) = delete;
    QtOwnApplication& operator=(const QtOwnApplication&) = delete;

    std::optional<Rect> keyWindowFrame() const override;
    void terminate() override;

  private:
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

    QtRunLoop& loop_;
    Token termination_;
};

}  // namespace tessellon
