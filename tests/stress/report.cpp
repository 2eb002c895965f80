#include "stress/report.h"

#include <iomanip>
#include <iostream>
#include <sstream>
#include <utility>

namespace tessellon::stress {

Report::Report(const Options& options)
    : options_(options), start_(std::chrono::steady_clock::now()) {
    if (options.log) {
        log_.open(*options.log);
    }
}

void Report::print(const std::string& text) {
    std::cout << text << std::endl;
    if (log_.is_open()) {
        log_ << text << std::endl;
    }
}

void Report::endLine() {
    constexpr std::size_t told = 20;
    if (line_.empty()) {
        return;
    }
    if (log_.is_open()) {
        log_ << line_ << std::endl;
    }
    lastLines_.push_back(std::exchange(line_, {}));
    if (lastLines_.size() > told) {
        lastLines_.pop_front();
    }
}

void Report::begin(const Action& action) {
    endLine();
    actions_ = action.number;
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start_;
    std::ostringstream line;
    line << std::setw(5) << action.number << std::fixed << std::setprecision(1) << std::setw(8)
         << passed.count() << " s  " << nameOf(action.kind);
    line_ = line.str();
    count("action " + std::string(nameOf(action.kind)));
}

void Report::note(const std::string& text) {
    line_ += ", " + text;
}

void Report::printFigures() {
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start_;
    std::ostringstream text;
    text << std::fixed << std::setprecision(1) << actions_ << " actions in " << passed.count()
         << " s, " << static_cast<double>(actions_) / passed.count() << " a second\n";
    for (const auto& [what, times] : counts_) {
        text << "  " << std::setw(6) << times << "  " << what << '\n';
    }
    for (const Growth& life : lives_) {
        const auto lines = life.judge();
        if (lines.empty()) {
            continue;
        }
        text << "the program that was started at action " << life.bornAt() << ", "
             << life.samples().size() << " readings up to action " << life.samples().back().action
             << "\n  " << std::left << std::setw(24) << "what" << std::right << std::setw(12)
             << "warmed up" << std::setw(12) << "at the end" << std::setw(12) << "allowed" << '\n';
        for (const auto& line : lines) {
            text << "  " << std::left << std::setw(24) << line.name << std::right << std::setw(12)
                 << line.early << std::setw(12) << line.late << std::setw(12)
                 << "+" + std::to_string(line.allowed) << (line.grows() ? "  GROWS" : "") << '\n';
        }
    }
    print(text.str());
}

void Report::printFailure(const Failure& failure, const std::string& picture) {
    endLine();
    std::ostringstream text;
    text << "FAILED: seed " << options_.seed << ", action " << actions_ << " of "
         << options_.actions;
    if (options_.windowManager) {
        text << ", window manager " << *options_.windowManager;
    }
    text << "\n  expected: " << failure.expected << "\n  found:    " << failure.found
         << "\n  picture:  " << picture << "\nThe last actions:\n";
    for (const std::string& line : lastLines_) {
        text << line << '\n';
    }
    print(text.str());
    printFigures();
}

void Report::printSuccess() {
    endLine();
    print("PASSED: seed " + std::to_string(options_.seed));
    printFigures();
}

}  // namespace tessellon::stress
