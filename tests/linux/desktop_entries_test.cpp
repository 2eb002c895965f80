// Which installed application a window, an identifier or a name stands for.
#include "platform/linux/desktop_entries.h"

#include "linux/environment.h"
#include "linux/temporary_folder.h"
#include "platform/linux/desktop_entry.h"
#include "platform/linux/process_info.h"
#include "platform/memory/manual_run_loop.h"

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tessellon {
namespace {

namespace fs = std::filesystem;

std::string entryText(const std::string& lines) {
    return "[Desktop Entry]\nType=Application\n" + lines + "\n";
}

class DesktopEntriesTest : public testing::Test {
  protected:
    fs::path own() const { return temporary_.path() / "own"; }
    fs::path system() const { return temporary_.path() / "system"; }
    fs::path program(const std::string& name) const { return temporary_.path() / "bin" / name; }

    void add(const fs::path& file, const std::string& lines) const {
        writeFile(file, entryText(lines));
    }
    void addProgram(const std::string& name) const {
        writeFile(program(name), "#!/bin/sh\n");
        fs::permissions(program(name), fs::perms::owner_all);
    }

    std::string idFor(const ApplicationHints& hints) const {
        const auto found = entries_.lookUp(hints);
        return found ? found->identifier : "";
    }
    std::string idNamed(const std::string& name) const {
        const auto found = entries_.named(name);
        return found ? found->identifier : "";
    }
    std::string idForClass(const std::string& windowClass) const {
        return idFor({"", "", windowClass, ""});
    }
    std::string idForProgram(const std::string& name) const {
        return idFor({"", "", "", fs::canonical(program(name)).string()});
    }

    TemporaryFolder temporary_;
    ManualRunLoop loop_;
    DesktopEntries entries_{loop_, {{own(), ApplicationFolder::Owner::user}, {system()}}};
    Environment path_{"PATH", (temporary_.path() / "bin").string()};
    Environment language_{"LANGUAGE", "de:fr"};
    Environment locale_{"LC_ALL", "de_DE.UTF-8"};
};

TEST_F(DesktopEntriesTest, TheHintsCountInTheirOrder) {
    addProgram("runner");
    add(system() / "org.example.Gtk.desktop", "Name=a");
    add(system() / "starter.desktop", "Name=b\nStartupWMClass=Started");
    add(system() / "Named.desktop", "Name=c");
    add(system() / "runs.desktop", "Name=d\nExec=runner --x %U");
    ApplicationHints hints{"org.example.Gtk", "Started", "Named",
                           fs::canonical(program("runner")).string()};
    EXPECT_EQ(idFor(hints), "org.example.Gtk");
    hints.gtkApplicationId = "org.example.NotInstalled";
    EXPECT_EQ(idFor(hints), "starter");
    hints.windowInstance = "main";
    EXPECT_EQ(idFor(hints), "Named");
    hints.windowClass = "Nothing";
    EXPECT_EQ(idFor(hints), "runs");
    hints.executable = "/nowhere/runner";
    EXPECT_EQ(idFor(hints), "");
    EXPECT_EQ(idFor({}), "");
}

TEST_F(DesktopEntriesTest, ClassesMatchExactlyFirstThenInAnyCaseThenByTheLastPartOfAName) {
    add(system() / "one.desktop", "StartupWMClass=tool");
    add(system() / "two.desktop", "StartupWMClass=Tool");
    add(system() / "org.example.Viewer.desktop", "Name=x");
    add(system() / "org.example.Twin.desktop", "Name=x");
    add(system() / "com.other.Twin.desktop", "Name=x");
    add(system() / "some.thing.desktop", "Name=x");
    EXPECT_EQ(idForClass("Tool"), "two");
    EXPECT_EQ(idForClass("TOOL"), "one");
    EXPECT_EQ(idForClass("viewer"), "org.example.Viewer");
    EXPECT_EQ(idForClass("org.example.viewer"), "org.example.Viewer");
    EXPECT_EQ(idForClass("Twin"), "") << "two applications are called so";
    EXPECT_EQ(idForClass("thing"), "") << "not a name in reverse-DNS form";
}

TEST_F(DesktopEntriesTest, AWebApplicationIsNotTakenForItsBrowser) {
    add(system() / "browser.desktop", "Name=Browser\nStartupWMClass=Browser");
    add(system() / "mail.desktop", "Name=Mail\nStartupWMClass=crx_mail");
    EXPECT_EQ(idFor({"", "crx_mail", "Browser", ""}), "mail");
    EXPECT_EQ(idFor({"", "browser", "Browser", ""}), "browser");
}

TEST_F(DesktopEntriesTest, TheFirstFolderWinsAndHiddenMeansNotThere) {
    add(system() / "editor.desktop", "Name=System");
    add(own() / "editor.desktop", "Name=Own\nName[fr]=À moi");
    add(system() / "removed.desktop", "Name=x\nStartupWMClass=Removed");
    writeFile(own() / "removed.desktop", entryText("Name=x\nHidden=true"));
    add(system() / "kde4" / "deep.desktop", "Name=x");
    add(system() / "a-silent.desktop", "Name=x\nStartupWMClass=Same\nNoDisplay=true");
    add(system() / "b-shown.desktop", "Name=x\nStartupWMClass=Same");
    add(system() / "quiet.desktop", "Name=x\nNoDisplay=true");
    writeFile(system() / "link.desktop", "[Desktop Entry]\nType=Link\nName=x\nURL=x");
    const auto editor = entries_.lookUp({"", "", "editor", ""});
    ASSERT_TRUE(editor);
    EXPECT_EQ(editor->name, "À moi");
    EXPECT_EQ(idForClass("Removed"), "");
    EXPECT_EQ(idForClass("kde4-deep"), "kde4-deep");
    EXPECT_EQ(idForClass("Same"), "b-shown");
    EXPECT_EQ(idForClass("quiet"), "quiet");
    EXPECT_EQ(idForClass("link"), "");
}

TEST_F(DesktopEntriesTest, ProgramsAreFoundThroughPathLinksAndEnvButNotThroughLaunchers) {
    for (const auto* name : {"real", "suite", "sh", "python3.11", "tried"}) {
        addProgram(name);
    }
    fs::create_symlink("real", program("alias"));
    fs::create_symlink("python3.11", program("scripted"));
    add(system() / "a.desktop", "Exec=env -u X LANG=C \"alias\" %F");
    add(system() / "b.desktop", "Exec=sh -c something\nTryExec=tried");
    add(system() / "c.desktop", "Exec=" + program("python3.11").string() + " x.py");
    add(system() / "d.desktop", "Exec=scripted");
    add(system() / "e.desktop", "Exec=suite --calc");
    add(system() / "suite.desktop", "Exec=suite --start --all");
    add(system() / "f.desktop", "Exec=\"unfinished");
    EXPECT_EQ(idForProgram("real"), "a");
    EXPECT_EQ(idForProgram("tried"), "b");
    EXPECT_EQ(idForProgram("sh"), "");
    EXPECT_EQ(idForProgram("python3.11"), "");
    EXPECT_EQ(idForProgram("suite"), "suite");
}

TEST_F(DesktopEntriesTest, NewEntriesAreNoticedAfterAWhile) {
    EXPECT_EQ(idForClass("late"), "");
    add(own() / "late.desktop", "Name=x");
    loop_.advance(Seconds(1));
    EXPECT_EQ(idForClass("late"), "") << "the folders were looked at too soon";
    loop_.advance(Seconds(1.5));
    EXPECT_EQ(idForClass("late"), "late");
    fs::remove(own() / "late.desktop");
    loop_.advance(Seconds(2.5));
    EXPECT_EQ(idForClass("late"), "");
}

TEST_F(DesktopEntriesTest, IdentifiersAndNamesFindWhatTheyAreExactly) {
    add(system() / "org.example.Files.desktop",
        "Name=Files\nName[de]=Dateien\nIcon=folder\nIcon[de]=ordner");
    add(system() / "quiet.desktop", "Name=Quiet\nNoDisplay=true");
    writeFile(system() / "gone.desktop", entryText("Name=Gone\nHidden=true"));
    EXPECT_EQ(entries_.withIdentifier("org.example.Files"),
              (InstalledApplication{"org.example.Files", "Dateien", "ordner"}));
    EXPECT_EQ(entries_.lookUp({"org.example.Files", "", "", ""}),
              entries_.withIdentifier("org.example.Files"));
    EXPECT_TRUE(entries_.withIdentifier("quiet"));
    for (const auto* missing : {"", "gone", "org.example.files", "org.example.Files.desktop"}) {
        EXPECT_EQ(entries_.withIdentifier(missing), std::nullopt) << missing;
    }
    EXPECT_EQ(idNamed("Dateien"), "org.example.Files");
    EXPECT_EQ(idNamed("Files"), "org.example.Files");
    EXPECT_EQ(idNamed("Quiet"), "quiet");
    for (const auto* missing : {"", "files", "File", "Gone", "org.example.Files"}) {
        EXPECT_EQ(idNamed(missing), "") << missing;
    }
}

TEST_F(DesktopEntriesTest, OfOneNameTheShownOneCountsThenTheOneForEveryone) {
    add(own() / "a-own.desktop", "Name=Viewer");
    EXPECT_EQ(idNamed("Viewer"), "a-own");
    add(system() / "b-everyone.desktop", "Name=Viewer");
    add(system() / "a-helper.desktop", "Name=Viewer\nNoDisplay=true");
    loop_.advance(Seconds(2.5));
    EXPECT_EQ(idNamed("Viewer"), "b-everyone");
}

TEST_F(DesktopEntriesTest, MenusShowWhatThisDesktopCanRunByName) {
    const Environment desktop("XDG_CURRENT_DESKTOP", "Sub:XFCE");
    addProgram("there");
    add(system() / "y.desktop", "Name=bild\nTerminal=true\nTryExec=there");
    add(system() / "x.desktop", "Name=Alt");
    add(own() / "w.desktop", "Name=Zug\nOnlyShowIn=GNOME;XFCE;");
    for (const auto* hidden : {"OnlyShowIn=GNOME;", "OnlyShowIn=", "NotShowIn=KDE;Sub;",
                               "NoDisplay=true", "Hidden=true", "TryExec=not-there"}) {
        add(system() / (std::string(hidden) + ".desktop"), std::string("Name=No\n") + hidden);
    }
    add(system() / "nameless.desktop", "Icon=x");
    std::vector<std::string> names;
    for (const auto& application : entries_.shown()) {
        names.push_back(application.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Alt", "bild", "Zug"}));
}

TEST(ApplicationFoldersTest, ExportsFollowUnlessTheSessionNamesThem) {
    using Owner = ApplicationFolder::Owner;
    const Environment home("HOME", "/home/me");
    const Environment own("XDG_DATA_HOME", "");
    const Environment shared("XDG_DATA_DIRS",
                             "/home/me/.local/share/flatpak/exports/share:/usr/local/share/:"
                             "/usr/share:/usr/share/");
    const ApplicationFolder ownExports{"/home/me/.local/share/flatpak/exports/share/applications",
                                       Owner::user};
    const ApplicationFolder snaps{"/var/lib/snapd/desktop/applications", Owner::everyone};
    EXPECT_EQ(applicationFolders(),
              (std::vector<ApplicationFolder>{
                  {"/home/me/.local/share/applications", Owner::user},
                  ownExports,
                  {"/usr/local/share/applications", Owner::everyone},
                  {"/usr/share/applications", Owner::everyone},
                  {"/var/lib/flatpak/exports/share/applications", Owner::everyone},
                  snaps}));
    const Environment few("XDG_DATA_DIRS", "/var/lib/snapd/desktop");
    const auto folders = applicationFolders();
    ASSERT_EQ(folders.size(), 4U);
    EXPECT_EQ(folders[1], snaps);
    EXPECT_EQ(folders[2], ownExports);
}

TEST_F(DesktopEntriesTest, DamagedFilesAreLeftOut) {
    fs::create_directories(own() / "folder.desktop");
    for (int i = 0; i < 20; ++i) {
        fs::create_symlink("..", own() / ("circle" + std::to_string(i)));
    }
    writeFile(own() / "binary.desktop", std::string("\0\xFF[", 3));
    writeFile(own() / "huge.desktop", "");
    fs::resize_file(own() / "huge.desktop", std::uintmax_t{1} << 40);
    add(own() / "latin1.desktop", "Name=\xE9");
    add(own() / "whole.desktop", "Name=x");
    EXPECT_EQ(idForClass("whole"), "whole");
    EXPECT_EQ(entries_.lookUp({"", "", "latin1", ""})->name, "latin1");
    EXPECT_EQ(idForClass("huge"), "");
}

TEST(ProcessInfoTest, TheProgramOfAProcess) {
    EXPECT_EQ(processExecutable(getpid()), fs::read_symlink("/proc/self/exe"));
    EXPECT_EQ(processExecutable(0), std::nullopt);
    EXPECT_EQ(processExecutable(-5), std::nullopt);

    // Of a program whose file is deleted while it runs.
    const TemporaryFolder folder;
    const auto copy = folder.path() / "sleeper";
    fs::copy_file("/bin/sleep", copy);
    int ready[2] = {};
    ASSERT_EQ(pipe2(ready, O_CLOEXEC), 0);
    const auto child = fork();
    if (child == 0) {
        execl(copy.c_str(), "sleeper", "60", nullptr);
        _exit(1);
    }
    close(ready[1]);
    char byte = 0;
    EXPECT_EQ(read(ready[0], &byte, 1), 0);  // the child's end is closed: it runs the copy
    close(ready[0]);
    fs::remove(copy);
    EXPECT_EQ(processExecutable(child), copy);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_EQ(processExecutable(child), std::nullopt);
}

}  // namespace
}  // namespace tessellon
