// The desktop of a stress run with everybody on it, and what can be done to each of them. It knows
// who should be there at the moment, and brings back at the end of an action who has to be.
#pragma once

#include "harness/private_desktop.h"
#include "harness/program.h"
#include "harness/tray.h"
#include "harness/wait.h"
#include "stress/clients.h"
#include "stress/options.h"
#include "stress/random.h"
#include "stress/records.h"
#include "stress/report.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tessellon::stress {

class Stage {
  public:
    Stage(const Options& options, Report& report);

    desktop::PrivateDesktop& desktop() { return desktop_; }
    desktop::Program& program() { return program_; }
    Clients& clients() { return clients_; }
    Ledger& ledger() { return ledger_; }
    Report& report() { return report_; }

    // The program.
    void startProgram();
    void killProgram();
    /// False from the moment when it was killed by us until it has been started again.
    bool programShouldRun() const { return programShouldRun_; }
    /// Waits until it has done what it was given to do, and has to.
    void waitUntilQuiet();
    /// Changes values in the settings file while the program may be running.
    void editSettings(const desktop::StoredValues& values);
    /// What it shows without the window manager's help.
    std::vector<desktop::Frame> pictures();
    std::optional<desktop::Frame> pictureOfWidth(int width);
    /// It may say something with this in it, in this action and the next.
    void mayBeSaid(const std::string& phrase) { maySay_[phrase] = 2; }
    /// The lines that it said since the last call and that nothing allowed.
    std::vector<std::string> unexpectedWords();

    // The window manager.
    bool hasWindowManager();
    /// The name of the one that was started last.
    const std::string& windowManagerName() const { return windowManagerName_; }
    void killWindowManager();
    /// Starts one after so many actions; at the end of this one for 0.
    void replaceWindowManagerAfter(std::size_t actions);
    void startWindowManager(Random& random);

    // The others.
    bool hasTray() { return tray_ != nullptr && tray_->running(); }
    void startTray(Random& random);
    void killTray();
    bool hasCompositor();
    void startCompositor();
    void killCompositor();
    void restartBus();

    /// Describes other monitors on the screen.
    void changeDisplays(Random& random);
    const std::vector<desktop::Frame>& displays() const { return displays_; }

    // Windows.
    /// Brings a client to the front; false when that does not come about.
    bool activate(Client& client);
    Client* activeClient();
    /// What this action does next may give the window in front its first frame back, which drops
    /// its record.
    void mayRestoreActive();
    /// Another window may have come to the front while that was asked for.
    void activeMayHaveChanged();
    /// Once all is quiet: it may have been the window that is in front by now.
    void settleForgetting();

    /// Whether the window that is dragged, or was in the last actions, begins its moves by itself.
    bool wasDraggedByItself() const { return draggedByItself_ > 0; }
    void isDragged(const Client& client);

    /// Lets go of the button and of every key that is down.
    void letGo();
    /// Brings back who was stopped or killed and has to be there.
    void recover(Random& random);

  private:
    struct Layout;
    static const std::vector<Layout>& layouts();
    void describeMonitors();
    void forgetMonitors();
    std::vector<std::string> windowManagerNames() const;

    Report& report_;
    std::optional<std::string> onlyWindowManager_;
    desktop::PrivateDesktop desktop_;
    desktop::Program program_;
    Clients clients_;
    Ledger ledger_;
    bool programShouldRun_ = false;
    bool askedToRestore_ = false;
    int draggedByItself_ = 0;  // for so many actions more
    std::optional<std::size_t> windowManagerComesAfter_;
    bool windowManagerShouldRun_ = false;
    std::string windowManagerName_;
    desktop::Process* tray_ = nullptr;
    std::unique_ptr<desktop::Process> compositor_;
    std::unique_ptr<desktop::Process> bus_;
    std::vector<desktop::Frame> displays_;
    std::size_t layout_ = 0;
    std::set<std::string> monitors_;
    std::map<std::string, int> maySay_;
    std::size_t heard_ = 0;
};

}  // namespace tessellon::stress
