// A network that answers when it is told to.
#pragma once

#include "platform/feed_source.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessellon {

class MemoryFeedSource final : public FeedSource {
  public:
    Token fetch(const std::string& address, std::function<void(FeedResult)> callback) override {
        addresses_.push_back(address);
        pending_ = std::make_shared<Callback>(std::move(callback));
        return Token([this, weak = std::weak_ptr<Callback>(pending_)] {
            if (weak.lock() == pending_) {
                pending_.reset();
            }
        });
    }

    /// Ends the fetch that is under way, if there is one.
    void answer(const FeedResult& result) {
        if (const auto callback = std::exchange(pending_, nullptr)) {
            (*callback)(result);
        }
    }
    void answer(std::string_view document) {
        answer(FeedResult(std::vector<std::uint8_t>(document.begin(), document.end())));
    }
    void fail(FeedError error, int httpStatus = 0) {
        answer(FeedResult(FeedFailure{error, httpStatus}));
    }

    /// Whether somebody waits for an answer.
    bool isFetching() const { return pending_ != nullptr; }
    /// What was asked for, oldest first.
    const std::vector<std::string>& addresses() const { return addresses_; }

  private:
    using Callback = std::function<void(FeedResult)>;
    std::shared_ptr<Callback> pending_;
    std::vector<std::string> addresses_;
};

}  // namespace tessellon
