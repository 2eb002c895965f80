#include "stress/records.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

namespace tessellon::stress {
namespace {

using Json = nlohmann::json;
using desktop::Frame;

// How many records the program keeps; beyond it the oldest go.
constexpr std::size_t recordLimit = 200;

// What the program does is in the file a moment later: at the end of the next action at the latest.
constexpr int actionsUntilWritten = 2;

std::optional<Frame> decodeFrame(const Json& value) {
    const bool isPair = value.is_array() && value.size() == 2;
    if (!isPair) {
        return std::nullopt;
    }
    for (const Json& half : value) {
        if (!half.is_array() || half.size() != 2 || !half[0].is_number() || !half[1].is_number()) {
            return std::nullopt;
        }
    }
    const auto whole = [](const Json& number) {
        return static_cast<int>(std::lround(number.get<double>()));
    };
    return Frame{whole(value[0][0]), whole(value[0][1]), whole(value[1][0]), whole(value[1][1])};
}

// Programs put a file's folder before it, a star for changes, and their own name behind it.
std::string clientIn(const std::string& title) {
    const auto begin = title.find("client");
    if (begin == std::string::npos) {
        return title;
    }
    const auto end =
        title.find_first_not_of("0123456789", begin + std::string_view("client").size());
    return title.substr(begin, end == std::string::npos ? end : end - begin);
}

std::optional<Record> decodeRecord(const Json& value) {
    constexpr std::size_t members = 5;
    constexpr std::size_t idLength = 36;
    if (!value.is_object() || value.size() != members) {
        return std::nullopt;
    }
    for (const char* text : {"id", "bundleID", "title"}) {
        if (!value.contains(text) || !value[text].is_string()) {
            return std::nullopt;
        }
    }
    const auto original =
        value.contains("original") ? decodeFrame(value["original"]) : std::nullopt;
    const auto snapped = value.contains("snapped") ? decodeFrame(value["snapped"]) : std::nullopt;
    Record record{value["id"], value["bundleID"], clientIn(value["title"].get<std::string>()),
                  original.value_or(Frame{}), snapped.value_or(Frame{})};
    return original && snapped && record.id.size() == idLength ? std::optional(record)
                                                               : std::nullopt;
}

}  // namespace

std::optional<std::vector<Record>> decodeRecords(std::string_view json) {
    const Json document = Json::parse(json, nullptr, false);
    if (!document.is_array()) {
        return std::nullopt;
    }
    std::vector<Record> records;
    for (const Json& element : document) {
        auto record = decodeRecord(element);
        if (!record) {
            return std::nullopt;
        }
        records.push_back(*std::move(record));
    }
    return records;
}

void Ledger::mayForget(const std::string& client) {
    mayGo_[client] = actionsUntilWritten;
}

void Ledger::programStarted() {
    started_ = actionsUntilWritten;
}

std::optional<std::string> Ledger::check(
    const std::vector<Record>& records,
    const std::function<bool(const std::string&)>& clientIsAlive) {
    if (records.size() > recordLimit) {
        return std::to_string(records.size()) + " records are kept";
    }
    std::map<std::string, Record> now;
    for (const Record& record : records) {
        if (!now.emplace(record.id, record).second) {
            return "two records have the id " + record.id;
        }
    }
    for (const auto& [id, before] : known_) {
        const auto found = now.find(id);
        if (found != now.end() && found->second.original != before.original) {
            return "the record of '" + before.client + "' (" + id + ") has another origin";
        }
        if (mayGo_.contains(before.client)) {
            continue;
        }
        const bool isLost = found == now.end();
        if (isLost && started_ > 0 && before.bundleID.empty()) {
            continue;
        }
        if (isLost && (records.size() == recordLimit || !clientIsAlive(before.client))) {
            continue;
        }
        if (isLost) {
            std::string others;
            for (const Record& record : records) {
                others += record.client == before.client ? " " + record.id : "";
            }
            return "the record of '" + before.client + "' (" + id + ", of '" + before.bundleID +
                   "') is lost; " + std::to_string(records.size()) + " are left of " +
                   std::to_string(known_.size()) +
                   ", its own:" + (others.empty() ? " none" : others);
        }
    }
    known_ = std::move(now);
    return std::nullopt;
}

void Ledger::nextAction() {
    started_ = std::max(0, started_ - 1);
    for (auto entry = mayGo_.begin(); entry != mayGo_.end();) {
        entry = --entry->second <= 0 ? mayGo_.erase(entry) : std::next(entry);
    }
}

}  // namespace tessellon::stress
