// Any values of the environment variables that the program reads: where files belong, which desktop
// runs, and the proxy.
#include "fuzz/expect.h"
#include "platform/linux/base_directories.h"
#include "platform/linux/current_desktop.h"
#include "platform/qt/environment_proxy.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include <fuzzer/FuzzedDataProvider.h>

namespace {

constexpr std::array names{"HOME",          "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS",
                           "XDG_DATA_HOME", "XDG_DATA_DIRS",   "XDG_CURRENT_DESKTOP",
                           "https_proxy",   "all_proxy",       "no_proxy"};

bool areAbsolute(const std::vector<std::filesystem::path>& folders) {
    return std::all_of(folders.begin(), folders.end(),
                       [](const auto& folder) { return folder.is_absolute(); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tessellon;
    FuzzedDataProvider input(data, size);
    for (const char* name : names) {
        if (input.ConsumeBool()) {
            setenv(name, input.ConsumeRandomLengthString().c_str(), 1);
        } else {
            unsetenv(name);
        }
    }
    for (const auto& folder : {homeFolder(), configFolder(), ownDataFolder()}) {
        expect(!folder || folder->is_absolute());
    }
    expect(areAbsolute(systemConfigFolders()) && areAbsolute(dataFolders()));
    for (const auto& desktop : currentDesktops()) {
        expect(!desktop.empty() && desktop.find(':') == std::string::npos);
    }
    const auto host = QString::fromStdString(input.ConsumeRandomLengthString());
    const auto proxies = EnvironmentProxy().queryProxy(QNetworkProxyQuery(host, 443));
    expect(proxies.size() == 1 && (proxies.first().type() == QNetworkProxy::NoProxy ||
                                   !proxies.first().hostName().isEmpty()));
    return 0;
}
