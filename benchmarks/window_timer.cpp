// Shows the settings window on the display it is started on and goes through its pages and drags a
// slider, and prints how long each took: one line for each sample, a name and milliseconds. What
// the window shows and changes is in memory; what draws it is what users have.
#include "app/preferences.h"
#include "platform/memory/memory_accessibility.h"
#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_user_defaults.h"
#include "platform/qt/qt_window.h"
#include "settings/settings_ports.h"
#include "settings/settings_view.h"
#include "statistics.h"
#include "ui/glyph.h"
#include "ui/icon_theme.h"
#include "ui/pill_slider.h"

#include <QApplication>
#include <QCursor>
#include <QDirIterator>
#include <QFileInfo>
#include <QMouseEvent>
#include <QWindow>
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace tessellon;
using namespace tessellon::benchmarks;

constexpr int rounds = 21;

/// Of the pointer on a slider; another value for each.
constexpr int stepWidth = 10;
constexpr int savedArrangements = 5;
constexpr std::size_t manyApplications = 60;

/// All that the settings read and change, with something in it to show.
struct Everything {
    MemoryDesktop desktop;
    MemoryUserDefaults defaults;
    WindowEngine engine{{desktop.accessibility(), desktop.applications(), desktop.displays(),
                         desktop.windowList(), desktop.eventMonitors(), defaults}};
    SettingsPorts ports{desktop, defaults};

    Everything() {
        registerPreferenceDefaults(defaults);
        setIgnoredApplications(defaults, {"org.example.Editor", "org.example.Player"});
        for (int i = 1; i <= savedArrangements; ++i) {
            addArrangement(ports.store, {Uuid::random(),
                                         nextArrangementName(static_cast<std::size_t>(i)),
                                         {{"org.example.Editor", "", 0, {0, 0, 0.5, 1}}},
                                         std::nullopt});
        }
    }

    SettingsServices services() {
        return ports.services(engine, [] { return std::unique_ptr<DragViews>(); });
    }
};

/// The names of the icons of applications that this machine has.
std::vector<std::string> someIcons() {
    std::set<std::string> icons;
    for (const auto& folder : iconThemeFolders()) {
        QDirIterator files(folder, {QStringLiteral("*.png"), QStringLiteral("*.svg")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const auto path = files.next();
            if (path.contains(QStringLiteral("/apps/"))) {
                icons.insert(QFileInfo(path).completeBaseName().toStdString());
            }
        }
    }
    return {icons.begin(), icons.end()};
}

/// Has the Rules page list many applications that are installed, each with an icon while there are
/// so many.
void ignoreMany(Everything& everything) {
    const auto icons = someIcons();
    std::vector<std::string> identifiers;
    for (std::size_t at = 0; at < manyApplications; ++at) {
        const auto number = std::to_string(at + 1);
        const auto icon = icons.empty() ? std::string() : icons[at % icons.size()];
        identifiers.push_back("org.example.Application" + number);
        everything.ports.directory.installed.push_back(
            {identifiers.back(), "Application " + number, icon});
    }
    setIgnoredApplications(everything.defaults, identifiers);
}

/// Counts what the toolkit draws.
class Paints final : public QObject {
  public:
    Paints() { QCoreApplication::instance()->installEventFilter(this); }
    int count() const { return count_; }
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        count_ += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

  private:
    int count_ = 0;
};

/// Returns when all that waits is done and seen by the server.
void settle() {
    // There is no event loop that would delete what is to go.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    static_cast<void>(QCursor::pos());
}

/// Changes something, and returns when the picture of it is in the server. The toolkit draws some
/// milliseconds after it is asked to, which is part of what the user waits for.
template <typename Change>
void awaitPicture(const Paints& paints, Change change) {
    const int before = paints.count();
    change();
    while (paints.count() == before) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    static_cast<void>(QCursor::pos());
}

void print(const std::string& name, Clock::time_point start) {
    std::cout << name << '\t' << Milliseconds(Clock::now() - start).count() << '\n';
}

/// The first slider that is shown. The toolkit could not tell it from other widgets.
PillSlider* shownSlider(const QWidget& view) {
    for (auto* const child : view.findChildren<QWidget*>()) {
        auto* const slider = dynamic_cast<PillSlider*>(child);
        if (slider != nullptr && slider->isVisible()) {
            return slider;
        }
    }
    return nullptr;
}

void drag(PillSlider& slider, const Paints& paints) {
    const auto send = [&slider](QEvent::Type type, int x) {
        const QPointF at(x, slider.height() / 2.0);
        QMouseEvent event(type, at, slider.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QApplication::sendEvent(&slider, &event);
    };
    send(QEvent::MouseButtonPress, slider.width() / 4);
    for (int i = 1; i <= rounds; ++i) {
        settle();
        const auto start = Clock::now();
        awaitPicture(paints, [&] { send(QEvent::MouseMove, slider.width() / 4 + stepWidth * i); });
        print("slider follows", start);
    }
    send(QEvent::MouseButtonRelease, slider.width() / 2);
}

}  // namespace

int main(int argc, char** argv) {
    QApplication::setDesktopSettingsAware(false);
    const QApplication application(argc, argv);
    const Paints paints;
    Everything everything;

    const auto start = Clock::now();
    auto made = std::make_unique<SettingsView>(everything.services());
    auto* const view = made.get();
    QtWindow window(everything.desktop.displays(),
                    {std::move(made), QStringLiteral("Tessellon Settings"),
                     SettingsView::contentSize, glyphIcon()});
    window.makeKeyAndOrderFront();
    while (!view->window()->windowHandle()->isExposed()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    settle();
    print("first opening", start);

    for (int round = 0; round < rounds; ++round) {
        for (const auto page : allSettingsPages) {
            if (page == view->page()) {
                continue;  // only the one it opens at
            }
            settle();
            const auto began = Clock::now();
            awaitPicture(paints, [&] { view->setPage(page); });
            // The first time brings what is kept: pictures of the letters, mostly.
            print(std::string("page ") + std::string(title(page)), began);
        }
    }
    view->setPage(SettingsPage::general);
    ignoreMany(everything);
    settle();
    for (int round = 0; round < rounds; ++round) {
        settle();
        const auto began = Clock::now();
        awaitPicture(paints, [&] { view->setPage(SettingsPage::rules); });
        print("page Rules, 60 applications", began);
        view->setPage(SettingsPage::general);
        settle();
    }
    auto* const slider = shownSlider(*view);
    if (slider == nullptr) {
        std::cerr << "window_timer: no slider\n";
        return EXIT_FAILURE;
    }
    settle();
    drag(*slider, paints);
    return EXIT_SUCCESS;
}
