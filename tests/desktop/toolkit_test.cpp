// The toolkit in the process of the test, on a real server: what it makes of windows that are gone
// before it has read all of what they were told.
#include "platform/qt/toolkit.h"

#include "desktop_fixture.h"
#include "harness/pointer.h"
#include "platform/qt/qt_own_application.h"
#include "platform/qt/qt_run_loop.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>
#include <cstdlib>
#include <memory>

#include <malloc.h>

namespace tessellon::desktop {
namespace {

class ToolkitTest : public DesktopTest {
  protected:
    /// A window that no window manager knows, seen by everybody.
    static std::unique_ptr<QWidget> show() {
        auto panel = std::make_unique<QWidget>(
            nullptr, Qt::Window | Qt::X11BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus);
        panel->setGeometry(600, 300, 400, 300);
        panel->show();
        EXPECT_TRUE(waitUntil([&] {
            QApplication::processEvents();
            return panel->windowHandle()->isExposed();
        }));
        return panel;
    }
};

TEST_F(ToolkitTest, aWindowMayBeDeletedWithTheButtonHeldOnIt) {
    mallopt(M_PERTURB, 165);  // what is given back does not keep what was in it
    useDesktop();
    programMayBeGone();  // this process stands in for it
    setenv("DISPLAY", desktop().display().c_str(), 1);
    prepareToolkit([] {});
    int count = 1;
    char name[] = "toolkit";
    char* arguments[] = {name, nullptr};
    const QApplication toolkit(count, arguments);
    QtRunLoop loop;
    const QtOwnApplication ownApplication(loop);

    auto panel = show();
    auto& pointer = desktop().pointer();
    pointer.moveTo({700, 400});
    pointer.press();
    pointer.moveTo({720, 410});
    panel->hide();
    const auto other = show();  // by then the toolkit has read all that the first one was told
    panel.reset();
    other->hide();
    pointer.release();
}

}  // namespace
}  // namespace tessellon::desktop
