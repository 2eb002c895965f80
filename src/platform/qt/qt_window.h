// An ordinary window of the program, as the toolkit makes it.
#pragma once

#include "base/token.h"
#include "platform/displays.h"
#include "platform/window.h"

#include <QIcon>
#include <QSize>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <memory>

namespace tessellon {

/// What is in a window, and what the window manager is told about it.
struct QtWindowContent {
    std::unique_ptr<QWidget> view;
    QString title;
    /// In logical pixels; an empty one is what the view needs, whenever that changes.
    QSize size;
    QIcon icon;
};

/// It has a title bar, can be closed (also by Escape and Control W) and minimized, and has its size
/// for good: that of its content, or what the screen has room for. One that follows its view is as
/// large as that all the time. Nothing of it is created on the display before it is shown. When the
/// screen that it is on goes, it moves to another one.
class QtWindow final : public Window {
  public:
    /// The displays must outlive the window.
    QtWindow(const Displays& displays, QtWindowContent content);
    ~QtWindow() override;
    QtWindow(const QtWindow&) = delete;
    QtWindow& operator=(const QtWindow&) = delete;

    void makeKeyAndOrderFront() override;
    void orderFront() override;
    bool isVisible() const override;

  private:
    class Frame;

    bool followsView() const { return size_.isEmpty(); }
    void place();
    void bringWithinReach();
    bool titleBarCanBeReached() const;

    const Displays& displays_;
    QSize size_;
    bool wasShown_ = false;
    std::unique_ptr<Frame> frame_;
    QTimer windowManagerIsDone_;
    Token displaysChanged_;
};

}  // namespace tessellon
