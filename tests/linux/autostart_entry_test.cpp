// The entry for the login as it comes, goes, and is found changed by others.
#include "platform/linux/autostart_entry.h"

#include "linux/environment.h"
#include "linux/temporary_folder.h"
#include "platform/linux/autostart_file.h"
#include "platform/linux/desktop_entry.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tessellon {
namespace {

namespace fs = std::filesystem;
using Status = LoginItemStatus;

// One that can be run.
constexpr const char* program = "/bin/true";

class AutostartEntryTest : public testing::Test {
  protected:
    AutostartEntry item(const std::string& started = program) const {
        return {{own(), {temporary_.path() / "first", temporary_.path() / "second"}, {"XFCE"}},
                started};
    }
    fs::path own() const { return temporary_.path() / "config" / "autostart"; }
    fs::path ownFile() const { return item().path(); }
    fs::path systemFile(const char* folder) const {
        return temporary_.path() / folder / ownFile().filename();
    }

    static std::string entry(const std::string& lines = "", const std::string& exec = program) {
        return "[Desktop Entry]\nType=Application\nName=Tessellon\nExec=" + exec + "\n" + lines;
    }
    Status statusWith(const std::string& text) const {
        writeFile(ownFile(), text);
        return item().status();
    }

    const TemporaryFolder temporary_;
};

TEST_F(AutostartEntryTest, ComesAndGoes) {
    auto one = item();
    EXPECT_EQ(one.status(), Status::notRegistered);
    EXPECT_EQ(one.unregisterItem(), std::nullopt) << "what is not there need not go";
    std::vector<Status> told;
    const auto token = one.changed().subscribe([&] { told.push_back(one.status()); });
    EXPECT_EQ(one.registerItem(), std::nullopt);
    EXPECT_EQ(one.status(), Status::enabled);
    const auto text = readFile(ownFile());
    EXPECT_NE(text.find("TryExec=/bin/true\n"), std::string::npos) << text;
    const auto read = parseDesktopEntry(text);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->name, "Tessellon");
    EXPECT_EQ(read->program, program);
    EXPECT_EQ(filesWith(own(), "tmp"), std::vector<fs::path>{}) << "nothing else is left behind";

    EXPECT_EQ(one.unregisterItem(), std::nullopt);
    EXPECT_EQ(one.status(), Status::notRegistered);
    EXPECT_FALSE(fs::exists(ownFile()));
    EXPECT_EQ(told, (std::vector{Status::enabled, Status::notRegistered}));
}

