#include "platform/qt/qt_window.h"

#include "platform/qt/screen_coordinates.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <chrono>
#include <functional>
#include <utility>

namespace tessellon {
namespace {

// What window managers put around a window is known only once it is there. In device pixels.
constexpr int decorationWidth = 12;
constexpr int decorationHeight = 40;

// Most window managers see to the windows of a screen that is gone themselves.
constexpr std::chrono::milliseconds windowManagerGrace{500};

/// The part of the screen that the user works on, in Qt's pixels.
QRect workArea(const Displays& displays) {
    if (const auto screen = displays.mainScreen()) {
        return toQtGeometry(screen->visibleFrame, qtScreens());
    }
    const auto* const primary = QGuiApplication::primaryScreen();
    return primary != nullptr ? primary->availableGeometry() : QRect();
}

}  // namespace

class QtWindow::Frame : public QWidget {
  public:
    explicit Frame(QtWindowContent content)
        : QWidget(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                               Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint |
                               Qt::WindowMinimizeButtonHint) {
        QAccessible::installFactory(describe);
        setWindowTitle(content.title);
        setWindowIcon(content.icon);
        // The program goes on without windows.
        setAttribute(Qt::WA_QuitOnClose, false);
        auto* const column = new QVBoxLayout(this);
        column->setContentsMargins(0, 0, 0, 0);
        if (content.size.isEmpty()) {
            column->setSizeConstraint(QLayout::SetFixedSize);
        }
        column->addWidget(content.view.release());
    }

    std::function<void()> onClosed;

  protected:
    void closeEvent(QCloseEvent* event) override {
        event->accept();
        // Somebody may throw the window away for it, which this event has to be over for.
        QMetaObject::invokeMethod(
            this,
            [this] {
                const auto closed = onClosed;
                closed();
            },
            Qt::QueuedConnection);
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape || event->matches(QKeySequence::Close)) {
            close();
            return;
        }
        QWidget::keyPressEvent(event);
    }

  private:
    // The toolkit takes every window that is no main window or dialog of its own for a mere box,
    // and nobody is told when it becomes active.
    static QAccessibleInterface* describe(const QString& /*className*/, QObject* object) {
        auto* const frame = dynamic_cast<Frame*>(object);
        return frame != nullptr ? new QAccessibleWidget(frame, QAccessible::Window) : nullptr;
    }
};

QtWindow::QtWindow(const Displays& displays, QtWindowContent content)
    : displays_(displays),
      size_(content.size),
      frame_(std::make_unique<Frame>(std::move(content))) {
    frame_->onClosed = [this] { closed_.emit(); };
    windowManagerIsDone_.setSingleShot(true);
    windowManagerIsDone_.setInterval(windowManagerGrace);
    windowManagerIsDone_.callOnTimeout([this] { bringWithinReach(); });
    displaysChanged_ = displays_.changed().subscribe([this] { windowManagerIsDone_.start(); });
}

QtWindow::~QtWindow() = default;

void QtWindow::makeKeyAndOrderFront() {
    frame_->setAttribute(Qt::WA_ShowWithoutActivating, false);
    if (frame_->isVisible()) {
        bringWithinReach();
    } else {
        place();
    }
    if (frame_->isMinimized()) {
        frame_->showNormal();
    } else {
        frame_->show();
    }
    frame_->raise();
    frame_->activateWindow();
}

void QtWindow::orderFront() {
    if (!frame_->isVisible()) {
        frame_->setAttribute(Qt::WA_ShowWithoutActivating);
        place();
        frame_->show();
    }
}

bool QtWindow::isVisible() const {
    return frame_->isVisible();
}

void QtWindow::bringWithinReach() {
    if (frame_->isVisible() && !titleBarCanBeReached()) {
        place();
    }
}

/// Whether a screen shows the middle of its upper edge, by which the user can move it.
bool QtWindow::titleBarCanBeReached() const {
    const auto frame = frame_->frameGeometry();
    return QGuiApplication::screenAt({frame.center().x(), frame.top()}) != nullptr;
}

void QtWindow::place() {
    const auto area = workArea(displays_);
    const auto decoration = QSize(decorationWidth, decorationHeight) / frame_->devicePixelRatio();
    const auto room = area.size() - decoration;
    const auto size = followsView()    ? frame_->sizeHint()
                      : area.isEmpty() ? size_
                                       : size_.boundedTo(room);
    const bool isWhole = followsView() || frame_->size() == size_;
    if (wasShown_ && isWhole && titleBarCanBeReached()) {
        return;  // where the user has put it
    }
    wasShown_ = true;
    if (!followsView()) {
        frame_->setFixedSize(size);
    }
    const auto around = size + QSize(0, decoration.height());
    frame_->move(area.x() + (area.width() - around.width()) / 2,
                 area.y() + (area.height() - around.height()) / 2);
}

}  // namespace tessellon
