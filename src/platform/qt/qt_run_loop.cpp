#include "platform/qt/qt_run_loop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QPointer>
#include <QSocketNotifier>
#include <QTimer>
#include <chrono>
#include <utility>

namespace tessellon {
namespace {

/// Undoes a registration by deleting the Qt object behind it, safely also from within its own
/// callback and after the loop itself is gone.
Token deletes(QObject* object) {
    return Token([guarded = QPointer<QObject>(object)] {
        if (guarded) {
            guarded->disconnect();
            guarded->deleteLater();
        }
    });
}

}  // namespace

Token QtRunLoop::startTimer(Seconds interval, Repeat repeat, std::function<void()> callback) {
    auto* timer = new QTimer(&owner_);
    timer->setTimerType(Qt::PreciseTimer);
    timer->setSingleShot(repeat == Repeat::once);
    timer->setInterval(std::chrono::ceil<std::chrono::milliseconds>(interval));
    // Qt keeps the callback while it runs, so it may drop its own token.
    QObject::connect(timer, &QTimer::timeout, timer, std::move(callback));
    timer->start();
    return deletes(timer);
}

Token QtRunLoop::after(Seconds delay, std::function<void()> callback) {
    return startTimer(delay, Repeat::once, std::move(callback));
}

Token QtRunLoop::every(Seconds period, std::function<void()> callback) {
    return startTimer(period, Repeat::always, std::move(callback));
}

Seconds QtRunLoop::uptime() const {
    return std::chrono::steady_clock::now().time_since_epoch();
}

Token QtRunLoop::watchReadable(int descriptor, std::function<void()> callback) {
    auto* notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, &owner_);
    QObject::connect(notifier, &QSocketNotifier::activated, notifier,
                     [callback = std::move(callback)] { callback(); });
    return Token([guarded = QPointer<QSocketNotifier>(notifier)] {
        if (guarded) {
            // Not only deleted later: the descriptor may be closed, or another one, by then.
            guarded->setEnabled(false);
            guarded->disconnect();
            guarded->deleteLater();
        }
    });
}

Token QtRunLoop::beforeBlocking(std::function<void()> callback) {
    auto* receiver = new QObject(&owner_);
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     receiver, std::move(callback));
    return deletes(receiver);
}

int QtRunLoop::run() {
    // What an application with windows sets up on top, if this is one.
    const bool hasWindows = qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
    return hasWindows ? QGuiApplication::exec() : QCoreApplication::exec();
}

void QtRunLoop::quit(int exitCode) {
    QCoreApplication::exit(exitCode);
}

}  // namespace tessellon
