// Callbacks that come and go, also while they are called.
#include "base/signal.h"

#include "base/handler_chain.h"
#include "base/notification_center.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

TEST(Signal, CallsInOrderUntilTheTokenGoes) {
    const Signal<int> signal;
    std::vector<std::string> calls;
    auto first = signal.subscribe(
        [&](int value) { calls.push_back(std::string("a").append(std::to_string(value))); });
    {
        const auto second = signal.subscribe(
            [&](int value) { calls.push_back(std::string("b").append(std::to_string(value))); });
        signal.emit(1);
    }
    signal.emit(2);
    first.reset();
    signal.emit(3);
    EXPECT_EQ(calls, (std::vector<std::string>{"a1", "b1", "a2"}));
}

TEST(Signal, SurvivesWhatCallbacksDoToIt) {
    auto signal = std::make_unique<Signal<>>();
    std::vector<std::string> calls;
    Token later;
    Token added;
    const auto first = signal->subscribe([&] {
        calls.emplace_back("first");
        later.reset();
        added = signal->subscribe([&] { calls.emplace_back("added"); });
    });
    later = signal->subscribe([&] { calls.emplace_back("unsubscribed"); });
    const auto last = signal->subscribe([&] {
        calls.emplace_back("last");
        signal.reset();
    });
    signal->emit();
    EXPECT_EQ(calls, (std::vector<std::string>{"first", "last"}));
    EXPECT_EQ(signal, nullptr);
}

TEST(HandlerChain, AsksInOrderUntilOneDecides) {
    auto chain = std::make_unique<HandlerChain<bool, int>>();
    std::vector<std::string> asked;
    Token second;
    Token added;
    auto first = chain->add([&](int event) {
        asked.emplace_back("first");
        second.reset();
        added = chain->add([&](int) {
            asked.emplace_back("added");
            return true;
        });
        return event == 1;
    });
    second = chain->add([&](int) {
        asked.emplace_back("taken off");
        return true;
    });
    const auto third = chain->add([&](int event) {
        asked.emplace_back("third");
        return event == 2;
    });
    EXPECT_TRUE(chain->anyGives(true, 1));
    EXPECT_TRUE(chain->anyGives(true, 2));
    EXPECT_FALSE(chain->anyGives(true, 3)) << "what was added meanwhile is not asked yet";
    EXPECT_EQ(asked, (std::vector<std::string>{"first", "first", "third", "first", "third"}));
    EXPECT_EQ(chain->size(), 3U);
    first.reset();
    EXPECT_TRUE(chain->anyGives(true, 3));
    chain.reset();
    added.reset();
}

TEST(Token, UndoesOnceAndMoves) {
    int undone = 0;
    Token token([&] { ++undone; });
    Token other = std::move(token);
    EXPECT_TRUE(other);
    other = Token([&] { undone += 10; });
    EXPECT_EQ(undone, 1);
    other.reset();
    other.reset();
    EXPECT_EQ(undone, 11);
}

TEST(NotificationCenter, ReachesTheObserversOfOneName) {
    NotificationCenter center;
    std::vector<std::string> seen;
    auto token = center.observe("drag", [&](const NotificationCenter::Object& object) {
        seen.push_back(std::any_cast<std::string>(object));
    });
    Token fromInside;
    const auto adding = center.observe("grow", [&](const NotificationCenter::Object&) {
        fromInside = center.observe("other", [&](const auto&) { seen.emplace_back("other"); });
    });
    center.post("nobody listens", std::string("lost"));
    center.post("drag", std::string("seen"));
    center.post("grow");
    center.post("other");
    token.reset();
    center.post("drag", std::string("too late"));
    EXPECT_EQ(seen, (std::vector<std::string>{"seen", "other"}));
}

}  // namespace
}  // namespace tessellon
