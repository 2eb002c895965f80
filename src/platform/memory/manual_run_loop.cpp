#include "platform/memory/manual_run_loop.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <poll.h>

namespace tessellon {

Token ManualRunLoop::after(Seconds delay, std::function<void()> callback) {
    return addTimer({now_ + std::chrono::round<Time>(std::max(delay, Seconds::zero())),
                     std::nullopt,
                     std::make_shared<const std::function<void()>>(std::move(callback))});
}

Token ManualRunLoop::every(Seconds period, std::function<void()> callback) {
    // A period of nothing would keep time from passing.
    const auto step = std::max(std::chrono::round<Time>(period), Time{1});
    return addTimer(
        {now_ + step, step, std::make_shared<const std::function<void()>>(std::move(callback))});
}

Token ManualRunLoop::watchReadable(int descriptor, std::function<void()> callback) {
    const auto id = state_->nextId++;
    state_->watches.emplace(
        id, Watch{descriptor, std::make_shared<const std::function<void()>>(std::move(callback))});
    return Token([weak = std::weak_ptr<State>(state_), id] {
        if (const auto state = weak.lock()) {
            state->watches.erase(id);
        }
    });
}

Token ManualRunLoop::beforeBlocking(std::function<void()> callback) {
    return beforeBlocking_.subscribe(std::move(callback));
}

void ManualRunLoop::runTurn() {
    runReadable();
    runTimers();
    beforeBlocking_.emit();
}

void ManualRunLoop::advance(Seconds span) {
    const auto end = now_ + std::chrono::round<Time>(span);
    for (;;) {
        const auto next = std::min_element(
            state_->timers.begin(), state_->timers.end(),
            [](const auto& a, const auto& b) { return a.second.due < b.second.due; });
        if (next == state_->timers.end() || next->second.due > end) {
            break;
        }
        now_ = std::max(now_, next->second.due);
        runTurn();
    }
    now_ = end;
    runTurn();
}

Token ManualRunLoop::addTimer(Timer timer) {
    const auto id = state_->nextId++;
    state_->timers.emplace(id, std::move(timer));
    return Token([weak = std::weak_ptr<State>(state_), id] {
        if (const auto state = weak.lock()) {
            state->timers.erase(id);
        }
    });
}

void ManualRunLoop::runReadable() {
    std::vector<pollfd> polled;
    std::vector<std::uint64_t> ids;
    for (const auto& [id, watch] : state_->watches) {
        polled.push_back({watch.descriptor, POLLIN, 0});
        ids.push_back(id);
    }
    if (polled.empty() || poll(polled.data(), polled.size(), 0) <= 0) {
        return;
    }
    for (std::size_t i = 0; i < polled.size(); ++i) {
        const auto found = state_->watches.find(ids[i]);
        if (polled[i].revents != 0 && found != state_->watches.end()) {
            const auto callback = found->second.callback;
            (*callback)();
        }
    }
}

void ManualRunLoop::runTimers() {
    std::vector<std::pair<Time, std::uint64_t>> due;
    for (const auto& [id, timer] : state_->timers) {
        if (timer.due <= now_) {
            due.emplace_back(timer.due, id);
        }
    }
    std::sort(due.begin(), due.end());
    for (const auto& [time, id] : due) {
        const auto found = state_->timers.find(id);
        if (found == state_->timers.end()) {
            continue;
        }
        const auto callback = found->second.callback;
        if (const auto period = found->second.period) {
            found->second.due += *period;
        } else {
            state_->timers.erase(found);
        }
        (*callback)();
    }
}

}  // namespace tessellon
