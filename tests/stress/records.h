// The restore records as they are in the settings file, read by the stress test's own code, and
// what is known of them: none that belongs to a living window may go unless something was done that
// drops it.
#pragma once

#include "harness/frame.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon::stress {

struct Record {
    std::string id;
    std::string bundleID;
    /// What clients have in their titles, whatever else comes and goes there.
    std::string client;
    desktop::Frame original;
    desktop::Frame snapped;
};

/// Nothing unless every record is whole and nothing else is there.
std::optional<std::vector<Record>> decodeRecords(std::string_view json);

class Ledger {
  public:
    /// The records of a client may go from now on until two actions later: the user asks for it,
    /// and the file follows after that.
    void mayForget(const std::string& client);
    /// The program was started: it drops the records of programs without a name, which nobody could
    /// recognise.
    void programStarted();

    /// Compares with what is in the file now. Describes what was lost, if anything was.
    std::optional<std::string> check(const std::vector<Record>& records,
                                     const std::function<bool(const std::string&)>& clientIsAlive);

    /// Called once after each action.
    void nextAction();

  private:
    std::map<std::string, Record> known_;  // by id
    std::map<std::string, int> mayGo_;     // by client: for so many actions more
    int started_ = 0;                      // for so many actions more
};

}  // namespace tessellon::stress
