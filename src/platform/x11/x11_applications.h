// The applications port on X11: whoever has managed windows is a running application. X11 hides
// windows one by one and knows no hidden applications, so none is ever called hidden.
#pragma once

#include "platform/application_directory.h"
#include "platform/applications.h"
#include "platform/x11/window_mirror.h"

#include <functional>
#include <map>
#include <optional>
#include <string>

namespace tessellon::x11 {

class X11Applications : public Applications {
  public:
    /// Gives the absolute path of a process's program, or nothing.
    using ExecutableOf = std::function<std::optional<std::string>(Pid)>;

    X11Applications(const Connection& connection, WindowMirror& mirror,
                    const ApplicationDirectory& directory, ExecutableOf executableOf);

    std::vector<RunningApplication> running() const override;
    std::optional<RunningApplication> withPid(Pid pid) const override;
    std::optional<RunningApplication> frontmost() const override;
    void activate(Pid pid) override;
    Pid ownPid() const override;

  private:
    void update() const;
    RunningApplication describe(const ClientWindow& window) const;

    const Connection& connection_;
    WindowMirror& mirror_;
    const ApplicationDirectory& directory_;
    ExecutableOf executableOf_;
    // Kept until a window comes, goes or changes what it says of its program.
    mutable std::vector<RunningApplication> running_;
    mutable std::map<Pid, std::size_t> indexOfPid_;
    mutable std::optional<std::uint64_t> revision_;
};

}  // namespace tessellon::x11
