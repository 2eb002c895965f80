// Starting, ending, and everything that can be pulled away from under the program while it runs.
#include "harness/accessibility_bus.h"
#include "harness/status_notifier_host.h"
#include "linux/half_dead_bus.h"
#include "menu_fixture.h"

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <random>
#include <set>
#include <thread>

#include <signal.h>
#include <unistd.h>

namespace tessellon::desktop {
namespace {

constexpr Frame original{300, 200, 700, 500};
constexpr ProcessEnd endedWell{.exitCode = 0, .signal = std::nullopt};

using WindowManagerLifeTest = WindowManagerTest;

TEST_P(WindowManagerLifeTest, servicesStartSoonAfterAWindowManagerAppears) {
    useBareDesktop();
    program().launch();
    ASSERT_TRUE(program().waitUntilRunning());
    program().waitUntilIdle();
    EXPECT_FALSE(program().waitUntilHotKeysActive(std::chrono::milliseconds{0}));
    desktop().startWindowManager(GetParam());
    // Two seconds, and something for a busy machine.
    EXPECT_TRUE(program().waitUntilHotKeysActive(std::chrono::seconds{4}));
    desktop().addDock(dockHeight);
    const xcb_window_t window = startClock(original);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
}

TEST_P(WindowManagerLifeTest, aKilledWindowManagerIsReplaced) {
    useProgram();
    const xcb_window_t window = startClock(original);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
    desktop().killWindowManager();
    desktop().keyboard().combination(Held::controlAlt, Key::u);
    program().waitUntilIdle();
    desktop().startWindowManager(GetParam() == "openbox" ? "xfwm4" : "openbox");
    const xcb_window_t another = startClock(original, "another");
    EXPECT_EQ(snap(another, Held::controlAlt, Key::i, topRight), topRight);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::u, topLeft), topLeft);
}

TEST_P(WindowManagerLifeTest, aWindowManagerThatHangsDoesNotHangTheProgram) {
    useProgram();
    const xcb_window_t window = startClock(original);
    desktop().windows().activate(window);
    desktop().windowManagerProcess().signal(SIGSTOP);
    desktop().keyboard().combination(Held::controlAlt, Key::left);
    desktop().keyboard().combination(Held::controlAlt, Key::u);
    program().waitUntilIdle();
    EXPECT_TRUE(program().running());
    desktop().windowManagerProcess().signal(SIGCONT);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::i, topRight), topRight);
}

INSTANTIATE_TEST_SUITE_P(On, WindowManagerLifeTest, testedWindowManagers(), windowManagerName);

using LifecycleTest = MenuTesting<DesktopTest>;

TEST_F(LifecycleTest, windowsThatDieWhileTheyAreSnapped) {
    useProgram();
    const xcb_window_t survivor = startClock(original);
    for (int round = 0; round < 15; ++round) {
        Process& client = desktop().start({"xclock", "-xrm", "XClock.input: True"});
        const xcb_window_t window = desktop().windows().waitForWindowOf(client.pid());
        desktop().windows().place(window, {100, 100, 600, 400});
        desktop().windows().activate(window);
        desktop().keyboard().combination(Held::controlAlt, Key::left);
        client.kill();
        desktop().keyboard().combination(Held::controlAlt, Key::left);
    }
    EXPECT_EQ(snap(survivor, Held::controlAlt, Key::u, topLeft), topLeft);
}

TEST_F(LifecycleTest, aSecondStartIsAnsweredByTheFirstInstance) {
    useProgram();
    Program second(desktop());
    second.launch();
    EXPECT_EQ(second.process().waitForEnd(patience), endedWell);
    EXPECT_EQ(second.standardError(), "");
    EXPECT_TRUE(program().running());
    EXPECT_TRUE(waitUntilOpen()) << "the first one shows its panel";
}

TEST_F(LifecycleTest, aSecondStartSaysSoWhenTheFirstInstanceHangs) {
    useProgram();
    programMaySpeak();  // both write to one file
    program().process().signal(SIGSTOP);
    Program second(desktop());
    second.launch();
    const auto end = second.process().waitForEnd(patience);
    program().process().signal(SIGCONT);
    ASSERT_TRUE(end && end->exitCode);
    EXPECT_NE(*end->exitCode, 0);
    EXPECT_NE(second.standardError().find("does not answer"), std::string::npos)
        << second.standardError();
    const xcb_window_t window = startClock(original);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
}

TEST_F(LifecycleTest, theServerGoesAway) {
    useDesktop();
    programMayBeGone();
    programMaySpeak();
    program().start();
    const xcb_window_t window = startClock(original);
    ASSERT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
    desktop().killServer();
    const auto end = program().process().waitForEnd(patience);
    ASSERT_TRUE(end.has_value()) << "it outlives its display";
    EXPECT_FALSE(end->signal) << "it ends by itself";
    const auto settings = program().settings();
    ASSERT_TRUE(settings.has_value());
    EXPECT_TRUE(settings->contains("restoreMemory"));
}

