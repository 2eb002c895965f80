// A window with a few shortcuts to record, on the program's own adapters and settings file. What
// it shows, and what it heard from the keyboard, it writes to the file named as its argument.
#include "app/preferences.h"
#include "arrangements/arrangement_store.h"
#include "base/notification_center.h"
#include "platform/linux/defaults_file.h"
#include "platform/linux/termination_signals.h"
#include "platform/qt/qt_own_application.h"
#include "platform/qt/qt_run_loop.h"
#include "platform/qt/toolkit.h"
#include "platform/x11/connection.h"
#include "platform/x11/key_grabs.h"
#include "platform/x11/keyboard.h"
#include "platform/x11/raw_input.h"
#include "platform/x11/window_mirror.h"
#include "platform/x11/x11_beep.h"
#include "platform/x11/x11_displays.h"
#include "platform/x11/x11_event_monitors.h"
#include "platform/x11/x11_event_taps.h"
#include "platform/x11/x11_hot_key_center.h"
#include "platform/x11/x11_keyboard_focus.h"
#include "shortcuts/hotkeys.h"
#include "shortcuts/key_bindings.h"
#include "shortcuts/recorder.h"
#include "shortcuts/shortcut_recorder_view.h"
#include "ui/focus_ring.h"

#include <QApplication>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>
#include <QWidget>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace tessellon {
namespace {

constexpr double chipSize = 22;

class Window : public QWidget {
  public:
    Window(Recorder& recorder, const Hotkeys& hotkeys, const OwnApplication& application,
           std::filesystem::path report)
        : recorder_(recorder),
          hotkeys_(hotkeys),
          application_(application),
          report_(std::move(report)) {
        setWindowTitle("Shortcuts");
        auto* const all = new QVBoxLayout(this);
        auto* const rows = new QFormLayout();
        rows->setVerticalSpacing(3 * FocusRing::reach);
        for (const auto action : {SnapAction::leftHalf, SnapAction::rightHalf, SnapAction::topHalf,
                                  SnapAction::maximize}) {
            const auto target = HotkeyTarget::snap(action);
            auto* const control = new ShortcutRecorder(recorder, target, chipSize);
            rows->addRow(QString::fromStdString(recorder.title(target)), control);
            controls_.push_back({target, control});
        }
        all->addLayout(rows);
        all->addWidget(&note_);
        all->addWidget(&status_);
        resize(420, 300);
        qApp->installEventFilter(this);
        changed_ = recorder.changed().subscribe([this] { showState(); });
        showState();
    }

    void fired(const HotkeyTarget& target) {
        fired_ += target.targetID() + ' ';
        write();
    }

    void showState() {
        note_.setText(QString::fromStdString(recorder_.note().value_or("")));
        status_.setText(QString::fromStdString(hotkeys_.statusText()));
        write();
    }

  protected:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::WindowDeactivate || event->type() == QEvent::Hide) {
            recorder_.stop();
        }
        return QWidget::event(event);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        switch (event->type()) {
            case QEvent::KeyPress:
            case QEvent::KeyRelease:
                // Keys come to the window first.
                if (watched->isWindowType()) {
                    hear(*static_cast<QKeyEvent*>(event), event->type() == QEvent::KeyPress);
                }
                break;
            case QEvent::Move:
            case QEvent::Resize:
            case QEvent::WindowActivate:
            case QEvent::WindowDeactivate:
                if (!watched->isWindowType()) {
                    QMetaObject::invokeMethod(
                        this, [this] { write(); }, Qt::QueuedConnection);
                }
                break;
            default:
                break;
        }
        return false;
    }

  private:
    struct Control {
        HotkeyTarget target;
        ShortcutRecorder* view;
    };

    void hear(const QKeyEvent& event, bool pressed) {
        const bool isModifier = event.key() >= Qt::Key_Shift && event.key() <= Qt::Key_ScrollLock;
        if (!isModifier) {
            heard_ += (pressed ? '+' : '-') + std::to_string(event.nativeScanCode()) + ' ';
            write();
        }
    }

    void write() {
        auto temporary = report_;
        temporary += ".new";
        std::ofstream out(temporary);
        out << "recording " << (recorder_.target() ? recorder_.target()->targetID() : "") << '\n'
            << "note " << recorder_.note().value_or("") << '\n'
            << "status " << hotkeys_.statusText() << '\n'
            << "active " << (isActiveWindow() ? "yes" : "no") << '\n'
            << "fired " << fired_ << '\n'
            << "heard " << heard_ << '\n';
        if (const auto frame = application_.keyWindowFrame()) {
            out << "key " << frame->x << ' ' << frame->y << ' ' << frame->width << ' '
                << frame->height << '\n';
        }
        for (const auto& [target, view] : controls_) {
            const auto center = view->mapToGlobal(view->buttonRect().center().toPoint());
            out << target.targetID() << ' ' << center.x() << ' ' << center.y() << ' '
                << (recorder_.isTaken(target) ? "taken" : "free") << '\n';
        }
        out.close();
        std::filesystem::rename(temporary, report_);
    }

    Recorder& recorder_;
    const Hotkeys& hotkeys_;
    const OwnApplication& application_;
    std::filesystem::path report_;
    std::vector<Control> controls_;
    QLabel note_;
    QLabel status_;
    std::string fired_;
    std::string heard_;
    Token changed_;
};

int run(int argc, char** argv) {
    TerminationSignals signals;
    const auto connection = x11::Connection::open();
    const auto settings = standardDefaultsPath();
    if (argc != 2 || !connection || !settings) {
        return EXIT_FAILURE;
    }
    prepareToolkit([] {});
    const QApplication toolkit(argc, argv);
    QtRunLoop loop;
    QtOwnApplication application(loop);
    signals.serve(loop, [&] { application.terminate(); });
    DefaultsFile defaults(loop, *settings);
    registerPreferenceDefaults(defaults);
    x11::WindowMirror mirror(*connection);
    const x11::X11Displays displays(*connection, mirror);
    x11::Keyboard keyboard(*connection);
    x11::RawInput rawInput(*connection, keyboard);
    x11::X11EventMonitors eventMonitors(*connection, mirror, displays, rawInput);
    x11::KeyGrabs keyGrabs(*connection, keyboard, mirror, rawInput);
    x11::X11HotKeyCenter hotKeyCenter(*connection, keyboard, keyGrabs);
    x11::X11EventTaps eventTaps(*connection, keyboard, keyGrabs, rawInput);
    x11::X11KeyboardFocus keyboardFocus(
        {*connection, keyboard, eventTaps, hotKeyCenter, eventMonitors, rawInput, loop});
    x11::X11Beep beep(*connection);
    NotificationCenter notifications;
    ArrangementStore arrangements(defaults, notifications);
    KeyBindings bindings(defaults, arrangements);
    Hotkeys hotkeys(hotKeyCenter, bindings, notifications);
    Recorder recorder(
        {bindings, hotkeys, eventMonitors, keyboardFocus, application, beep, notifications});
    Window window(recorder, hotkeys, application, argv[1]);
    connection->attach(loop);
    hotkeys.setHandler([&window](const HotkeyTarget& target) { window.fired(target); });
    window.setVisible(true);
    const int exitCode = loop.run();
    defaults.flush();
    return exitCode;
}

}  // namespace
}  // namespace tessellon

int main(int argc, char** argv) {
    return tessellon::run(argc, argv);
}
