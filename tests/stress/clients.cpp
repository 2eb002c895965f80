#include "stress/clients.h"

#include "harness/wait.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>

#include <xcb/xcbext.h>

namespace tessellon::stress {
namespace {

using desktop::waitUntil;

struct Command {
    std::vector<std::string> arguments;
    desktop::Environment environment;
    bool takesSmallSizes = true;
};

// One command for each place.
Command commandOf(std::size_t place, const std::string& title, const std::filesystem::path& home) {
    const std::filesystem::path document = home / (title + ".txt");
    switch (place) {
        case 0:
            return {{"xclock", "-title", title, "-xrm", "XClock.input: True"}, {}};
        case 1:
            // Alt and Return would make it full-screen while nobody listens to our shortcuts.
            return {
                {"xterm", "-title", title, "-xrm", "*fullscreen: never", "-e", "sleep", "100000"},
                {}};
        case 2:
            return {{"mousepad", "--disable-server", document}, {}, false};
        case 3:  // with decorations and a shadow of its own
            return {{"mousepad", "--disable-server", document}, {{"GTK_CSD", "1"}}, false};
        case 4:
            return {{"/usr/lib/qt6/bin/linguist", "-qwindowtitle", title},
                    {{"QT_QPA_PLATFORM", "xcb"}},
                    false};
        case 5:
            return {{"xeyes", "-title", title, "-xrm", "XEyes.input: True"}, {}};
        case 6:
            return {{"xev", "-name", title, "-geometry", "500x400", "-event", "button"}, {}};
        default:
            return {{"xclock", "-digital", "-title", title, "-xrm", "XClock.input: True"}, {}};
    }
}

/// Whether the server answers. It does not while somebody else holds it.
bool answersWithin(xcb_connection_t* connection, std::chrono::milliseconds timeout) {
    const auto asked = xcb_get_input_focus(connection);
    xcb_flush(connection);
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    const bool answered = waitUntil(
        [&] { return xcb_poll_for_reply(connection, asked.sequence, &reply, &error) != 0; },
        timeout);
    if (!answered) {
        xcb_discard_reply(connection, asked.sequence);
    }
    std::free(reply);
    std::free(error);
    return answered;
}

}  // namespace

void stopProcess(desktop::Process& process, desktop::XSession& x) {
    constexpr std::chrono::milliseconds aMoment{500};
    process.signal(SIGSTOP);
    while (process.running() && !answersWithin(x.connection(), aMoment)) {
        process.signal(SIGCONT);
        x.sync();
        process.signal(SIGSTOP);
    }
}

Clients::Clients(desktop::PrivateDesktop& desktop, Report& report)
    : desktop_(desktop), report_(report) {}

bool Clients::isAlive(Client& client) {
    return client.process->running() && desktop_.x().exists(client.window);
}

Client* Clients::at(std::size_t place) {
    auto& client = clients_.at(place);
    if (client && !isAlive(*client)) {
        client.reset();
    }
    return client ? &*client : nullptr;
}

xcb_window_t Clients::findWindow(const Client& client) {
    auto& windows = desktop_.windows();
    for (const xcb_window_t window : windows.managed()) {
        // Some put something before or after it.
        if (desktop_.x().processOf(window) == client.process->pid() && windows.isShown(window) &&
            windows.visibleFrame(window) &&
            windows.title(window).find(client.name) != std::string::npos) {
            return window;
        }
    }
    return XCB_WINDOW_NONE;
}

Client* Clients::open(std::size_t place) {
    if (Client* const present = at(place)) {
        if (!present->isStuck) {
            return present;
        }
        kill(*present);
    }
    Client client;
    client.place = place;
    client.name = "client" + std::to_string(++started_);
    std::ofstream(desktop_.home() / (client.name + ".txt")) << "text\n";
    const Command command = commandOf(place, client.name, desktop_.home());
    auto options = desktop_.processOptions("client");
    // Some want to talk about the files that were open when they were killed.
    const std::filesystem::path home = desktop_.home() / client.name;
    options.environment["XDG_CONFIG_HOME"] = home / "config";
    options.environment["XDG_DATA_HOME"] = home / "data";
    for (const auto& [name, value] : command.environment) {
        options.environment[name] = value;
    }
    client.hasOwnDecorations = command.environment.contains("GTK_CSD");
    client.takesSmallSizes = command.takesSmallSizes;
    client.process = std::make_unique<desktop::Process>(command.arguments, options);
    constexpr std::chrono::seconds startsTime{8};
    waitUntil(
        [&] {
            client.window = findWindow(client);
            return client.window != XCB_WINDOW_NONE || !client.process->running();
        },
        startsTime);
    if (client.window == XCB_WINDOW_NONE) {
        // Programs die with the bus or wait for it in vain, and so do window managers.
        report_.note(command.arguments.front() + " showed no window");
        report_.count("clients that showed no window");
        return nullptr;
    }
    return &clients_.at(place).emplace(std::move(client));
}

void Clients::kill(Client& client) {
    client.process->kill();
    clients_.at(client.place).reset();
}

void Clients::close(Client& client) {
    desktop_.windows().close(client.window);
    // A text that was typed into has to be talked about.
    client.isStuck = !client.takesSmallSizes;
}

void Clients::stop(Client& client) {
    stopProcess(*client.process, desktop_.x());
    client.isStopped = true;
}

void Clients::resumeAll() {
    for (auto& client : clients_) {
        if (client && client->isStopped) {
            client->process->signal(SIGCONT);
            client->isStopped = false;
        }
    }
}

bool Clients::showMenu() {
    return std::any_of(clients_.begin(), clients_.end(), [&](const auto& client) {
        return client && !desktop_.windows().unmanagedOf(client->process->pid()).empty();
    });
}

std::vector<std::string> Clients::names() const {
    std::vector<std::string> names;
    for (const auto& client : clients_) {
        if (client) {
            names.push_back(client->name);
        }
    }
    return names;
}

Client* Clients::withWindow(xcb_window_t window) {
    for (auto& client : clients_) {
        if (client && client->window == window) {
            return &*client;
        }
    }
    return nullptr;
}

std::vector<Client*> Clients::under(desktop::Position position) {
    std::vector<Client*> found;
    for (auto& client : clients_) {
        const auto frame = client ? desktop_.windows().visibleFrame(client->window) : std::nullopt;
        if (frame && position.x >= frame->x && position.x < frame->x + frame->width &&
            position.y >= frame->y && position.y < frame->y + frame->height) {
            found.push_back(&*client);
        }
    }
    return found;
}

bool Clients::isAlive(const std::string& name) {
    for (auto& client : clients_) {
        if (client && client->name == name) {
            return isAlive(*client);
        }
    }
    return false;
}

}  // namespace tessellon::stress
