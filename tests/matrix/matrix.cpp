#include "matrix.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace tessellon::desktop {
namespace {

Outcomes outcomes() {
    return Outcomes(MATRIX_OUTCOMES);
}

std::vector<std::string> commandOf(Subject subject) {
    switch (subject) {
        case Subject::wholeCells:
            return {"xterm"};
        case Subject::qt:
            return {"/usr/lib/qt6/bin/linguist"};
        case Subject::ownDecorations:
            return {"gtk3-demo"};
        case Subject::minimumSize:
            return {"gtk3-widget-factory"};
        case Subject::fullScreen:
            return {"xterm", "-fullscreen"};
        case Subject::dialog:
            return {"zenity", "--info", "--width=500", "--height=400", "--text=Dialog"};
        case Subject::maximized:
            return {"xclock", "-xrm", "XClock.input: True", "-title", "maximized"};
        default:
            // Clocks do not take the keyboard unless they are told to.
            return {"xclock", "-xrm", "XClock.input: True"};
    }
}

/// Whether windows may be smaller there than their programs say, unless those take the size back.
bool leavesSizesToPrograms(std::string_view windowManager) {
    return windowManager == "fluxbox" || windowManager == "icewm" || windowManager == "i3";
}

}  // namespace

void MatrixTest::begin(std::vector<Row> rows, Monitors monitors) {
    rows_ = std::move(rows);
    for (const Row row : rows_) {
        for (const Subject subject : textOf(row).subjects) {
            outcomes().forget({GetParam(), row, subject});
        }
    }
    useDesktop(monitors);
}

void MatrixTest::TearDown() {
    WindowManagerTest::TearDown();
    if (IsSkipped()) {
        return;
    }
    std::map<CellKey, std::string> outcomesOfCells;
    for (const Row row : rows_) {
        for (const Subject subject : textOf(row).subjects) {
            std::string all;
            for (const std::string& outcome : noted_[{row, subject}]) {
                // What is exact needs no word beside what is not.
                if (outcome != exact) {
                    all += (all.empty() ? "" : ", ") + outcome;
                }
            }
            if (all.empty() && !noted_[{row, subject}].empty()) {
                all = exact;
            }
            const auto* known = knownDifference(GetParam(), row, subject);
            const bool mayBeExact = known != nullptr && known->occurs == Occurs::sometimes;
            EXPECT_TRUE(all == expected(row, subject) || (mayBeExact && all == exact))
                << all << " instead of " << expected(row, subject) << " in " << GetParam() << ", "
                << textOf(row).id << ", " << textOf(subject).id;
            outcomesOfCells[{row, subject}] = all;
        }
    }
    if (HasFailure()) {
        return;
    }
    for (const auto& [key, outcome] : outcomesOfCells) {
        outcomes().write({GetParam(), key.first, key.second}, outcome);
    }
}

std::string_view MatrixTest::expected(Row row, Subject subject) const {
    const auto* difference = knownDifference(GetParam(), row, subject);
    return difference != nullptr ? difference->outcome : exact;
}

void MatrixTest::note(Row row, Subject subject, std::string_view outcome) {
    noted_[{row, subject}].emplace(outcome);
}

/// The same size where nothing of it hangs out of the screen, on the right or below.
Frame MatrixTest::seenWhole(const Frame& frame) {
    return {std::min(frame.x, desktop().x().width() - frame.width),
            std::min(frame.y, desktop().x().height() - frame.height), frame.width, frame.height};
}

std::string MatrixTest::placeOutcome(xcb_window_t window, const Frame& wanted,
                                     const Frame& before) {
    const auto frame = desktop().windows().visibleFrame(window);
    const Frame large = atLeastSmallest(window, wanted);
    if (frame == large || (frame == wanted && leavesSizesToPrograms(GetParam()))) {
        return std::string(exact);
    }
    if (desktop().windows().matchesWithinIncrements(window, wanted)) {
        return std::string(toTheCell);
    }
    const bool isTooLarge = large != wanted;
    // A program that takes its size back takes one that it had before.
    const Frame smallest = atLeastSmallest(window, {});
    const bool isTakenBack = isTooLarge && leavesSizesToPrograms(GetParam()) && frame &&
                             frame->width >= smallest.width && frame->height >= smallest.height &&
                             frame == seenWhole({wanted.x, wanted.y, frame->width, frame->height});
    if (frame == seenWhole(large) || isTakenBack) {
        return std::string(keptOnScreen);
    }
    if (frame == before) {
        return std::string(stays);
    }
    std::ostringstream text;
    text << frame.value_or(Frame{}) << " instead of " << wanted;
    return text.str();
}

bool MatrixTest::notePlace(Row row, Subject subject, xcb_window_t window, const Frame& wanted,
                           const Frame& before) {
    const auto acceptable = expected(row, subject);
    if (acceptable == stays) {
        program().waitUntilIdle();
    }
    std::string outcome;
    const bool isAcceptable = waitUntil([&] {
        outcome = placeOutcome(window, wanted, before);
        const Frame large = atLeastSmallest(window, wanted);
        const bool isPushedBack = acceptable == keptOnScreen && seenWhole(large) != large &&
                                  !leavesSizesToPrograms(GetParam());
        return outcome == acceptable || (outcome == exact && !isPushedBack);
    });
    note(row, subject, outcome);
    return isAcceptable;
}

void MatrixTest::noteUnmoved(Row row, Subject subject, xcb_window_t window, const Frame& frame) {
    program().waitUntilIdle();
    notePlace(row, subject, window, frame, {});
}

bool MatrixTest::sendAndNote(Row row, Subject subject, xcb_window_t window, Held held, Key key,
                             const Frame& wanted) {
    const Frame before = frameOf(window);
    desktop().windows().activate(window);
    desktop().keyboard().combination(held, key);
    return notePlace(row, subject, window, wanted, before);
}

std::chrono::milliseconds MatrixTest::patienceFor(Row row, Subject subject) const {
    return expected(row, subject) == none ? std::chrono::milliseconds{500} : patience;
}

bool MatrixTest::minimize(Row row, xcb_window_t window) {
    if (desktop().windows().minimizes(window, patienceFor(row, Subject::minimized))) {
        return true;
    }
    note(row, Subject::minimized, none);
    return false;
}

bool MatrixTest::maximize(Row row, xcb_window_t window) {
    if (desktop().windows().maximizes(window, patienceFor(row, Subject::maximized))) {
        return true;
    }
    note(row, Subject::maximized, none);
    return false;
}

xcb_window_t MatrixTest::startSubject(Subject subject, const Frame& frame) {
    const xcb_window_t window = desktop().startWithWindow(commandOf(subject));
    if (subject != Subject::fullScreen && subject != Subject::dialog) {
        desktop().windows().place(window, atLeastSmallest(window, frame));
    }
    return window;
}

Frame MatrixTest::atLeastSmallest(xcb_window_t window, Frame frame) {
    const Frame smallest = desktop().windows().smallestSize(window);
    frame.width = std::max(frame.width, smallest.width);
    frame.height = std::max(frame.height, smallest.height);
    return frame;
}

}  // namespace tessellon::desktop
