// Does thousands of things to the real program on a private desktop, in an order that a seed
// decides, kills everybody at times, and looks after each action whether all is as it should be.
#include "harness/screenshot.h"
#include "stress/options.h"
#include "stress/resources.h"
#include "stress/scene.h"

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
    Watch(Stage& stage, Report& report) : stage_(stage), report_(report) {}

    /// Takes a reading of what the program holds at times.
    void afterAction(const Action& action) {
        constexpr std::size_t actionsBetween = 20;
        const pid_t process = stage_.program().process().pid();
        if (!life_ || process != process_) {
            end();
            life_.emplace(action.number);
            process_ = process;
        }
        if (action.number % actionsBetween != 0) {
            return;
        }
        stage_.program().waitUntilIdle();
        if (auto figures = measure(stage_.desktop().x(), process)) {
            life_->add(action.number, *std::move(figures));
        }
    }

    void end() {
        if (!life_) {
            return;
        }
        report_.add(*life_);
        for (const auto& line : life_->judge()) {
            require(!line.grows(),
                    line.name + " does not grow by more than " + std::to_string(line.allowed),
                    "it was " + std::to_string(line.early) + " after the warm-up, at most, and " +
                        std::to_string(line.late) + " at the end, at least");
        }
        life_.reset();
    }

  private:
    Stage& stage_;
    Report& report_;
    std::optional<Growth> life_;
    pid_t process_ = 0;
};

void runAll(Stage& stage, Report& report, const Options& options) {
    Watch watch(stage, report);
    for (const Action& action : makeSchedule(options.seed, options.actions)) {
        report.begin(action);
        Scene scene{stage, action, Random(action.seed)};
        perform(scene);
        stage.recover(scene.random);
        checkEverything(stage);
        watch.afterAction(action);
    }
    watch.end();
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
