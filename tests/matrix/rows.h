// The rows of the matrix in the words of its reader, and the windows that each row is tried with.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tessellon::desktop {

/// A behaviour of the program.
enum class Row : std::uint8_t {
    places,
    cycle,
    restore,
    restoreAfterRestart,
    displayMoves,
    tile,
    arrangement,
    leftAlone,
    ignored,
    small,
    dragCommandFirst,
    dragCommandLater,
    dragOut,
    launcher,
    panel,
    trayIcon,
    locks,
};

/// What a behaviour is tried with.
enum class Subject : std::uint8_t {
    plain,
    wholeCells,
    qt,
    ownDecorations,
    minimumSize,
    maximized,
    fullScreen,
    dialog,
    minimized,
    otherDesktop,
};

struct RowText {
    Row row;
    /// Part of the names of files; never shown.
    std::string_view id;
    /// What the reader sees.
    std::string_view title;
    std::vector<Subject> subjects;
};

/// In the order of the table.
const std::vector<RowText>& rows();
const RowText& textOf(Row row);

struct SubjectText {
    Subject subject;
    std::string_view id;
    std::string_view title;
};

const std::vector<SubjectText>& subjects();
const SubjectText& textOf(Subject subject);

}  // namespace tessellon::desktop
