// Windows that are left alone: by their kind, by the user's list, by their size.
#include "matrix.h"

#include <map>
#include <string>
#include <vector>

namespace tessellon::desktop {
namespace {

constexpr Frame original{300, 200, 801, 602};

class LeftAloneTest : public MatrixTest {
  protected:
    /// It is of the kind that it should be, and large enough.
    void expectOnlyTheKindSpeaksAgainstIt(Subject subject, xcb_window_t window) {
        auto& x = desktop().x();
        if (subject == Subject::fullScreen) {
            EXPECT_TRUE(waitUntil(
                [&] { return desktop().windows().hasState(window, "_NET_WM_STATE_FULLSCREEN"); }));
        } else {
            EXPECT_EQ(x.values(window, "_NET_WM_WINDOW_TYPE"),
                      std::vector{x.atom("_NET_WM_WINDOW_TYPE_DIALOG")});
        }
        EXPECT_TRUE(waitUntil([&] {
            const Frame frame = frameOf(window);
            return frame.width >= 400 && frame.height >= 300;
        })) << frameOf(window);
    }
};

TEST_P(LeftAloneTest, byTheirKind) {
    begin({Row::leftAlone});
    program().start();
    const xcb_window_t plain = startSubject(Subject::plain, original);
    for (const Subject subject : textOf(Row::leftAlone).subjects) {
        const xcb_window_t window = startSubject(subject, original);
        expectOnlyTheKindSpeaksAgainstIt(subject, window);
        desktop().windows().activate(window);
        program().waitUntilIdle();
        const Frame before = frameOf(window);
        desktop().keyboard().combination(Held::controlAlt, Key::left);
        noteUnmoved(Row::leftAlone, subject, window, before);
        desktop().windows().close(window);
        EXPECT_TRUE(waitUntil([&] { return !desktop().x().exists(window); }));
        // The same key for a window of an ordinary kind.
        EXPECT_EQ(snap(plain, Held::controlAlt, Key::left, leftHalf), leftHalf);
        EXPECT_EQ(snap(plain, Held::controlAlt, Key::backspace, original), original);
    }
}

TEST_P(LeftAloneTest, byTheListOfTheUser) {
    begin({Row::ignored});
    program().change({{"ignored", std::string("XClock\nLinguist\ngtk3-demo")}});
    program().start();
    std::map<Subject, xcb_window_t> windows;
    for (const Subject subject : textOf(Row::ignored).subjects) {
        windows[subject] = startSubject(subject, original);
        desktop().windows().activate(windows[subject]);
        const Frame before = frameOf(windows[subject]);
        desktop().keyboard().combination(Held::controlAlt, Key::left);
        noteUnmoved(Row::ignored, subject, windows[subject], before);
    }
    program().change({{"ignored", std::string()}});
    program().waitUntilIdle();
    for (const auto& [subject, window] : windows) {
        sendAndNote(Row::ignored, subject, window, Held::controlAlt, Key::left, leftHalf);
    }
}

TEST_P(LeftAloneTest, byTheirSize) {
    begin({Row::small});
    program().start();
    const Frame small{300, 200, 399, 300};
    const Frame justLargeEnough{300, 200, 400, 300};
    const xcb_window_t window = startSubject(Subject::plain, small);
    desktop().windows().activate(window);
    desktop().keyboard().combination(Held::controlAlt, Key::left);
    noteUnmoved(Row::small, Subject::plain, window, small);
    desktop().windows().place(window, justLargeEnough);
    sendAndNote(Row::small, Subject::plain, window, Held::controlAlt, Key::left, leftHalf);
    desktop().windows().place(window, small);
    program().change({{"ignoreSmall", false}});
    program().waitUntilIdle();
    sendAndNote(Row::small, Subject::plain, window, Held::controlAlt, Key::u, topLeft);
}

INSTANTIATE_TEST_SUITE_P(On, LeftAloneTest, everyWindowManager(), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
