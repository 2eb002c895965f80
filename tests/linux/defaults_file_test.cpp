// The settings file with everything that people, programs and disks may do to it.
#include "platform/linux/defaults_file.h"

#include "fakes/stored_text.h"
#include "linux/property_list_document.h"
#include "linux/temporary_folder.h"
#include "platform/memory/manual_run_loop.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tessellon {
namespace {

namespace fs = std::filesystem;

class DefaultsFileTest : public testing::Test {
  protected:
    fs::path configFolder() const { return temporary_.path() / "config" / "tessellon"; }
    fs::path path() const { return configFolder() / "defaults.plist"; }

    DefaultsFile& open() {
        file_.reset();
        file_ = std::make_unique<DefaultsFile>(loop_, path());
        subscription_ = file_->changed().subscribe(
            [this](std::string_view key) { changes_.emplace_back(key); });
        return *file_;
    }

    /// What a program started now would read.
    PropertyDictionary onDisk() const {
        const auto tree = parsePropertyList(readFile(path()));
        return tree ? propertyDictionary(tree.get()) : PropertyDictionary();
    }

    std::vector<fs::path> aside() const { return filesWith(configFolder(), ".unreadable-"); }

    void settle() { loop_.advance(Seconds(0.5)); }

    TemporaryFolder temporary_;
    ManualRunLoop loop_;
    std::unique_ptr<DefaultsFile> file_;
    Token subscription_;
    std::vector<std::string> changes_;
};

TEST_F(DefaultsFileTest, ChangesOfOneTurnAreWrittenTogetherAndPrivately) {
    auto& defaults = open();
    defaults.registerDefaults({{"padding", 8.0}});
    defaults.setDouble("gap", 12.5);
    defaults.setString("ignored", "a\nb");
    EXPECT_FALSE(fs::exists(path())) << "written before the turn was over";
    loop_.runTurn();

    EXPECT_EQ(onDisk(), (PropertyDictionary{{"gap", 12.5}, {"ignored", std::string("a\nb")}}));
    struct stat status {};
    ASSERT_EQ(stat(path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    ASSERT_EQ(stat(configFolder().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);

    defaults.removeObject("gap");
    loop_.runTurn();
    EXPECT_EQ(open().doubleForKey("gap"), 0);
    EXPECT_EQ(file_->stringForKey("ignored"), "a\nb");
    EXPECT_EQ(filesWith(configFolder(), "defaults").size(), 1U);
}

TEST_F(DefaultsFileTest, AChangeTakenBackInTheSameTurnLeavesTheFileAlone) {
    auto& defaults = open();
    defaults.setDouble("gap", 8);
    loop_.runTurn();
    const auto before = fileStamp(path());
    ASSERT_TRUE(before);
    defaults.setDouble("padding", 5);
    defaults.removeObject("padding");
    loop_.runTurn();
    EXPECT_EQ(fileStamp(path()), before);
}

TEST_F(DefaultsFileTest, FlushAndTheEndWriteAtOnce) {
    open().setBool("paused", true);
    file_->flush();
    EXPECT_EQ(onDisk().count("paused"), 1U);
    file_->setBool("cycle", false);
    file_.reset();
    EXPECT_EQ(onDisk().count("cycle"), 1U);
}

TEST_F(DefaultsFileTest, EntriesNobodyUsesGoBackAsTheyCame) {
    writeFile(path(), propertyListDocument(
                          "<dict><key>when</key><date>2020-01-02T03:04:05Z</date>"
                          "<key>gap</key><string>wide</string>"
                          "<key>huge</key><integer>18446744073709551615</integer></dict>"));
    auto& defaults = open();
    EXPECT_EQ(defaults.stringForKey("gap"), "wide");
    defaults.setBool("cycle", false);
    loop_.runTurn();
    const auto text = readFile(path());
    for (const auto* part : {"<date>2020-01-02T03:04:05Z</date>", "<string>wide</string>",
                             "<integer>18446744073709551615</integer>", "<key>cycle</key>"}) {
        EXPECT_NE(text.find(part), std::string::npos) << part << " is not in " << text;
    }
}

TEST_F(DefaultsFileTest, WhatCannotBeReadIsMovedAsideAndKept) {
    const std::vector<std::string> unreadable{"", "bplist00garbage", std::string("\0\1\2", 3),
                                              propertyListDocument("<array/>"),
                                              propertyListDocument("<dict><key>gap</key><re")};
    for (const auto& bytes : unreadable) {
        fs::remove_all(configFolder());
        writeFile(path(), bytes);
        testing::internal::CaptureStderr();
        auto& defaults = open();
        const auto said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(defaults.objectForKey("gap"), std::nullopt);
        ASSERT_EQ(aside().size(), 1U) << bytes.substr(0, 40);
        EXPECT_EQ(readFile(aside().front()), bytes);
        EXPECT_NE(said.find(aside().front().string()), std::string::npos) << said;
        EXPECT_FALSE(fs::exists(path()));
        defaults.setDouble("gap", 3);
        loop_.runTurn();
        EXPECT_EQ(onDisk(), (PropertyDictionary{{"gap", 3.0}}));
    }
    for (int i = 0; i < 3; ++i) {  // within one second: the names must differ
        file_.reset();
        writeFile(path(), std::to_string(i));
        open();
    }
    EXPECT_EQ(aside().size(), 4U);
}

TEST_F(DefaultsFileTest, AHugeFileIsMovedAsideUnread) {
    writeFile(path(), "");
    fs::resize_file(path(), std::uintmax_t{200} * 1024 * 1024 * 1024);
    open().setDouble("gap", 3);
    loop_.runTurn();
    EXPECT_EQ(onDisk(), (PropertyDictionary{{"gap", 3.0}}));
    EXPECT_EQ(aside().size(), 1U);
}

TEST_F(DefaultsFileTest, FoldersPipesAndLinksInTheFilesPlaceAreMovedAside) {
    fs::create_directories(path() / "inner");
    open().setBool("a", true);
    loop_.runTurn();
    EXPECT_EQ(onDisk().count("a"), 1U);
    ASSERT_EQ(aside().size(), 1U);
    EXPECT_TRUE(fs::exists(aside().front() / "inner"));

    file_.reset();
    fs::remove(path());
    ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
    open().setBool("b", true);
    loop_.runTurn();
    EXPECT_EQ(onDisk().count("b"), 1U);

    file_.reset();
    fs::remove(path());
    const auto elsewhere = temporary_.path() / "precious";
    fs::create_directory(elsewhere);
    fs::create_symlink(elsewhere, path());
    open().setBool("c", true);
    loop_.runTurn();
    EXPECT_EQ(onDisk().count("c"), 1U);
    EXPECT_TRUE(fs::is_directory(elsewhere));

    file_.reset();
    fs::remove(path());
    fs::create_symlink(path(), path());
    open().setBool("d", true);
    loop_.runTurn();
    EXPECT_EQ(onDisk().count("d"), 1U);
    EXPECT_EQ(aside().size(), 4U);
}

TEST_F(DefaultsFileTest, ALinkStaysALinkAndItsTargetIsWritten) {
    const auto target = temporary_.path() / "dotfiles" / "settings.plist";
    writeFile(target, propertyListDocument("<dict><key>gap</key><real>4</real></dict>"));
    fs::create_directories(configFolder());
    fs::create_symlink("../../dotfiles/settings.plist", path());
    auto& defaults = open();
    EXPECT_EQ(defaults.doubleForKey("gap"), 4);
    defaults.setDouble("gap", 5);
    loop_.runTurn();
    EXPECT_TRUE(fs::is_symlink(path()));
    EXPECT_NE(readFile(target).find("<real>5</real>"), std::string::npos);

    loop_.runTurn();
    changes_.clear();
    writeFile(target, propertyListDocument("<dict><key>gap</key><real>6</real></dict>"));
    loop_.runTurn();
    EXPECT_EQ(changes_, std::vector<std::string>{"gap"});

    fs::remove_all(target.parent_path());  // the link leads nowhere now
    defaults.setDouble("gap", 7);
    loop_.runTurn();
    EXPECT_EQ(onDisk(), (PropertyDictionary{{"gap", 7.0}}));
    EXPECT_TRUE(fs::is_symlink(path()));
}

TEST_F(DefaultsFileTest, AnEditByHandIsReadAndOnlyWhatChangedIsTold) {
    auto& defaults = open();
    defaults.setDouble("gap", 1);
    defaults.setBool("cycle", true);
    defaults.setString("gone", "soon");
    loop_.runTurn();
    loop_.runTurn();
    changes_.clear();

    writeFile(path(),
              propertyListDocument("<dict><key>gap</key><real>2</real><key>cycle</key><true/>"
                                   "<key>new</key><string>x</string></dict>"));
    loop_.runTurn();
    std::sort(changes_.begin(), changes_.end());
    EXPECT_EQ(changes_, (std::vector<std::string>{"gap", "gone", "new"}));
    EXPECT_EQ(defaults.doubleForKey("gap"), 2);

    // As editors save: a new file under another name, then renamed over the old one.
    changes_.clear();
    writeFile(configFolder() / "edit",
              propertyListDocument("<dict><key>gap</key><real>3</real></dict>"));
    fs::rename(configFolder() / "edit", path());
    loop_.runTurn();
    EXPECT_EQ(defaults.doubleForKey("gap"), 3);

    changes_.clear();
    defaults.setDouble("padding", 9);  // the watch has survived, and our own write is no edit
    loop_.runTurn();
    loop_.runTurn();
    EXPECT_EQ(changes_, std::vector<std::string>{"padding"});
}

TEST_F(DefaultsFileTest, OurUnwrittenChangesWinOverAnEdit) {
    auto& defaults = open();
    defaults.setDouble("gap", 1);
    defaults.setDouble("padding", 1);
    loop_.runTurn();
    loop_.runTurn();
    defaults.setDouble("gap", 2);
    defaults.removeObject("padding");
    writeFile(path(), propertyListDocument(
                          "<dict><key>gap</key><real>7</real><key>padding</key><real>7</real>"
                          "<key>masterRatio</key><real>7</real></dict>"));
    loop_.runTurn();
    loop_.runTurn();
    EXPECT_EQ(onDisk(), (PropertyDictionary{{"gap", 2.0}, {"masterRatio", 7.0}}));
    EXPECT_EQ(defaults.doubleForKey("masterRatio"), 7);
}

TEST_F(DefaultsFileTest, AnUnreadableEditIsKeptAndOurValuesComeBack) {
    auto& defaults = open();
    defaults.setDouble("gap", 5);
    loop_.runTurn();
    loop_.runTurn();
    changes_.clear();
    testing::internal::CaptureStderr();
    writeFile(path(), "<plist><dict><key>gap</ke");
    loop_.runTurn();
    const auto said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(onDisk(), (PropertyDictionary{{"gap", 5.0}}));
    ASSERT_EQ(aside().size(), 1U);
    EXPECT_EQ(readFile(aside().front()), "<plist><dict><key>gap</ke");
    EXPECT_NE(said.find(aside().front().string()), std::string::npos) << said;
    EXPECT_TRUE(changes_.empty());
}

TEST_F(DefaultsFileTest, ADeletedFileAndADeletedFolderComeBack) {
    auto& defaults = open();
    defaults.setDouble("gap", 5);
    loop_.runTurn();
    loop_.runTurn();
    testing::internal::CaptureStderr();
    fs::remove(path());
    loop_.runTurn();
    settle();
    EXPECT_EQ(onDisk(), (PropertyDictionary{{"gap", 5.0}}));
    fs::remove_all(configFolder().parent_path());
    loop_.runTurn();
    settle();
    EXPECT_EQ(onDisk(), (PropertyDictionary{{"gap", 5.0}}));
    const auto said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 2) << said;

    changes_.clear();
    writeFile(path(), propertyListDocument("<dict><key>gap</key><real>6</real></dict>"));
    loop_.runTurn();
    EXPECT_EQ(changes_, std::vector<std::string>{"gap"}) << "the new folder is not watched";
}

TEST_F(DefaultsFileTest, AFileThatIsAwayForAMomentIsLeftToWhoeverReplacesIt) {
    auto& defaults = open();
    defaults.setDouble("gap", 5);
    loop_.runTurn();
    loop_.runTurn();
    fs::rename(path(), configFolder() / "backup");
    loop_.runTurn();
    writeFile(path(), propertyListDocument("<dict><key>gap</key><real>6</real></dict>"));
    loop_.runTurn();
    settle();
    EXPECT_EQ(onDisk(), (PropertyDictionary{{"gap", 6.0}}));
    EXPECT_EQ(defaults.doubleForKey("gap"), 6);
}

TEST_F(DefaultsFileTest, WhenWritingIsImpossibleItIsSaidOnceAndTriedAgain) {
    writeFile(configFolder(), "a file where the folder should be");
    testing::internal::CaptureStderr();
    auto& defaults = open();
    for (int i = 1; i < 4; ++i) {
        defaults.setDouble("gap", i);
        loop_.runTurn();
    }
    const auto said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    EXPECT_EQ(defaults.doubleForKey("gap"), 3);
    fs::remove(configFolder());
    defaults.setDouble("padding", 4);
    loop_.runTurn();
    EXPECT_EQ(onDisk(), (PropertyDictionary{{"gap", 3.0}, {"padding", 4.0}}));
}

TEST_F(DefaultsFileTest, AFullDiskLosesNothing) {
    auto& defaults = open();
    defaults.setDouble("gap", 5);
    loop_.runTurn();
    rlimit previous{};
    getrlimit(RLIMIT_FSIZE, &previous);
    const rlimit tiny{100, previous.rlim_max};
    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &tiny);
    defaults.setString("ignored", std::string(5000, 'x'));
    loop_.runTurn();
    setrlimit(RLIMIT_FSIZE, &previous);
    std::signal(SIGXFSZ, previousHandler);
    EXPECT_EQ(onDisk(), (PropertyDictionary{{"gap", 5.0}}));
    EXPECT_EQ(filesWith(configFolder(), "defaults").size(), 1U) << "a temporary file is left";
    file_->flush();
    EXPECT_EQ(onDisk().count("ignored"), 1U);
}

/// Without the rights of the superuser, for whom nothing is unreadable.
TEST_F(DefaultsFileTest, AFileAndAFolderWithoutPermission) {
    constexpr uid_t nobody = 65534;
    open().setDouble("gap", 5);
    file_.reset();
    const bool wasRoot = geteuid() == 0;
    if (wasRoot) {
        fs::permissions(temporary_.path(), fs::perms::all);
        fs::permissions(configFolder().parent_path(), fs::perms::all);
        ASSERT_EQ(chown(configFolder().c_str(), nobody, nobody), 0);
        ASSERT_EQ(seteuid(nobody), 0);
    } else {
        fs::permissions(path(), fs::perms::none);
    }
    testing::internal::CaptureStderr();
    open().setDouble("gap", 6);
    loop_.runTurn();
    EXPECT_EQ(onDisk(), (PropertyDictionary{{"gap", 6.0}}));
    EXPECT_EQ(aside().size(), 1U);

    fs::permissions(configFolder(), fs::perms::owner_read | fs::perms::owner_exec);
    file_->setDouble("gap", 7);
    loop_.runTurn();
    EXPECT_EQ(onDisk(), (PropertyDictionary{{"gap", 6.0}}));
    fs::permissions(configFolder(), fs::perms::owner_all);
    file_->setDouble("padding", 1);
    loop_.runTurn();
    EXPECT_EQ(onDisk(), (PropertyDictionary{{"gap", 7.0}, {"padding", 1.0}}));
    const auto said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 2) << said;
    file_.reset();
    if (wasRoot) {
        ASSERT_EQ(seteuid(0), 0);
    }
}

TEST_F(DefaultsFileTest, ValuesKeptAsideAreExactAndKeptOnce) {
    auto& defaults = open();
    const std::string json = "[{\"broken\":";
    defaults.setObject("keymap", dataOf(json));
    defaults.setString("../odd key", "text");
    testing::internal::CaptureStderr();
    defaults.keepAside("keymap");
    defaults.keepAside("keymap");
    defaults.keepAside("absent");
    defaults.keepAside("../odd key");
    const auto said = testing::internal::GetCapturedStderr();
    const auto kept = filesWith(configFolder(), "keymap.unreadable-");
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(kept.front().extension(), ".json");
    EXPECT_EQ(readFile(kept.front()), json);
    EXPECT_NE(said.find(kept.front().string()), std::string::npos) << said;
    const auto odd = filesWith(configFolder(), "odd_key.unreadable-");
    ASSERT_EQ(odd.size(), 1U);
    EXPECT_EQ(odd.front().extension(), ".plist");
    EXPECT_NE(readFile(odd.front()).find("<string>text</string>"), std::string::npos);

    defaults.setObject("keymap", PropertyData{'{'});
    open().keepAside("keymap");
    EXPECT_EQ(filesWith(configFolder(), "keymap.unreadable-").size(), 2U);
}

/// A process that changes its settings without end is killed at some moment, again and again.
TEST_F(DefaultsFileTest, AKilledProgramLeavesAWholeFile) {
    open().setObject("number", std::int64_t{0});
    file_.reset();
    std::int64_t last = 0;
    for (int round = 0; round < 60; ++round) {
        const auto child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            ManualRunLoop loop;
            DefaultsFile defaults(loop, path());
            for (auto number = last;; ++number) {
                defaults.setObject("number", number);
                const auto size = static_cast<std::size_t>(number * 7919 % 60'000);
                defaults.setObject("data", PropertyData(size, static_cast<std::uint8_t>(number)));
                loop.runTurn();
            }
        }
        usleep(static_cast<useconds_t>(1000 + round * 7919 % 9000));
        ASSERT_EQ(kill(child, SIGKILL), 0);
        ASSERT_EQ(waitpid(child, nullptr, 0), child);
        const auto values = onDisk();
        ASSERT_TRUE(values.contains("number")) << readFile(path());
        const auto number = std::get<std::int64_t>(values.at("number"));
        ASSERT_GE(number, last);
        if (number > 0) {
            ASSERT_EQ(values.at("data"),
                      PropertyValue(PropertyData(static_cast<std::size_t>(number * 7919 % 60'000),
                                                 static_cast<std::uint8_t>(number))));
        }
        last = number;
    }
    EXPECT_GT(last, 60);
    open();
    EXPECT_TRUE(aside().empty());
    EXPECT_TRUE(filesWith(configFolder(), ".tmp").empty()) << "leftovers are not cleaned up";
}

}  // namespace
}  // namespace tessellon
