// The matrix: what the program promises, tried under every window manager with windows of every
// kind. A test is run once for each window manager and fills the cells of one row or a few:
//
//     using LeftAloneTest = MatrixTest;
//     TEST_P(LeftAloneTest, dialogs) {
//         begin({Row::leftAlone});
//         ...
//         notePlace(Row::leftAlone, Subject::dialog, window, frame);
//     }
//     INSTANTIATE_TEST_SUITE_P(On, LeftAloneTest, everyWindowManager(), windowManagerName);
//
// Rows and the windows that they are tried with are listed in rows.h and rows.cpp, tests are in the
// files named *_behaviours.cpp. What is noted is `exact`, or what came instead in a word or two;
// the test fails unless that is what known_differences.cpp has for the cell. When all have run, the
// table in docs/desktops.md is written again from what was noted and compared (table_main.cpp); to
// take a new one, run
//
//     build/release/tests/matrix/matrix_table accept
#pragma once

#include "desktop_fixture.h"
#include "known_differences.h"
#include "outcomes.h"

#include <chrono>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessellon::desktop {

class MatrixTest : public WindowManagerTest {
  protected:
    /// Starts the desktop of a test that fills the cells of these rows.
    void begin(std::vector<Row> rows, Monitors monitors = Monitors::one);

    /// Fails unless every cell was filled as it should be, and writes down the outcomes if so.
    void TearDown() override;

    /// What the cell has to come to.
    std::string_view expected(Row row, Subject subject) const;

    /// What came of one check; the checks of a cell are `exact` together, or make its difference.
    void note(Row row, Subject subject, std::string_view outcome);

    /// Waits for the frame that the cell has to come to when a window is sent to `wanted`, and
    /// notes it. The window is at `before` when nothing has happened to it. False for an outcome
    /// that the cell may not have.
    bool notePlace(Row row, Subject subject, xcb_window_t window, const Frame& wanted,
                   const Frame& before);
    /// Waits until all is quiet and notes whether the window is still at `frame`.
    void noteUnmoved(Row row, Subject subject, xcb_window_t window, const Frame& frame);

    /// Presses the combination for the window and notes where that brings it, as notePlace does.
    bool sendAndNote(Row row, Subject subject, xcb_window_t window, Held held, Key key,
                     const Frame& wanted);

    /// Bring a window into that state. False, and noted for the cell, where there is none.
    bool minimize(Row row, xcb_window_t window);
    bool maximize(Row row, xcb_window_t window);

    /// Starts a program of that kind and brings its window to the frame, or the smallest one that
    /// it accepts there. Full-screen windows and dialogs have frames of their own.
    xcb_window_t startSubject(Subject subject, const Frame& frame);

    /// The frame, made as large as the window's program wants it at least.
    Frame atLeastSmallest(xcb_window_t window, Frame frame);

  private:
    std::chrono::milliseconds patienceFor(Row row, Subject subject) const;
    Frame seenWhole(const Frame& frame);
    std::string placeOutcome(xcb_window_t window, const Frame& wanted, const Frame& before);

    using CellKey = std::pair<Row, Subject>;
    std::vector<Row> rows_;
    std::map<CellKey, std::set<std::string, std::less<>>> noted_;
};

/// The window managers of the matrix.
inline auto everyWindowManager() {
    std::vector<std::string> names;
    for (const WindowManager& known : windowManagers()) {
        names.emplace_back(known.name);
    }
    return ::testing::ValuesIn(names);
}

}  // namespace tessellon::desktop
