#include "platform/linux/base_directories.h"

#include "platform/linux/defaults_file.h"

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

using Paths = std::vector<std::filesystem::path>;

class BaseDirectoriesTest : public testing::Test {
  protected:
    void SetUp() override {
        for (const auto* name :
             {"HOME", "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS", "XDG_DATA_HOME", "XDG_DATA_DIRS"}) {
            if (const char* value = std::getenv(name)) {
                before_[name] = value;
            }
            unsetenv(name);
        }
        setenv("HOME", "/home/me", 1);
    }
    void TearDown() override {
        for (const auto* name :
             {"HOME", "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS", "XDG_DATA_HOME", "XDG_DATA_DIRS"}) {
            unsetenv(name);
        }
        for (const auto& [name, value] : before_) {
            setenv(name.c_str(), value.c_str(), 1);
        }
    }

  private:
    std::map<std::string, std::string> before_;
};

TEST_F(BaseDirectoriesTest, variablesCountWhenTheyHoldAbsolutePaths) {
    EXPECT_EQ(standardDefaultsPath(), "/home/me/.config/tessellon/defaults.plist");
    setenv("XDG_CONFIG_HOME", "/elsewhere", 1);
    EXPECT_EQ(standardDefaultsPath(), "/elsewhere/tessellon/defaults.plist");
    for (const auto* ignored : {"", "relative/path"}) {
        setenv("XDG_CONFIG_HOME", ignored, 1);
        EXPECT_EQ(configFolder(), "/home/me/.config");
    }
    unsetenv("HOME");
    ASSERT_TRUE(homeFolder()) << "the user database was not asked";
    EXPECT_EQ(configFolder(), *homeFolder() / ".config");
}

TEST_F(BaseDirectoriesTest, foldersOfAllUsersComeInTheirOrder) {
    EXPECT_EQ(dataFolders(), (Paths{"/home/me/.local/share", "/usr/local/share", "/usr/share"}));
    setenv("XDG_DATA_HOME", "/own", 1);
    setenv("XDG_DATA_DIRS", "/a::relative:/b/:", 1);
    EXPECT_EQ(dataFolders(), (Paths{"/own", "/a", "/b/"}));

    EXPECT_EQ(systemConfigFolders(), Paths{"/etc/xdg"});
    setenv("XDG_CONFIG_DIRS", "/b:/a", 1);
    EXPECT_EQ(systemConfigFolders(), (Paths{"/b", "/a"}));
}

}  // namespace
}  // namespace tessellon
