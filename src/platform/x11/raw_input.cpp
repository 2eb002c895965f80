#include "platform/x11/raw_input.h"

// The header names a member with a C++ keyword.
#ifdef __clang__
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

#include "base/modifier_flag.h"

#include <span>
#include <utility>

namespace tessellon::x11 {
namespace {

constexpr std::uint32_t leftButton = 1;
constexpr std::uint32_t firstWheel = 4;
constexpr std::uint32_t lastWheel = 7;
constexpr std::uint32_t rightSuper = 54;  // virtual key code

// The bit of a button, numbered as X does, in pressedButtons; 0 for the wheels.
std::uint32_t bitOf(std::uint32_t button) {
    switch (button) {
        case 1:
            return 1U << 0U;
        case 2:
            return 1U << 2U;
        case 3:
            return 1U << 1U;
        default:
            return button > lastWheel && button < 32 ? 1U << (button - 5U) : 0;
    }
}

bool isWheel(std::uint32_t button) {
    return button >= firstWheel && button <= lastWheel;
}

}  // namespace

RawInput::RawInput(Connection& connection, const Keyboard& keyboard)
    : connection_(connection), keyboard_(keyboard) {
    const auto* extension = xcb_get_extension_data(connection_.xcb(), &xcb_input_id);
    if (extension == nullptr || extension->present == 0) {
        return;
    }
    opcode_ = extension->major_opcode;
    // From 2.1 on raw events come whoever holds a grab.
    connection_.countRoundTrip();
    const Reply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection_.xcb(), xcb_input_xi_query_version(connection_.xcb(), 2, 2), nullptr));
    if (!version || std::pair(version->major_version, version->minor_version) <
                        std::pair<std::uint16_t, std::uint16_t>(2, 1)) {
        return;
    }
    available_ = true;
    if (keyboard_.xkbEvent()) {
        xcb_xkb_select_events_details_t details{};
        details.affectState = XCB_XKB_STATE_PART_MODIFIER_STATE;
        details.stateDetails = XCB_XKB_STATE_PART_MODIFIER_STATE;
        xcb_xkb_select_events_aux(connection_.xcb(), XCB_XKB_ID_USE_CORE_KBD,
                                  XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, 0, 0, 0, &details);
    }
    listenTo(Listening::buttons);
    readState();
    if (isLeftButtonDown()) {
        listenTo(Listening::buttonsAndMotion);
    }
    stateListener_ = connection_.addStateListener([this](const auto& event) { onState(event); });
    actionListener_ = connection_.addActionListener([this](const auto& event) { onAction(event); });
    idle_ = connection_.idle().subscribe([this] { onIdle(); });
}

void RawInput::listenTo(Listening what) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{};
    // The master devices tell of each click once; all devices together tell of it twice.
    selection.head.deviceid = XCB_INPUT_DEVICE_ALL_MASTER;
    selection.head.mask_len = 1;
    selection.mask =
        XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
    if (what == Listening::buttonsAndMotion) {
        selection.mask |= XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
    }
    xcb_input_xi_select_events(connection_.xcb(), connection_.root(), 1, &selection.head);
    xcb_flush(connection_.xcb());
}

void RawInput::readState() {
    connection_.countRoundTrip();
    const Reply<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(
        connection_.xcb(), xcb_query_pointer_unchecked(connection_.xcb(), connection_.root()),
        nullptr));
    if (!pointer) {
        return;
    }
    flags_ = keyboard_.modifierFlags(pointer->mask);
    buttons_ = 0;
    for (std::uint32_t button = 1; button <= 3; ++button) {
        if ((pointer->mask & (XCB_BUTTON_MASK_1 << (button - 1U))) != 0) {
            buttons_ |= bitOf(button);
        }
    }
}

std::optional<RawInput::Pointer> RawInput::queryPointer() {
    connection_.countRoundTrip();
    const Reply<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(
        connection_.xcb(), xcb_query_pointer_unchecked(connection_.xcb(), connection_.root()),
        nullptr));
    if (!reply || reply->same_screen == 0) {
        return std::nullopt;
    }
    // A pointing device that is unplugged while its button is down never tells of the release.
    releaseSuspected_ = isLeftButtonDown() && (reply->mask & XCB_BUTTON_MASK_1) == 0;
    return Pointer{reply->root_x, reply->root_y, reply->child};
}

std::optional<std::uint16_t> RawInput::rawEvent(const xcb_generic_event_t& event) const {
    if (eventType(event) != XCB_GE_GENERIC ||
        eventAs<xcb_ge_generic_event_t>(event).extension != opcode_) {
        return std::nullopt;
    }
    return eventAs<xcb_ge_generic_event_t>(event).event_type;
}

