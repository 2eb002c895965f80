#include "updates/feed_updater.h"

#include "app/preferences.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace tessellon {
namespace {

// The loop's time stands still while the machine sleeps, so the clock is asked now and then.
constexpr Seconds longestWait{4.0 * 3600};

constexpr std::string_view tryLater = " Please try again later.";

}  // namespace

std::string describe(const FeedFailure& failure) {
    const auto later = [](std::string text) { return text.append(tryLater); };
    switch (failure.error) {
        case FeedError::addressNotAllowed:
            return "This build was given an update feed that is neither a secure web address nor a "
                   "file.";
        case FeedError::unreachable:
            return "The update feed cannot be reached. Please check the connection to the network "
                   "and try again.";
        case FeedError::timedOut:
            return later("The update feed took too long to answer.");
        case FeedError::notTrusted:
            return "No secure connection to the update feed could be made, so nothing was read.";
        case FeedError::insecureRedirect:
            return "The update feed sent the program on to an insecure address, so nothing was "
                   "read.";
        case FeedError::tooManyRedirects:
            return later("The update feed sends the program from one address to the next.");
        case FeedError::httpStatus:
            return later("The server of the update feed answered with status " +
                         std::to_string(failure.httpStatus) + ".");
        case FeedError::tooLarge:
            return later("What came from the update feed is too large to be one.");
        case FeedError::noSuchFile:
            return "The file of the update feed does not exist.";
        case FeedError::notAFile:
            return "The update feed is not a regular file.";
        case FeedError::fileNotReadable:
            return "The file of the update feed cannot be read.";
        case FeedError::fetcherFailed:
            return "The part of Tessellon that reads the update feed did not work.";
    }
    return "The check did not work.";
}

FeedUpdater::FeedUpdater(Services services, const Version& program, std::string feedAddress)
    : services_(std::move(services)), feedAddress_(std::move(feedAddress)), model_(*this, program) {
    choiceObserver_ = services_.defaults.changed().subscribe([this](std::string_view key) {
        if (key == preference::automaticUpdateChecks) {
            if (!automaticallyChecksForUpdates() && check_ == Check::automatic) {
                fetch_.reset();
                check_ = Check::none;
            }
            schedule();
            changed_.emit();
        }
    });
}

void FeedUpdater::start() {
    started_ = true;
    schedule();
}

bool FeedUpdater::automaticallyChecksForUpdates() const {
    return services_.defaults.boolForKey(preference::automaticUpdateChecks);
}

void FeedUpdater::setAutomaticallyChecksForUpdates(bool checks) {
    if (checks != automaticallyChecksForUpdates()) {
        services_.defaults.setBool(preference::automaticUpdateChecks, checks);
    }
}

void FeedUpdater::checkForUpdates() {
    if (feedAddress_.empty()) {
        model_.setState(NoFeed{});
    } else if (check_ != Check::shown) {
        model_.setState(Checking{});
        // One that nobody sees yet is under way already: its result will do.
        if (std::exchange(check_, Check::shown) == Check::none) {
            fetch(Check::shown);
        }
    }
    window().makeKeyAndOrderFront();
}

void FeedUpdater::schedule() {
    timer_.reset();
    if (started_ && !feedAddress_.empty() && automaticallyChecksForUpdates()) {
        timer_ = services_.runLoop.after(std::clamp(untilNextCheck(), firstCheckDelay, longestWait),
                                         [this] { automaticCheckIsDue(); });
    }
}

Seconds FeedUpdater::untilNextCheck() const {
    const double last = services_.defaults.doubleForKey(preference::lastUpdateCheck);
    const Seconds passed(now() - last);
    // A check that is still to come was never made: the clock was wrong then or is wrong now.
    return last > 0 && passed >= Seconds::zero() ? checkPeriod - passed : Seconds::zero();
}

void FeedUpdater::automaticCheckIsDue() {
    if (untilNextCheck() <= Seconds::zero() && check_ == Check::none) {
        fetch(Check::automatic);
    }
    schedule();
}

void FeedUpdater::fetch(Check check) {
    check_ = check;
    // Also a check that fails was one: an unreachable feed is not asked again and again.
    services_.defaults.setDouble(preference::lastUpdateCheck, now());
    fetch_ =
        services_.source.fetch(feedAddress_, [this](const FeedResult& result) { finish(result); });
}

void FeedUpdater::finish(const FeedResult& result) {
    const bool isShown = std::exchange(check_, Check::none) == Check::shown;
    std::optional<Update> update;
    std::string problem;
    if (const auto* const bytes = std::get_if<std::vector<std::uint8_t>>(&result)) {
        update = parseUpdateFeed(*bytes, feedAddress_);
        if (!update) {
            problem = "What came from the update feed cannot be understood.";
            problem += tryLater;
        }
    } else {
        problem = describe(std::get<FeedFailure>(result));
    }

    const bool isNewer = update && update->version > model_.program();
    if (isNewer && (isShown || !isAnnounced(update->version))) {
        announce(*update);
        if (!isShown) {
            window().orderFront();  // nobody has asked for it
        }
    } else if (isShown) {
        model_.setState(update ? UpdateState(UpToDate{}) : CheckFailed{std::move(problem)});
    }
}

void FeedUpdater::announce(const Update& update) {
    // A feed may go back to an older version, and on again.
    if (!isAnnounced(update.version)) {
        services_.defaults.setString(preference::announcedVersion, update.version.text());
    }
    model_.setState(update);
}

bool FeedUpdater::isAnnounced(const Version& version) const {
    const auto stored = services_.defaults.stringForKey(preference::announcedVersion);
    const auto announced = stored ? Version::parse(*stored) : std::nullopt;
    return announced && version <= *announced;
}

void FeedUpdater::close() {
    if (check_ == Check::shown) {
        fetch_.reset();
        check_ = Check::none;
    }
    window_.reset();
}

Window& FeedUpdater::window() {
    if (!window_) {
        window_ = services_.views.makeWindow(model_);
        windowClosed_ = window_->closed().subscribe([this] { close(); });
    }
    return *window_;
}

double FeedUpdater::now() const {
    return Seconds(services_.clock().time_since_epoch()).count();
}

}  // namespace tessellon
