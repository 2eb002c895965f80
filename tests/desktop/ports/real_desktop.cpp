#include "ports/real_desktop.h"

#include "app/preferences.h"
#include "platform/linux/process_info.h"

#include <stdexcept>
#include <utility>

namespace tessellon::desktop {
namespace {

std::unique_ptr<x11::Connection> openConnection(const std::string& display) {
    auto connection = x11::Connection::open(display);
    if (!connection) {
        throw std::runtime_error("cannot connect to the display");
    }
    return connection;
}

}  // namespace

RealDesktop::RealDesktop(const std::string& display)
    : directory_(loop_, applicationFolders()),
      connection_(openConnection(display)),
      mirror_(*connection_),
      applications_(*connection_, mirror_, directory_, processExecutable),
      displays_(*connection_, mirror_),
      windowList_(mirror_),
      keyboard_(*connection_),
      rawInput_(*connection_, keyboard_),
      accessibility_(*connection_, mirror_, rawInput_),
      eventMonitors_(*connection_, mirror_, displays_, rawInput_),
      keyGrabs_(*connection_, keyboard_, mirror_, rawInput_),
      eventTaps_(*connection_, keyboard_, keyGrabs_, rawInput_),
      hotKeyCenter_(*connection_, keyboard_, keyGrabs_),
      keyboardFocus_(
          {*connection_, keyboard_, eventTaps_, hotKeyCenter_, eventMonitors_, rawInput_, loop_}) {
    registerPreferenceDefaults(defaults_);
    // The list of installed applications is read once in the life of the program.
    directory_.lookUp({});
}

EngineServices RealDesktop::services() {
    return {accessibility_, applications_, displays_, windowList_, eventMonitors_, defaults_};
}

std::unique_ptr<TrayIcon> RealDesktop::makeTrayIcon(IconPainter painter) {
    return std::make_unique<x11::X11TrayIcon>(*connection_, displays_, loop_, "Tessellon",
                                              std::move(painter));
}

}  // namespace tessellon::desktop
