// The folders that the environment names.
#include "platform/linux/base_directories.h"

#include "linux/environment.h"
#include "platform/linux/defaults_file.h"

#include <filesystem>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

using Paths = std::vector<std::filesystem::path>;

class BaseDirectoriesTest : public testing::Test {
  protected:
    Environment home{"HOME", "/home/me"};
    Environment config{"XDG_CONFIG_HOME", std::nullopt};
    Environment systemConfig{"XDG_CONFIG_DIRS", std::nullopt};
    Environment ownData{"XDG_DATA_HOME", std::nullopt};
    Environment data{"XDG_DATA_DIRS", std::nullopt};
};

TEST_F(BaseDirectoriesTest, VariablesCountWhenTheyHoldAbsolutePaths) {
    EXPECT_EQ(standardDefaultsPath(), "/home/me/.config/tessellon/defaults.plist");
    config.set("/elsewhere");
    EXPECT_EQ(standardDefaultsPath(), "/elsewhere/tessellon/defaults.plist");
    for (const auto* ignored : {"", "relative/path"}) {
        config.set(ignored);
        EXPECT_EQ(configFolder(), "/home/me/.config");
    }
    home.set(std::nullopt);
    ASSERT_TRUE(homeFolder()) << "the user database was not asked";
    EXPECT_EQ(configFolder(), *homeFolder() / ".config");
}

TEST_F(BaseDirectoriesTest, FoldersOfAllUsersComeInTheirOrder) {
    EXPECT_EQ(dataFolders(), (Paths{"/home/me/.local/share", "/usr/local/share", "/usr/share"}));
    ownData.set("/own");
    data.set("/a::relative:/b/:");
    EXPECT_EQ(dataFolders(), (Paths{"/own", "/a", "/b/"}));

    EXPECT_EQ(systemConfigFolders(), Paths{"/etc/xdg"});
    systemConfig.set("/b:/a");
    EXPECT_EQ(systemConfigFolders(), (Paths{"/b", "/a"}));
}

}  // namespace
}  // namespace tessellon
