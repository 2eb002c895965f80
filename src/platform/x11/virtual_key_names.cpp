#include "platform/x11/virtual_key_names.h"

#include <array>

namespace tessellon::x11 {
namespace {

// Indexed by virtual key code. Row A is the space bar's, row E the digits'; 01 is the leftmost key.
constexpr std::array<std::string_view, 127> names{
    "AC01", "AC02", "AC03", "AC04", "AC06", "AC05", "AB01", "AB02",  // 0: A S D F H G Z X
    "AB03", "AB04", "LSGT", "AB05", "AD01", "AD02", "AD03", "AD04",  // 8: C V § B Q W E R
    "AD06", "AD05", "AE01", "AE02", "AE03", "AE04", "AE06", "AE05",  // 16: Y T 1 2 3 4 6 5
    "AE12", "AE09", "AE07", "AE11", "AE08", "AE10", "AD12", "AD09",  // 24: = 9 7 - 8 0 ] O
    "AD07", "AD11", "AD08", "AD10", "RTRN", "AC09", "AC07", "AC11",  // 32: U [ I P ↩ L J '
    "AC08", "AC10", "BKSL", "AB08", "AB10", "AB06", "AB07", "AB09",  // 40: K ; \ , / N M .
    "TAB",  "SPCE", "TLDE", "BKSP", "",     "ESC",  "RWIN", "LWIN",  // 48
    "LFSH", "CAPS", "LALT", "LCTL", "RTSH", "RALT", "RCTL", "",      // 56
    "FK17", "KPDL", "",     "KPMU", "",     "KPAD", "",     "NMLK",  // 64
    "",     "",     "",     "KPDV", "KPEN", "",     "KPSU", "FK18",  // 72
    "FK19", "KPEQ", "KP0",  "KP1",  "KP2",  "KP3",  "KP4",  "KP5",   // 80
    "KP6",  "KP7",  "FK20", "KP8",  "KP9",  "AE13", "AB11", "KPPT",  // 88
    "FK05", "FK06", "FK07", "FK03", "FK08", "FK09", "",     "FK11",  // 96
    "",     "FK13", "FK16", "FK14", "",     "FK10", "COMP", "FK12",  // 104
    "",     "FK15", "INS",  "HOME", "PGUP", "DELE", "FK04", "END",   // 112
    "FK02", "PGDN", "FK01", "LEFT", "RGHT", "DOWN", "UP",            // 120
};

}  // namespace

std::string_view xkbKeyName(std::uint32_t virtualKeyCode) {
    return virtualKeyCode < names.size() ? names[virtualKeyCode] : std::string_view{};
}

}  // namespace tessellon::x11