TEST_F(AutostartEntryTest, TheEntryStartsAnyPath) {
    for (const auto& path :
         std::vector<std::string>{"/home/me/my programs/tessellon", "/opt/100%/f%U/tessellon",
                                  R"(/opt/a"b`c$d\e'f/tessellon)", "/opt/Größe/tessellon",
                                  "/opt/a;b#c=d/tessellon", "/opt/ends in space /tessellon "}) {
        EXPECT_EQ(item(path).registerItem(), std::nullopt) << path;
        const auto file = parseAutostartFile(readFile(ownFile()), {});
        ASSERT_TRUE(file) << path;
        auto started = file->program;
        // A launcher replaces field codes in what the file says.
        for (auto at = started.find("%%"); at != std::string::npos;
             at = started.find("%%", at + 1)) {
            started.erase(at, 1);
        }
        EXPECT_EQ(started, path);
        const auto before = readFile(ownFile());
        EXPECT_EQ(item(path).registerItem(), std::nullopt);
        EXPECT_EQ(readFile(ownFile()), before);
        EXPECT_EQ(item(path).unregisterItem(), std::nullopt);
    }
    for (const auto& path :
         std::vector<std::string>{"/opt/two\nlines", "/opt/\xFF", "relative", ""}) {
        const auto problem = item(path).registerItem();
        ASSERT_TRUE(problem) << path;
        EXPECT_FALSE(fs::exists(ownFile()));
    }
}

TEST_F(AutostartEntryTest, WhatADesktopHasSwitchedOffStaysSo) {
    for (const auto* off : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n",
                            "OnlyShowIn=KDE;LXQt;\n", "NotShowIn=GNOME;XFCE;\n"}) {
        EXPECT_EQ(statusWith(entry(off)), Status::requiresApproval) << off;
        const auto problem = item().registerItem();
        ASSERT_TRUE(problem) << off;
        EXPECT_NE(problem->find("startup settings"), std::string::npos);
        EXPECT_EQ(readFile(ownFile()), entry(off)) << "nothing was overridden";
        EXPECT_EQ(item().unregisterItem(), std::nullopt);
        EXPECT_EQ(item().status(), Status::notRegistered);
    }
    EXPECT_EQ(statusWith("[Desktop Entry]\nHidden=true\n"), Status::requiresApproval);
    for (const auto* on : {"Hidden=false\nX-GNOME-Autostart-enabled=true\n", "OnlyShowIn=XFCE;\n",
                           "NotShowIn=GNOME;\n", "X-GNOME-Autostart-enabled=perhaps\n"}) {
        EXPECT_EQ(statusWith(entry(on)), Status::enabled) << on;
    }
}

TEST_F(AutostartEntryTest, RegisteringCorrectsWhatStartsSomethingElseOrNothing) {
    EXPECT_EQ(statusWith(entry("", "env A=1 /bin/true")), Status::enabled);
    const auto own = readFile(ownFile());
    EXPECT_EQ(item().registerItem(), std::nullopt);
    EXPECT_EQ(readFile(ownFile()), own) << "it starts us already";

    EXPECT_EQ(statusWith(entry("", "/old/place/tessellon")), Status::enabled);
    EXPECT_EQ(item().registerItem(), std::nullopt);
    EXPECT_EQ(parseAutostartFile(readFile(ownFile()), {})->program, program);

    for (const auto& broken :
         {std::string(), std::string("Exec=/bin/true\n"), std::string("\0\xFF", 2),
          std::string("[Desktop Entry]\nType=Link\nURL=x\n"),
          std::string("[Desktop Entry]\nType=Application\n"), entry("", "\"open"),
          std::string(100000, '\n')}) {
        EXPECT_EQ(statusWith(broken), Status::notRegistered) << broken.substr(0, 40);
        EXPECT_EQ(item().registerItem(), std::nullopt);
        EXPECT_EQ(item().status(), Status::enabled);
    }
}

TEST_F(AutostartEntryTest, AnEntryWhoseProgramIsGoneIsNone) {
    const auto gone = (temporary_.path() / "gone").string();
    writeFile(temporary_.path() / "text", "not to be run");
    for (const auto& tried : {gone, temporary_.path().string(),
                              (temporary_.path() / "text").string(), std::string("no-such-name")}) {
        const auto dead = entry("TryExec=" + tried + "\n");
        EXPECT_EQ(statusWith(dead), Status::notRegistered) << tried;
        EXPECT_EQ(item().registerItem(), std::nullopt);
        EXPECT_EQ(readFile(ownFile()).find(tried), std::string::npos) << "not corrected";
        EXPECT_EQ(item().status(), Status::enabled);
        EXPECT_EQ(statusWith(dead + "Hidden=true\n"), Status::requiresApproval)
            << "the user's choice outlasts the program";
    }
    EXPECT_EQ(statusWith(entry("TryExec=true\n")), Status::enabled) << "found in PATH";

    fs::remove(ownFile());
    writeFile(systemFile("first"), entry("TryExec=" + gone + "\n"));
    EXPECT_EQ(item().status(), Status::notRegistered);
}

TEST_F(AutostartEntryTest, AnEntryForAllUsersCountsUnlessTheUserHasAnOwn) {
    writeFile(systemFile("second"), entry());
    EXPECT_EQ(item().status(), Status::enabled);
    writeFile(systemFile("first"), entry("Hidden=true\n"));
    EXPECT_EQ(item().status(), Status::notRegistered) << "the first of a name counts";
    EXPECT_EQ(item().registerItem(), std::nullopt);
    EXPECT_EQ(item().status(), Status::enabled);
    EXPECT_EQ(item().unregisterItem(), std::nullopt);
    EXPECT_FALSE(fs::exists(ownFile()));

    fs::remove(systemFile("first"));
    EXPECT_EQ(statusWith(entry("Hidden=true\n")), Status::requiresApproval);
    fs::remove(ownFile());
    EXPECT_EQ(item().unregisterItem(), std::nullopt);
    EXPECT_EQ(item().status(), Status::notRegistered) << "removed, not waiting for approval";
    EXPECT_NE(readFile(ownFile()).find("Hidden=true\n"), std::string::npos);
    EXPECT_TRUE(fs::exists(systemFile("second")));
    EXPECT_EQ(item().registerItem(), std::nullopt);
    EXPECT_EQ(item().status(), Status::enabled);

    EXPECT_EQ(item().unregisterItem(), std::nullopt);
    auto text = readFile(ownFile());
    text.replace(text.find("Hidden=true"), 11, "Hidden=false");
    EXPECT_EQ(statusWith(text), Status::enabled) << "switched on again by the desktop's settings";
}

TEST_F(AutostartEntryTest, SaysWhyItCannotBeDone) {
    const auto saysSomethingAbout = [this](const fs::path& path) {
        const auto problem = item().registerItem();
        EXPECT_NE(problem.value_or("").find(path.string()), std::string::npos)
            << problem.value_or("no problem");
    };
    fs::create_directories(ownFile());
    EXPECT_EQ(item().status(), Status::notRegistered);
    saysSomethingAbout(ownFile());
    EXPECT_TRUE(item().unregisterItem());
    fs::remove_all(own());

    ASSERT_EQ((fs::create_directories(own()), ::mkfifo(ownFile().c_str(), 0600)), 0);
    EXPECT_EQ(item().status(), Status::notRegistered) << "and does not wait for a writer";
    saysSomethingAbout(ownFile());
    fs::remove_all(own());

    fs::create_directories(own());
    fs::create_symlink("/dev/null", ownFile());
    saysSomethingAbout("/dev/null");
    fs::remove_all(own());

    writeFile(own(), "a file where the folder should be");
    EXPECT_EQ(item().status(), Status::notRegistered);
    saysSomethingAbout(own());
    EXPECT_EQ(item().unregisterItem(), std::nullopt);
    fs::remove(own());

    AutostartEntry homeless({{}, {temporary_.path() / "first"}, {}}, program);
    EXPECT_EQ(homeless.status(), Status::notRegistered);
    EXPECT_TRUE(homeless.registerItem());
    EXPECT_EQ(homeless.unregisterItem(), std::nullopt);

    if (::geteuid() != 0) {
        EXPECT_EQ(item().registerItem(), std::nullopt);
        fs::permissions(own(), fs::perms::owner_read | fs::perms::owner_exec);
        EXPECT_TRUE(item().unregisterItem());
        EXPECT_TRUE(item("/other/place/tessellon").registerItem());
        EXPECT_EQ(item().status(), Status::enabled);
        fs::permissions(own(), fs::perms::owner_all);
    }
}

TEST_F(AutostartEntryTest, ALinkStaysALink) {
    fs::create_directories(own());
    const auto kept = temporary_.path() / "kept" / "entry";
    fs::create_symlink(kept, ownFile());
    EXPECT_EQ(item().status(), Status::notRegistered);
    EXPECT_EQ(item().registerItem(), std::nullopt);
    EXPECT_TRUE(fs::is_symlink(ownFile()));
    EXPECT_TRUE(fs::is_regular_file(kept));
    EXPECT_EQ(item().status(), Status::enabled);
}

/// What a program that was started wrote when it ran; empty when it does not in a long time.
std::string waitForText(const fs::path& file) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!fs::exists(file) && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return readFile(file);
}

TEST_F(AutostartEntryTest, OpensWhatTheDesktopHasForItElseTheFolder) {
    const auto programs = temporary_.path() / "bin";
    const auto told = temporary_.path() / "told";
    const Environment path("PATH", programs.string());
    const auto install = [&](const std::string& name) {
        // Renamed once it is whole, so that whoever waits for it reads all of it.
        writeFile(programs / name, "#!/bin/sh\nPATH=/usr/bin:/bin\necho \"${0##*/} $*\" > '" +
                                       told.string() + ".new'\nmv '" + told.string() + ".new' '" +
                                       told.string() + "'\n");
        fs::permissions(programs / name, fs::perms::owner_all);
    };
    const auto opened = [&](const char* desktop) -> std::string {
        fs::remove(told);
        AutostartEntry entry({own(), {}, {"other", desktop}}, program);
        return entry.openSystemSettings() ? waitForText(told) : "nothing";
    };
    fs::create_directories(programs);
    EXPECT_EQ(opened("XFCE"), "nothing");
    install("xdg-open");
    EXPECT_EQ(opened("XFCE"), "xdg-open " + own().string() + "\n");
    EXPECT_TRUE(fs::is_directory(own()));
    install("xfce4-settings-manager");
    EXPECT_EQ(opened("XFCE"), "xfce4-settings-manager \n");
    install("xfce4-session-settings");
    EXPECT_EQ(opened("XFCE"), "xfce4-session-settings \n");
    install("kcmshell5");
    EXPECT_EQ(opened("KDE"), "kcmshell5 kcm_autostart\n");
    EXPECT_EQ(opened("sway"), "xdg-open " + own().string() + "\n");
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a dead child is left behind";
}

TEST_F(AutostartEntryTest, PlacesComeFromTheEnvironment) {
    const Environment own("XDG_CONFIG_HOME", "/own");
    const Environment system("XDG_CONFIG_DIRS", "/a:relative:/b");
    const Environment desktop("XDG_CURRENT_DESKTOP", "ubuntu::GNOME");
    const auto places = standardAutostartPlaces();
    EXPECT_EQ(places.own, "/own/autostart");
    EXPECT_EQ(places.system, (std::vector<fs::path>{"/a/autostart", "/b/autostart"}));
    EXPECT_EQ(places.desktops, (std::vector<std::string>{"ubuntu", "GNOME"}));
    system.set(std::nullopt);
    desktop.set(std::nullopt);
    EXPECT_EQ(standardAutostartPlaces().system, std::vector<fs::path>{"/etc/xdg/autostart"});
    EXPECT_TRUE(standardAutostartPlaces().desktops.empty());
}

}  // namespace
}  // namespace tessellon
