#include "processor_time.h"

#include "process_usage.h"
#include "report.h"

#include <algorithm>

namespace tessellon::benchmarks {
namespace {

double sum(const std::vector<pid_t>& processes) {
    double milliseconds = 0;
    for (const pid_t process : processes) {
        milliseconds += usageOf(process).processorTime.count();
    }
    return milliseconds;
}

}  // namespace

void ProcessorTime::add(std::string name, std::vector<pid_t> processes) {
    members_.push_back({std::move(name), std::move(processes)});
}

void ProcessorTime::start() {
    for (Member& member : members_) {
        member.startedAt = sum(member.processes);
    }
}

void ProcessorTime::stop() {
    for (Member& member : members_) {
        member.milliseconds += sum(member.processes) - member.startedAt;
    }
    ++spans_;
}

std::vector<std::pair<std::string, double>> ProcessorTime::perSpan() const {
    std::vector<std::pair<std::string, double>> result;
    for (const Member& member : members_) {
        result.emplace_back(member.name, member.milliseconds / std::max(spans_, 1));
    }
    return result;
}

std::string ProcessorTime::described() const {
    std::string result;
    for (const auto& [name, milliseconds] : perSpan()) {
        result += (result.empty() ? "" : ", ") + name + " " + number(milliseconds) + " ms";
    }
    return result;
}

}  // namespace tessellon::benchmarks