void RawInput::onState(const xcb_generic_event_t& event) {
    const auto type = rawEvent(event);
    if (type != XCB_INPUT_RAW_BUTTON_PRESS && type != XCB_INPUT_RAW_BUTTON_RELEASE) {
        return;
    }
    const auto& button = eventAs<xcb_input_raw_button_press_event_t>(event);
    if (type == XCB_INPUT_RAW_BUTTON_PRESS && !isWheel(button.detail)) {
        readMapping(button);
    }
    // At once, since the pointer may be moving already while an action still waits for its turn.
    if (mapped(button) != leftButton) {
        return;
    }
    if (type == XCB_INPUT_RAW_BUTTON_PRESS) {
        listenTo(Listening::buttonsAndMotion);
        leftPressPulled_.emit();
    } else {
        listenTo(Listening::buttons);
    }
}

void RawInput::onAction(const xcb_generic_event_t& event) {
    if (const auto type = rawEvent(event)) {
        const auto& button = eventAs<xcb_input_raw_button_press_event_t>(event);
        if (type == XCB_INPUT_RAW_MOTION) {
            motionWaits_ = isLeftButtonDown();
        } else if (type == XCB_INPUT_RAW_BUTTON_PRESS) {
            press(mapped(button));
        } else if (type == XCB_INPUT_RAW_BUTTON_RELEASE) {
            release(mapped(button));
        }
    } else if (keyboard_.xkbEvent() == eventType(event) &&
               eventAs<xcb_xkb_state_notify_event_t>(event).xkbType == XCB_XKB_STATE_NOTIFY) {
        const auto& state = eventAs<xcb_xkb_state_notify_event_t>(event);
        modifiersBecame(state.mods, state.keycode, state.eventType == XCB_KEY_PRESS);
    }
}

/// Raw events carry the numbers of the hardware. What programs are told went through the mapping of
/// the device and then through that of the master pointer. It is asked for at each press, because
/// nobody is told when the former changes; the server changes neither while a button is down.
void RawInput::readMapping(const xcb_input_raw_button_press_event_t& event) {
    auto* const xcb = connection_.xcb();
    const auto ask = [xcb](xcb_input_device_id_t device) {
        return xcb_input_get_device_button_mapping_unchecked(xcb,
                                                             static_cast<std::uint8_t>(device));
    };
    const auto sourceCookie = ask(event.sourceid);
    const auto masterCookie = ask(event.deviceid);
    connection_.countRoundTrip();
    using MappingReply = Reply<xcb_input_get_device_button_mapping_reply_t>;
    const auto mapOf = [](const MappingReply& reply) -> std::span<const std::uint8_t> {
        if (!reply) {
            return {};  // unplugged meanwhile
        }
        return {xcb_input_get_device_button_mapping_map(reply.get()), reply->map_size};
    };
    const MappingReply source(
        xcb_input_get_device_button_mapping_reply(xcb, sourceCookie, nullptr));
    const MappingReply master(
        xcb_input_get_device_button_mapping_reply(xcb, masterCookie, nullptr));
    auto& mapping = mappings_[event.sourceid];
    mapping.assign(mapOf(source).begin(), mapOf(source).end());
    const auto ofMaster = mapOf(master);
    for (auto& button : mapping) {
        if (button >= 1 && button <= ofMaster.size()) {
            button = ofMaster[button - 1U];
        }
    }
}

/// The number that programs know the button by; 0 for one that is switched off.
std::uint32_t RawInput::mapped(const xcb_input_raw_button_press_event_t& event) const {
    const auto found = mappings_.find(event.sourceid);
    if (found == mappings_.end() || event.detail < 1 || event.detail > found->second.size()) {
        return event.detail;
    }
    return found->second[event.detail - 1];
}

void RawInput::press(std::uint32_t button) {
    if (button == leftButton && isLeftButtonDown()) {
        release(leftButton);  // it must have gone up before it could go down again
    }
    tellMotion();
    releaseSuspected_ = releaseSuspected_ && button != leftButton;
    buttons_ |= bitOf(button);
    if (!isWheel(button)) {
        pointerAtPress_ = queryPointer();
    }
    buttonPressed_.emit(button);
}

void RawInput::release(std::uint32_t button) {
    const bool wasDown = (buttons_ & bitOf(button)) != 0;
    if (button == leftButton) {
        tellMotion();
    }
    buttons_ &= ~bitOf(button);
    if (button == leftButton && wasDown) {
        buttonReleased_.emit();
    }
}

void RawInput::tellMotion() {
    if (std::exchange(motionWaits_, false)) {
        motion_.emit();
    }
}

void RawInput::onIdle() {
    // Everything that has arrived is told by now, and yet the release was not among it.
    if (motionWaits_ && releaseSuspected_ && isLeftButtonDown()) {
        motionWaits_ = false;
        listenTo(Listening::buttons);
        release(leftButton);
    }
    tellMotion();
}

void RawInput::modifiersBecame(std::uint16_t state, xcb_keycode_t key, bool pressed) {
    auto flags = keyboard_.modifierFlags(state);
    if ((flags & modifier_flag::command) != 0) {
        const bool isRight = key != 0 && keyboard_.keyCode(rightSuper) == key;
        flags |= isRight ? (pressed ? modifier_flag::rightCommand : 0)
                         : flags_ & modifier_flag::rightCommand;
    }
    if (flags != flags_) {
        tellMotion();
        flags_ = flags;
        flagsChanged_.emit();
    }
}

}  // namespace tessellon::x11
