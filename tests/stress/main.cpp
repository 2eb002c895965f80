// Does thousands of things to the real program on a private desktop, in an order that a seed
// decides, kills everybody at times, and looks after each action whether all is as it should be.
#include "harness/screenshot.h"
#include "stress/options.h"
#include "stress/resources.h"
#include "stress/scene.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace tessellon::stress {
namespace {

class Watch {
  public:
    Watch(Stage& stage, Report& report, std::size_t actions)
        : stage_(stage),
          report_(report),
          actionsBetween_(std::max(fewestBetween, actions / readings)) {}

    /// Takes a reading of what the program holds at times.
    void afterAction(const Action& action) {
        const pid_t process = stage_.program().process().pid();
        if (!life_ || process != process_) {
            end();
            life_.emplace(action.number);
            process_ = process;
        }
        if (action.number % actionsBetween_ != 0) {
            return;
        }
        stage_.program().waitUntilIdle();
        if (auto figures = measure(stage_.desktop().x(), process)) {
            life_->add(action.number, *std::move(figures));
        }
    }

    /// Whether any life was long enough for a judgement.
    bool hasJudged() const { return isJudged_; }

    void end() {
        if (!life_) {
            return;
        }
        report_.add(*life_);
        const auto lines = life_->judge();
        isJudged_ = isJudged_ || !lines.empty();
        for (const auto& line : lines) {
            require(!line.grows(),
                    line.name + " does not grow by more than " + std::to_string(line.allowed),
                    "it was " + std::to_string(line.early) + " after the warm-up, at most, and " +
                        std::to_string(line.late) + " at the end, at least");
        }
        life_.reset();
    }

  private:
    static constexpr std::size_t fewestBetween = 5;
    static constexpr std::size_t readings = 250;  // of the whole run

    Stage& stage_;
    Report& report_;
    std::size_t actionsBetween_;
    bool isJudged_ = false;
    std::optional<Growth> life_;
    pid_t process_ = 0;
};

// A run in which windows did not come to the front, or panels did not open, shows nothing.
void requireEnough(const Report& report, const Options& options) {
    struct Share {
        const char* what;
        std::size_t ofThousand;
    };
    constexpr std::array shares{Share{"snaps compared", 30},
                                Share{"windows restored exactly", 10},
                                Share{"first frames compared", 3},
                                Share{"drags with Super that showed the grid", 15},
                                Share{"panel opened by a second start", 20},
                                Share{"closed by Escape", 5},
                                Share{"closed by a click beside", 5}};
    constexpr std::size_t thousand = 1000;
    for (const Share& share : shares) {
        const std::size_t wanted = options.actions * share.ofThousand / thousand;
        require(report.counted(share.what) >= wanted,
                std::to_string(wanted) + " times or more: " + share.what,
                std::to_string(report.counted(share.what)) + " times");
    }
}

// The program lives through more than half of the run, and this many make enough readings of it.
constexpr std::size_t fewestActionsToJudge = 500;

void runAll(Stage& stage, Report& report, const Options& options) {
    Watch watch(stage, report, options.actions);
    for (const Action& action : makeSchedule(options.seed, options.actions)) {
        report.begin(action);
        Scene scene{stage, action, Random(action.seed)};
        perform(scene);
        stage.recover(scene.random);
        checkEverything(stage);
        watch.afterAction(action);
    }
    watch.end();
    requireEnough(report, options);
    require(watch.hasJudged() || options.actions < fewestActionsToJudge,
            "the program lived long enough to see whether it grows", "it never did");
}

std::string takePicture(Stage& stage, const Options& options) {
    const std::filesystem::path path = std::filesystem::temp_directory_path() /
                                       ("stress-" + std::to_string(options.seed) + ".png");
    return desktop::saveScreenshot(stage.desktop().x(), path) ? path.string() : "none";
}

int run(const Options& options) {
    Report report(options);
    Stage stage(options, report);
    try {
        runAll(stage, report, options);
    } catch (const Failure& failure) {
        report.note("under " + stage.windowManagerName());
        report.printFailure(failure, takePicture(stage, options));
        return EXIT_FAILURE;
    } catch (const std::exception& error) {
        report.printFailure({"the desktop does what it is told", error.what()},
                            takePicture(stage, options));
        return EXIT_FAILURE;
    }
    report.printSuccess();
    return EXIT_SUCCESS;
}

}  // namespace
}  // namespace tessellon::stress

int main(int count, char** words) {
    using namespace tessellon::stress;
    try {
        const std::span<const char* const> arguments(words + 1,
                                                     static_cast<std::size_t>(count - 1));
        return run(readOptions(arguments));
    } catch (const std::exception& error) {
        std::cerr << error.what()
                  << "\nusage: tessellon_stress [--seed N] [--actions M] [--window-manager NAME] "
                     "[--log FILE]\n";
        return EXIT_FAILURE;
    }
}