// At the start of a session both come up together, and after a crash the session restarts both.
TEST_F(LifecycleTest, startedBesideTheWindowManagerItForgetsNoWindow) {
    useProgram();
    const xcb_window_t window = startClock(original);
    for (int lead = 0; lead <= 120; lead += 15) {
        ASSERT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
        ASSERT_EQ(program().stop(), endedWell);
        // Told to end, it gives windows back where they were; killed, it leaves them elsewhere.
        desktop().windowManagerProcess().signal(SIGTERM);
        ASSERT_TRUE(desktop().windowManagerProcess().waitForEnd(patience));
        desktop().launchWindowManager("openbox");
        std::this_thread::sleep_for(std::chrono::milliseconds(lead));
        program().start();
        desktop().awaitWindowManager();
        EXPECT_EQ(snap(window, Held::controlAlt, Key::backspace, original), original)
            << lead << " ms after the window manager; remembered: "
            << std::get<StoredData>(program().settings()->at("restoreMemory")).bytes;
    }
}

TEST_F(LifecycleTest, aServerThatTellsNoProcessesWillDo) {
    useBareDesktop(Monitors::one, {"-extension", "X-Resource"});
    desktop().startWindowManager("openbox");
    desktop().addDock(dockHeight);
    program().start();
    desktop().start({"xclock", "-title", "clock", "-xrm", "XClock.input: True", "-geometry",
                     "700x500+300+200"});
    xcb_window_t window = XCB_WINDOW_NONE;
    ASSERT_TRUE(waitUntil([&] {
        for (const xcb_window_t candidate : desktop().windows().managed()) {
            window = desktop().windows().title(candidate) == "clock" ? candidate : window;
        }
        return window != XCB_WINDOW_NONE;
    }));
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
}

