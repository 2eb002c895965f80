// Shows the zone grid and the preview on the display it is started on and prints how long that
// took: one line for each sample, a name and milliseconds. For the benchmark on a real desktop.
#include "drag/hints_view.h"
#include "drag/overlay_view.h"
#include "drag/zone_hints.h"
#include "platform/qt/screen_coordinates.h"
#include "platform/x11/connection.h"
#include "platform/x11/x11_compositing.h"
#include "statistics.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QRect>
#include <QRegion>
#include <array>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <memory>
#include <string_view>
#include <thread>

namespace {

using namespace tessellon;
using namespace tessellon::benchmarks;
using enum SnapAction;

constexpr int shows = 31;
constexpr int rounds = 10;

/// Counts how often a widget is painted.
class Paints final : public QObject {
  public:
    explicit Paints(QWidget& widget) { widget.installEventFilter(this); }
    int count() const { return count_; }
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        count_ += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

  private:
    int count_ = 0;
};

/// Gives the compositor the time it has between two motions of a hand; it draws in the server,
/// where the next picture would have to wait for it.
void awaitCompositor() {
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    QCoreApplication::processEvents();
}

/// Returns when the server has done everything that was asked of it.
void awaitServer() {
    static_cast<void>(QCursor::pos());
}

void print(std::string_view name, Clock::time_point start) {
    std::cout << name << '\t' << Milliseconds(Clock::now() - start).count() << '\n';
}

/// From the call that shows a panel to its picture on the screen.
void timeShow(std::string_view name, PanelWindow& panel, const std::function<void()>& show) {
    const Paints paints(panel);
    awaitServer();
    const auto start = Clock::now();
    show();
    while (paints.count() == 0) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    awaitServer();
    print(name, start);
}

QRect rectOf(const std::vector<Hint>& hints, SnapAction action) {
    for (const auto& hint : hints) {
        if (hint.action == action) {
            const Rect r = hint.rect.integral();
            return {static_cast<int>(r.x), static_cast<int>(r.y), static_cast<int>(r.width),
                    static_cast<int>(r.height)};
        }
    }
    return {};
}

int run() {
    const auto connection = x11::Connection::open();
    const auto screens = qtScreens();
    if (!connection || screens.empty()) {
        std::cerr << "panel_timer: no display\n";
        return EXIT_FAILURE;
    }
    x11::X11Compositing compositing(*connection);
    const Rect whole = fromQtGeometry(screens.front().geometry, screens);
    const Screen screen{1, whole, whole, std::nullopt, "Screen"};

    HintsView grid(compositing);
    grid.setScreenFrame(whole);
    const auto hints = ZoneHints::layout(screen);
    for (int i = 0; i < shows; ++i) {
        timeShow(i == 0 ? "grid-first" : "grid-again", grid, [&] {
            grid.setHints(ZoneHints::layout(screen));
            grid.orderFront();
        });
        if (i + 1 < shows) {
            grid.orderOut();
            awaitCompositor();
        }
    }

    // The way of a pointer over the grid; each step paints the zone it left and the one it entered.
    constexpr std::array<SnapAction, 9> way{leftThird,   leftHalf,   center, rightHalf, rightThird,
                                            bottomRight, bottomHalf, center, topLeft};
    const Paints paints(grid);
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 1; i < way.size(); ++i) {
            awaitCompositor();
            awaitServer();
            const auto start = Clock::now();
            if (compositing.isActive()) {
                // The colours change step by step; this is one of them.
                grid.repaint(QRegion(rectOf(hints, way[i - 1])) + rectOf(hints, way[i]));
            } else {
                const int before = paints.count();
                grid.setActive(way[i]);
                while (paints.count() == before) {
                    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
                }
            }
            print("zone-painted", start);
        }
    }

    OverlayView preview(compositing);
    preview.setAction(leftHalf, QStringLiteral("⌃⌥←"));
    preview.setScreenFrame({8, 8, whole.width / 2 - 12, whole.height - 16});
    timeShow("preview-first", preview, [&] { preview.orderFront(); });
    for (int i = 0; i < shows; ++i) {
        // Between a half and a third, which differ in size.
        const double width = whole.width / (i % 2 == 0 ? 3 : 2) - 12;
        awaitCompositor();
        awaitServer();
        const auto start = Clock::now();
        preview.setScreenFrame({8, 8, width, whole.height - 16});
        awaitServer();
        print("preview-moved", start);
    }
    return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    return run();
}
