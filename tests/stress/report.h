// What a stress run tells: a line for each action in the log, figures, and the story of a failure.
#pragma once

#include "stress/failure.h"
#include "stress/options.h"
#include "stress/resources.h"
#include "stress/schedule.h"

#include <chrono>
#include <deque>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace tessellon::stress {

class Report {
  public:
    explicit Report(const Options& options);

    void begin(const Action& action);
    /// Adds to the line of the action: what it chose, what came of it.
    void note(const std::string& text);
    /// Counts something for the table at the end.
    void count(const std::string& what) { ++counts_[what]; }
    std::size_t counted(const std::string& what) const {
        const auto found = counts_.find(what);
        return found != counts_.end() ? found->second : 0;
    }

    void add(const Growth& growth) { lives_.push_back(growth); }
    const std::vector<Growth>& lives() const { return lives_; }

    void printFailure(const Failure& failure, const std::string& picture);
    void printSuccess();

  private:
    void print(const std::string& text);
    void endLine();
    void printFigures();

    Options options_;
    std::ofstream log_;
    std::chrono::steady_clock::time_point start_;
    std::deque<std::string> lastLines_;
    std::string line_;
    std::size_t actions_ = 0;
    std::map<std::string, std::size_t> counts_;
    std::vector<Growth> lives_;
};

}  // namespace tessellon::stress
