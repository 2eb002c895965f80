// Looks for newer versions in a feed: when the user asks, and once a day when the user has chosen
// that. Only tells; nothing is downloaded or installed.
#pragma once

#include "base/token.h"
#include "platform/feed_source.h"
#include "platform/run_loop.h"
#include "platform/updater.h"
#include "platform/user_defaults.h"
#include "updates/update_feed.h"
#include "updates/update_model.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace tessellon {

class FeedUpdater final : public Updater {
  public:
    /// All of them must outlive the updater. The clock tells the time of day; it may be wrong and
    /// may be changed at any moment.
    struct Services {
        FeedSource& source;
        UpdateViews& views;
        UserDefaults& defaults;
        RunLoop& runLoop;
        std::function<std::chrono::system_clock::time_point()> clock;
    };

    /// `program` is the version that runs. With an empty `feedAddress` every check only says that
    /// there is no feed, and none is made automatically.
    FeedUpdater(Services services, const Version& program, std::string feedAddress);
    FeedUpdater(const FeedUpdater&) = delete;
    FeedUpdater& operator=(const FeedUpdater&) = delete;

    void start() override;
    void checkForUpdates() override;
    bool automaticallyChecksForUpdates() const override;
    void setAutomaticallyChecksForUpdates(bool checks) override;

    /// How long the program has been running, or the choice has been made, before it looks by
    /// itself; and how often at most.
    static constexpr Seconds firstCheckDelay{300};
    static constexpr Seconds checkPeriod{24.0 * 3600};

  private:
    enum class Check { none, automatic, shown };

    void schedule();
    Seconds untilNextCheck() const;
    void automaticCheckIsDue();
    void fetch(Check check);
    void finish(const FeedResult& result);
    void close();
    void announce(const Update& update);
    /// Whether the user has been told of this version or of a newer one.
    bool isAnnounced(const Version& version) const;
    Window& window();
    double now() const;

    Services services_;
    std::string feedAddress_;
    bool started_ = false;
    Check check_ = Check::none;
    // The window shows the model, so it has to go first.
    UpdateModel model_;
    std::unique_ptr<Window> window_;
    Token windowClosed_;
    Token timer_;
    Token fetch_;
    Token choiceObserver_;
};

/// What a failed fetch means for the user, in a sentence.
std::string describe(const FeedFailure& failure);

}  // namespace tessellon
