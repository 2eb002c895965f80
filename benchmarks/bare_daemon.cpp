// The least that a program with hot keys can do: waits for one of its keys and does what the key
// stands for. Either it asks for the active window and the widths of its frame and has the window
// manager move it, or it runs a command. The measure for the latency of the real program.
//
// Usage: bare_daemon [move KEYCODE X Y WIDTH HEIGHT | run KEYCODE COMMAND]...
// Keys are taken with Control, Alt and Shift. The words of COMMAND are separated by spaces.
#include "bare_mover.h"

#include <array>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include <spawn.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace {

using namespace tessellon::benchmarks;

using Command = std::vector<std::string>;

struct Binding {
    xcb_keycode_t key = 0;
    std::variant<Place, Command> action;
};

constexpr std::uint16_t heldModifiers = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT;
constexpr std::array<std::uint16_t, 4> lockVariants{0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2,
                                                    XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};

class Daemon {
  public:
    Daemon(xcb_connection_t* connection, std::vector<Binding> bindings)
        : connection_(connection),
          mover_(connection),
          activeWindow_(mover_.intern("_NET_ACTIVE_WINDOW")),
          bindings_(std::move(bindings)) {
        for (const Binding& binding : bindings_) {
            for (const std::uint16_t locks : lockVariants) {
                xcb_grab_key(connection_, 0, mover_.root(), heldModifiers | locks, binding.key,
                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
            }
        }
        xcb_flush(connection_);
    }

    void run() {
        while (const BareReply<xcb_generic_event_t> event{xcb_wait_for_event(connection_)}) {
            if ((event->response_type & 0x7FU) != XCB_KEY_PRESS) {
                continue;
            }
            const auto key = reinterpret_cast<const xcb_key_press_event_t*>(event.get())->detail;
            for (Binding& binding : bindings_) {
                if (binding.key == key) {
                    perform(binding);
                }
            }
        }
    }

  private:
    void perform(Binding& binding) {
        if (const auto* place = std::get_if<Place>(&binding.action)) {
            move(*place);
        } else {
            start(std::get<Command>(binding.action));
        }
    }

    static void start(Command& command) {
        std::vector<char*> words;
        words.reserve(command.size() + 1);
        for (std::string& word : command) {
            words.push_back(word.data());
        }
        words.push_back(nullptr);
        pid_t process = 0;
        posix_spawnp(&process, words.front(), nullptr, nullptr, words.data(), environ);
    }

    void move(const Place& place) {
        const BareReply<xcb_get_property_reply_t> active(xcb_get_property_reply(
            connection_,
            xcb_get_property(connection_, 0, mover_.root(), activeWindow_, XCB_ATOM_WINDOW, 0, 1),
            nullptr));
        if (active && active->value_len == 1) {
            const auto window = *static_cast<xcb_window_t*>(xcb_get_property_value(active.get()));
            const BareMove wanted{window, place};
            mover_.move(std::span(&wanted, 1));
        }
    }

    xcb_connection_t* connection_;
    BareMover mover_;
    xcb_atom_t activeWindow_;
    std::vector<Binding> bindings_;
};

Command wordsOf(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

/// Empty when the arguments are not as the usage says.
std::vector<Binding> parse(std::span<char* const> arguments) {
    constexpr std::size_t wordsOfMove = 6;
    constexpr std::size_t wordsOfRun = 3;
    std::vector<Binding> bindings;
    while (!arguments.empty()) {
        const std::string_view action = arguments.front();
        Binding binding;
        if (action == "move" && arguments.size() >= wordsOfMove) {
            Place place{};
            for (std::size_t i = 0; i < place.size(); ++i) {
                place[i] = std::atoi(arguments[2 + i]);
            }
            binding.action = place;
        } else if (action == "run" && arguments.size() >= wordsOfRun) {
            binding.action = wordsOf(arguments[2]);
        } else {
            return {};
        }
        binding.key = static_cast<xcb_keycode_t>(std::atoi(arguments[1]));
        bindings.push_back(std::move(binding));
        arguments = arguments.subspan(action == "move" ? wordsOfMove : wordsOfRun);
    }
    return bindings;
}

}  // namespace

int main(int argc, char** argv) {
    auto bindings = parse(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (bindings.empty() || xcb_connection_has_error(connection) != 0) {
        std::fputs("bare_daemon: needs a display, and keys with something to do\n", stderr);
        xcb_disconnect(connection);
        return EXIT_FAILURE;
    }
    // Nobody waits for the commands.
    std::signal(SIGCHLD, SIG_IGN);
    Daemon(connection, std::move(bindings)).run();
    xcb_disconnect(connection);
    return EXIT_SUCCESS;
}
