// What has to be true after every action of a stress run.
#pragma once

#include "stress/stage.h"

namespace tessellon::stress {

/// The program is alive and silent, nothing of it is left on the screen, pointer and keyboard are
/// free, and the settings file is whole and has every restore record that it should have. Throws a
/// Failure.
void checkEverything(Stage& stage);

/// The records in the settings file. Throws a Failure unless the file and they are whole.
std::vector<Record> readRecords(Stage& stage);

/// Waits for a state; throws a Failure when it does not come.
template <typename Predicate>
void requireSoon(Predicate&& predicate, const std::string& expected, const std::string& found) {
    require(desktop::waitUntil(predicate), expected, found);
}

}  // namespace tessellon::stress
