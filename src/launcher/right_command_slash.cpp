#include "launcher/right_command_slash.h"

#include "base/modifier_flag.h"
#include "platform/key_event.h"

#include <utility>

namespace tessellon {
namespace {

// Locks, the function key and the left command key are not looked at.
constexpr auto requiredFlags = modifier_flag::command | modifier_flag::rightCommand;
constexpr auto testedFlags = modifier_flag::all | modifier_flag::rightCommand;

}  // namespace

RightCommandSlash::RightCommandSlash(EventTaps& taps, std::function<void()> onTrigger)
    : taps_(taps), onTrigger_(std::move(onTrigger)) {}

void RightCommandSlash::start() {
    if (tap_) {
        return;
    }
    tap_ = taps_.create(virtual_key::slash, modifier_flag::command,
                        {.keyDown = [this](const TappedKey& key) { return onKeyDown(key); },
                         .disabled =
                             [this] {
                                 if (tap_) {
                                     tap_->enable();
                                 }
                             }});
}

void RightCommandSlash::stop() {
    tap_.reset();
}

void RightCommandSlash::checkHealth() {
    if (tap_ && tap_->isValid()) {
        if (tap_->isEnabled()) {
            return;
        }
        tap_->enable();
        if (tap_->isEnabled()) {
            return;
        }
    }
    stop();
    start();
}

TapVerdict RightCommandSlash::onKeyDown(const TappedKey& key) {
    if (key.keyCode != virtual_key::slash || (key.flags & testedFlags) != requiredFlags) {
        return TapVerdict::pass;
    }
    if (!key.isAutorepeat && onTrigger_) {
        onTrigger_();
    }
    return TapVerdict::swallow;
}

}  // namespace tessellon
