#include "platform/qt/qt_run_loop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QPointer>
#include <QSocketNotifier>
#include <QTimer>
#include <chrono>
#include <memory>
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
    auto timer = std::make_unique<QTimer>(&owner_);
    timer->setTimerType(Qt::PreciseTimer);
    timer->setSingleShot(repeat == Repeat::once);
    timer->setInterval(std::chrono::ceil<std::chrono::milliseconds>(interval));
    QObject::connect(timer.get(), &QTimer::timeout, timer.get(),
                     [call = std::make_shared<std::function<void()>>(std::move(callback))] {
                         const auto kept = call;  // the callback may drop its own token
                         (*kept)();
                     });
    timer->start();
    return deletes(timer.release());
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
    auto notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read, &owner_);
    auto* raw = notifier.get();
    QObject::connect(raw, &QSocketNotifier::activated, raw,
                     [call = std::make_shared<std::function<void()>>(std::move(callback))] {
                         const auto kept = call;
                         (*kept)();
                     });
    notifier.release();
    return Token([guarded = QPointer<QSocketNotifier>(raw)] {
        if (guarded) {
            guarded->setEnabled(false);
            guarded->disconnect();
            guarded->deleteLater();
        }
    });
}

Token QtRunLoop::beforeBlocking(std::function<void()> callback) {
    auto* receiver = std::make_unique<QObject>(&owner_).release();
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     receiver, std::move(callback));
    return deletes(receiver);
}

int QtRunLoop::run() {
    return QCoreApplication::exec();
}

void QtRunLoop::quit(int exitCode) {
    QCoreApplication::exit(exitCode);
}

}  // namespace tessellon
