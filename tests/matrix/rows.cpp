#include "rows.h"

#include <algorithm>
#include <stdexcept>

namespace tessellon::desktop {
namespace {

template <typename Texts, typename Value, typename Member>
const auto& find(const Texts& texts, Value value, Member member) {
    const auto found = std::find_if(texts.begin(), texts.end(),
                                    [&](const auto& text) { return text.*member == value; });
    if (found == texts.end()) {
        throw std::out_of_range("a part of the matrix has no text");
    }
    return *found;
}

}  // namespace

const std::vector<RowText>& rows() {
    using enum Subject;
    static const std::vector<RowText> table{
        {Row::places,
         "places",
         "A shortcut puts the window into its place, each of them",
         {plain, wholeCells, qt, ownDecorations, minimumSize, maximized}},
        {Row::cycle,
         "cycle",
         "The same shortcut again steps through the sizes",
         {plain, wholeCells, qt, ownDecorations}},
        {Row::restore,
         "restore",
         "Restore gives the frame from before the first snap back",
         {plain, wholeCells, qt, ownDecorations, minimumSize, maximized}},
        {Row::restoreAfterRestart,
         "restore-after-restart",
         "Restore works also after Tessellon was started anew",
         {plain, wholeCells, qt, ownDecorations, maximized}},
        {Row::displayMoves,
         "display-moves",
         "Next and previous display keep the window's place",
         {plain, wholeCells, qt, ownDecorations}},
        {Row::tile,
         "tile",
         "Tiling fills a display with its windows, and leaves those alone that are not seen there",
         {plain, qt, ownDecorations, fullScreen, dialog, minimized, otherDesktop}},
        {Row::arrangement,
         "arrangement",
         "A saved arrangement brings the windows back to where they were",
         {plain, wholeCells, qt, ownDecorations, minimized}},
        {Row::leftAlone,
         "left-alone",
         "Full-screen windows and dialogs stay as they are",
         {fullScreen, dialog}},
        {Row::ignored,
         "ignored",
         "Applications on the list of ignored ones stay as they are",
         {plain, qt, ownDecorations}},
        {Row::small,
         "small",
         "Windows below 400 × 300 stay as they are, unless small windows are wanted",
         {plain}},
        {Row::dragCommandFirst,
         "drag-command-first",
         "A window that is dragged with Super down goes to the zone where it is dropped",
         {plain, wholeCells, qt, ownDecorations}},
        {Row::dragCommandLater,
         "drag-command-later",
         "A window goes to the zone where it is dropped also when Super goes down during the drag",
         {plain, wholeCells, qt, ownDecorations}},
        {Row::dragOut,
         "drag-out",
         "A snapped window that is dragged away gets its old size back",
         {plain, wholeCells, qt, ownDecorations}},
        {Row::launcher,
         "launcher",
         "The launcher opens, acts on the window in front, and hands the keyboard back to it",
         {plain, wholeCells}},
        {Row::panel,
         "panel",
         "The panel opens when Tessellon is started a second time, acts on the window in front, "
         "and "
         "hands the keyboard back to it",
         {plain, wholeCells}},
        {Row::trayIcon, "tray-icon", "The icon in the tray opens the panel", {plain}},
        {Row::locks, "locks", "Shortcuts work with Caps Lock and Num Lock on", {plain}},
    };
    return table;
}

const RowText& textOf(Row row) {
    return find(rows(), row, &RowText::row);
}

const std::vector<SubjectText>& subjects() {
    static const std::vector<SubjectText> table{
        {Subject::plain, "plain", "plain X window"},
        {Subject::wholeCells, "whole-cells", "xterm"},
        {Subject::qt, "qt", "Qt"},
        {Subject::ownDecorations, "own-decorations", "GTK with its own decorations"},
        {Subject::minimumSize, "minimum-size", "large minimum size"},
        {Subject::maximized, "maximized", "maximized window"},
        {Subject::fullScreen, "full-screen", "full-screen window"},
        {Subject::dialog, "dialog", "dialog"},
        {Subject::minimized, "minimized", "minimized window"},
        {Subject::otherDesktop, "other-desktop", "window on another workspace"},
    };
    return table;
}

const SubjectText& textOf(Subject subject) {
    return find(subjects(), subject, &SubjectText::subject);
}

}  // namespace tessellon::desktop