// The toolkit would wait for it for ever, before the program could do anything.
TEST_F(LifecycleTest, aSilentSessionBusIsDoneWithout) {
    useDesktop();
    const std::string socket = desktop().home() / "silent";
    program().setEnvironment("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + socket);
    program().setEnvironment("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + socket);
    programMaySpeak();
    for (const auto& answered : {std::set<std::string>{}, {"Hello"}}) {
        const HalfDeadBus bus(socket, answered);
        program().start();
        EXPECT_NE(program().standardError().find("session bus"), std::string::npos);
        const xcb_window_t window = startClock(original);
        EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
        EXPECT_EQ(program().stop(), endedWell);
    }
    program().start();
}

class SlowBusTest : public LifecycleTest {
  protected:
    void openSettings() {
        click(opened().settings());
        const auto settings =
            desktop().windows().waitForTitled(program().process().pid(), "Tessellon Settings");
        EXPECT_TRUE(settings &&
                    waitUntil([&] { return desktop().windows().active() == settings; }));
        EXPECT_TRUE(waitUntilClosed());
        program().waitUntilIdle();
    }
    /// Where the settings lead to what is started at login, of which the desktop says that the
    /// program is not. They open in the middle of the screen, always.
    std::optional<Position> placeOfLoginLink() {
        const auto atLogin = desktop().home() / ".config/autostart/app.tessellon.Tessellon.desktop";
        std::filesystem::create_directories(atLogin.parent_path());
        std::ofstream(atLogin) << "[Desktop Entry]\nType=Application\nName=Tessellon\n"
                                  "Exec=tessellon\nX-GNOME-Autostart-enabled=false\n";
        const AccessibilityBus assistance(desktop());
        program().start();
        openSettings();
        const auto link =
            assistance.waitFor(program().process().pid(), "push button", "Open Login Items");
        const auto place = link ? assistance.middle(*link) : std::nullopt;
        EXPECT_EQ(program().stop(), endedWell);
        return place;
    }
};

TEST_F(SlowBusTest, whatIsSlowAtTheStartIsThereLater) {
    useDesktop();
    const auto found = desktop().home() / "found";
    const auto opener = desktop().addProgramFolder("programs") / "xdg-open";
    std::ofstream(opener) << "#!/bin/sh\nprintf '%s' \"$DBUS_SESSION_BUS_ADDRESS\" > '"
                          << found.string() << "'\n";
    std::filesystem::permissions(opener, std::filesystem::perms::owner_all);
    const auto opensLogin = placeOfLoginLink();
    ASSERT_TRUE(opensLogin);
    const StatusNotifierHost host(desktop().environment());
    desktop().busProcess().signal(SIGSTOP);
    programMaySpeak();
    program().start();
    const xcb_window_t window = startClock(original);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
    openSettings();
    click(*opensLogin);
    EXPECT_TRUE(waitUntil([&] {
        return fileContents(found) == desktop().environment().at("DBUS_SESSION_BUS_ADDRESS");
    })) << "programs that are started from here find: "
        << fileContents(found);

    desktop().busProcess().signal(SIGCONT);
    ASSERT_TRUE(waitUntil([&] { return host.items().size() == 1; }));
    letTheLastClosePass();
    EXPECT_TRUE(host.activate(host.items().front(), 100, 100));
    EXPECT_TRUE(waitUntilOpen());
    desktop().keyboard().tap(Key::escape);
    ASSERT_TRUE(waitUntilClosed());
    desktop().run({"gdbus", "wait", "--session", "--timeout", "10", "app.tessellon.Tessellon"});
    desktop().run({"gdbus", "call", "--session", "--dest", "app.tessellon.Tessellon",
                   "--object-path", "/app/tessellon/Tessellon", "--method",
                   "org.freedesktop.Application.Activate", "{}"});
    EXPECT_TRUE(waitUntilOpen()) << "a start by the desktop is answered";
}

TEST_F(LifecycleTest, endsWellOnBothSignals) {
    useDesktop();
    for (const int number : {SIGINT, SIGTERM}) {
        program().start();
        program().process().signal(number);
        EXPECT_EQ(program().process().waitForEnd(patience), endedWell) << "signal " << number;
    }
    program().start();
}

// Killed at any moment, the program leaves a whole file: the old one or the new one.
TEST_F(LifecycleTest, killedWhileItSnapsItLeavesWholeSettings) {
    useDesktop();
    constexpr int rounds = 12;
    constexpr int longestLife = 60;  // milliseconds
    std::minstd_rand random(20);     // NOLINT(cert-msc51-cpp): the same moments in every run
    std::uniform_int_distribution<int> life(0, longestLife);
    program().start();
    const xcb_window_t window = startClock(original);
    ASSERT_EQ(snap(window, Held::controlAlt, Key::i, topRight), topRight);
    program().waitUntilIdle();
    for (int round = 0; round < rounds; ++round) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(life(random));
        do {
            desktop().keyboard().combination(Held::controlAlt, Key::left);
            desktop().keyboard().combination(Held::controlAlt, Key::u);
            desktop().keyboard().combination(Held::controlAlt, Key::backspace);
        } while (std::chrono::steady_clock::now() < end);
        program().process().kill();
        const auto settings = program().settings();
        ASSERT_TRUE(settings.has_value()) << "round " << round;
        const auto& memory = std::get<StoredData>(settings->at("restoreMemory"));
        EXPECT_TRUE(nlohmann::json::accept(memory.bytes)) << memory.bytes;
        program().start();
    }
    for (const auto& entry :
         std::filesystem::directory_iterator(program().settingsFile().parent_path())) {
        EXPECT_EQ(entry.path(), program().settingsFile()) << "nothing was unreadable or left over";
    }
    EXPECT_EQ(snap(window, Held::controlAlt, Key::i, topRight), topRight);
}

class WithoutDisplayTest : public ::testing::Test {
  protected:
    ProcessEnd run(const std::vector<std::string>& arguments, const Environment& environment = {}) {
        ProcessOptions options;
        options.environment = environment;
        options.environment["HOME"] = ::testing::TempDir();
        options.environment["XDG_CONFIG_HOME"] = ::testing::TempDir() + "tessellon-no-display";
        const std::filesystem::path folder =
            ::testing::TempDir() + "tessellon-no-display-" + std::to_string(getpid());
        std::filesystem::create_directories(folder);
        options.standardOutput = folder / "out";
        options.standardError = folder / "err";
        std::vector<std::string> command{programPath()};
        command.insert(command.end(), arguments.begin(), arguments.end());
        Process process(command, options);
        const ProcessEnd end = process.waitForEnd(patience).value_or(ProcessEnd{});
        said_ = fileContents(folder / "out");
        complained_ = fileContents(folder / "err");
        std::filesystem::remove_all(folder);
        return end;
    }

    std::string said_;
    std::string complained_;
};

TEST_F(WithoutDisplayTest, helpAndVersionAreGiven) {
    EXPECT_EQ(run({"--help"}), endedWell);
    EXPECT_NE(said_.find("tessellon"), std::string::npos);
    EXPECT_EQ(complained_, "");
    EXPECT_EQ(run({"--version"}), endedWell);
    EXPECT_NE(said_.find_first_of("0123456789"), std::string::npos);
    EXPECT_EQ(complained_, "");
}

TEST_F(WithoutDisplayTest, mistakesAndAMissingDisplayAreExplained) {
    const auto refused = [&](const ProcessEnd& end) {
        return end.exitCode.value_or(0) != 0 && !complained_.empty() && said_.empty();
    };
    EXPECT_TRUE(refused(run({})));
    EXPECT_TRUE(refused(run({}, {{"DISPLAY", ":99999"}})));
    EXPECT_TRUE(refused(run({"--no-such-option"})));
    EXPECT_TRUE(refused(run({}, {{"WAYLAND_DISPLAY", "wayland-0"}})));
    EXPECT_NE(complained_.find("X11"), std::string::npos) << complained_;
}

}  // namespace
}  // namespace tessellon::desktop
