#include "platform/qt/child_feed_source.h"

#include "base/log.h"
#include "platform/feed_report.h"

#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QString>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <limits>
#include <memory>
#include <utility>

#include <sys/prctl.h>
#include <unistd.h>

namespace tessellon {
namespace {

using Callback = std::function<void(FeedResult)>;

/// In milliseconds.
constexpr int killedWithin = 100;

/// In the child, before it becomes the fetcher: it goes when the program goes, can be ended by
/// signals that the program keeps waiting, and gets none of the program's descriptors.
void prepareChild(pid_t program) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != program) {
        _exit(EXIT_FAILURE);  // gone already
    }
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    close_range(STDERR_FILENO + 1, std::numeric_limits<unsigned>::max(), CLOSE_RANGE_CLOEXEC);
}

/// One fetch. Gone when its process has ended, which it does soon after whoever wanted the result
/// has gone.
class ChildFetch : public QObject {
  public:
    ChildFetch(const ChildFeedSource::Limits& limits, Callback callback, QObject* parent)
        : QObject(parent), limits_(limits), callback_(std::move(callback)) {
        deadline_.setSingleShot(true);
        connect(&deadline_, &QTimer::timeout, this, [this] { finish(FeedError::timedOut); });
        deadline_.start(std::chrono::ceil<std::chrono::milliseconds>(limits.total));
        connect(process_.get(), &QProcess::readyReadStandardOutput, this, [this] { take(); });
        connect(process_.get(), &QProcess::finished, this, [this] { ended(); });
        // Queued, since the process may fail while it is being started.
        connect(
            process_.get(), &QProcess::errorOccurred, this,
            [this](QProcess::ProcessError error) {
                if (error == QProcess::FailedToStart) {
                    complain("cannot be started");
                    finish(FeedError::fetcherFailed);
                }
            },
            Qt::QueuedConnection);
    }

    ChildFetch(const ChildFetch&) = delete;
    ChildFetch& operator=(const ChildFetch&) = delete;
    ~ChildFetch() override {
        process_->disconnect(this);
        process_->kill();
        // What was killed is gone at once, unless it hangs in the kernel. Then it is left alone:
        // the toolkit's destructor would wait for it.
        if (process_->state() != QProcess::NotRunning && !process_->waitForFinished(killedWithin)) {
            static_cast<void>(process_.release());
        }
    }

    void start(const std::filesystem::path& fetcher, const std::string& address) {
        process_->setProgram(QString::fromStdString(fetcher.string()));
        process_->setArguments({QString::fromStdString(address)});
        process_->setStandardInputFile(QProcess::nullDevice());
        process_->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_->setChildProcessModifier([program = getpid()] { prepareChild(program); });
        process_->start(QIODevice::ReadOnly);
    }

    void cancel() {
        callback_ = nullptr;
        end();
    }

  private:
    /// Leaves nothing unread, so that the pipe is no place to keep more than the limit in.
    void take() {
        const auto part = process_->readAllStandardOutput();
        bytes_.insert(bytes_.end(), part.begin(), part.end());
        if (bytes_.size() > limits_.size + longestFeedReportHead) {
            finish(FeedError::tooLarge);
        }
    }

    void ended() {
        if (process_->exitStatus() != QProcess::NormalExit) {
            complain("was ended by a signal");
            finish(FeedError::fetcherFailed);
            return;
        }
        auto result = parseFeedReport(bytes_);
        if (!result || process_->exitCode() != EXIT_SUCCESS) {
            complain("did not tell what it found");
            finish(FeedError::fetcherFailed);
            return;
        }
        const auto* const document = std::get_if<std::vector<std::uint8_t>>(&*result);
        if (document != nullptr && document->size() > limits_.size) {
            finish(FeedError::tooLarge);
        } else {
            finish(*std::move(result));
        }
    }

    void complain(const char* what) const {
        logWarning("the update feed's fetcher '" + process_->program().toStdString() + "' " + what);
    }

    void finish(FeedError error) { finish(FeedFailure{error, 0}); }

    void finish(FeedResult result) {
        const auto callback = std::exchange(callback_, nullptr);
        end();
        if (callback) {
            callback(std::move(result));
        }
    }

    void end() {
        deadline_.stop();
        process_->disconnect(this);
        if (process_->state() == QProcess::NotRunning) {
            deleteLater();
            return;
        }
        // Nobody waits for it: the event loop tells when it is gone.
        connect(process_.get(), &QProcess::finished, this, &QObject::deleteLater);
        process_->kill();
    }

    ChildFeedSource::Limits limits_;
    Callback callback_;
    QTimer deadline_;
    std::unique_ptr<QProcess> process_ = std::make_unique<QProcess>();
    std::vector<std::uint8_t> bytes_;
};

}  // namespace

ChildFeedSource::ChildFeedSource(std::vector<std::filesystem::path> fetchers)
    : ChildFeedSource(std::move(fetchers), Limits()) {}

ChildFeedSource::ChildFeedSource(std::vector<std::filesystem::path> fetchers, const Limits& limits)
    : fetchers_(std::move(fetchers)), limits_(limits) {}

Token ChildFeedSource::fetch(const std::string& address, Callback callback) {
    auto* const fetch = new ChildFetch(limits_, std::move(callback), &fetches_);
    const auto found =
        std::find_if(fetchers_.begin(), fetchers_.end(), [](const std::filesystem::path& each) {
            std::error_code error;
            return std::filesystem::exists(each, error);
        });
    // Starting nothing, or what is not there, fails in the ordinary way.
    fetch->start(found != fetchers_.end() ? *found
                 : fetchers_.empty()      ? std::filesystem::path()
                                          : fetchers_.front(),
                 address);
    return Token([guarded = QPointer<ChildFetch>(fetch)] {
        if (guarded) {
            guarded->cancel();
        }
    });
}

std::vector<std::filesystem::path> feedFetchersOf(const std::filesystem::path& program) {
    constexpr const char* name = "tessellon-fetch-feed";
    const auto folder = program.parent_path();
    return {folder / name, folder.parent_path() / "libexec" / name};
}

}  // namespace tessellon
