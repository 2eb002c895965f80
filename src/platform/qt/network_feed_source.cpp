#include "platform/qt/network_feed_source.h"

#include "platform/qt/environment_proxy.h"

#include <QByteArray>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUrl>
#include <cerrno>
#include <chrono>
#include <optional>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessellon {
namespace {

using Callback = std::function<void(FeedResult)>;
using PlainLoopback = NetworkFeedSource::PlainLoopback;

FeedFailure failure(FeedError error) {
    return {error, 0};
}

std::chrono::milliseconds milliseconds(Seconds span) {
    return std::chrono::ceil<std::chrono::milliseconds>(span);
}

bool mayBeAsked(const QUrl& url, PlainLoopback plainLoopback) {
    if (!url.isValid() || url.host().isEmpty() || !url.userInfo().isEmpty()) {
        return false;
    }
    return url.scheme() == QLatin1String("https") ||
           (plainLoopback == PlainLoopback::allowed && url.scheme() == QLatin1String("http") &&
            url.host() == QLatin1String("127.0.0.1"));
}

/// Never waits for a writer, and reads no more than one byte past the limit.
FeedResult readFile(const QByteArray& path, std::size_t limit) {
    const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0) {
        return failure(errno == ENOENT || errno == ENOTDIR ? FeedError::noSuchFile
                                                           : FeedError::fileNotReadable);
    }
    FeedResult result = failure(FeedError::fileNotReadable);
    struct stat status {};
    if (::fstat(file, &status) == 0) {
        if (!S_ISREG(status.st_mode)) {
            result = failure(FeedError::notAFile);
        } else {
            std::vector<std::uint8_t> bytes(limit + 1);
            std::size_t length = 0;
            ssize_t got = 0;
            do {
                got = ::read(file, bytes.data() + length, bytes.size() - length);
                length += got > 0 ? static_cast<std::size_t>(got) : 0;
            } while ((got > 0 && length < bytes.size()) || (got < 0 && errno == EINTR));
            if (length > limit) {
                result = failure(FeedError::tooLarge);
            } else if (got == 0) {
                bytes.resize(length);
                result = std::move(bytes);
            }
        }
    }
    ::close(file);
    return result;
}

FeedError errorOf(QNetworkReply::NetworkError error) {
    switch (error) {
        case QNetworkReply::OperationCanceledError:  // nothing came for a while
        case QNetworkReply::TimeoutError:
        case QNetworkReply::ProxyTimeoutError:
            return FeedError::timedOut;
        case QNetworkReply::SslHandshakeFailedError:
        case QNetworkReply::ProtocolUnknownError:  // no TLS library on this machine
            return FeedError::notTrusted;
        default:
            return FeedError::unreachable;
    }
}

/// One fetch, redirects included. Gone after its result, or when whoever wanted that has gone.
class Fetch : public QObject {
  public:
    Fetch(NetworkFeedSource::Limits limits, PlainLoopback plainLoopback, QByteArray userAgent,
          Callback callback)
        : limits_(limits),
          plainLoopback_(plainLoopback),
          userAgent_(std::move(userAgent)),
          callback_(std::move(callback)) {
        deadline_.setSingleShot(true);
        connect(&deadline_, &QTimer::timeout, this,
                [this] { finish(failure(FeedError::timedOut)); });
        deadline_.start(milliseconds(limits_.total));
    }
    Fetch(const Fetch&) = delete;
    Fetch& operator=(const Fetch&) = delete;
    ~Fetch() override { dropReply(); }

    void start(const QUrl& url) {
        if (url.isLocalFile() && url.host().isEmpty() && !url.path().contains(QChar(0))) {
            finishSoon(readFile(QFile::encodeName(url.toLocalFile()), limits_.size));
        } else if (mayBeAsked(url, plainLoopback_)) {
            ask(url);
        } else {
            finishSoon(failure(FeedError::addressNotAllowed));
        }
    }

    void cancel() {
        callback_ = nullptr;
        dropReply();
        deleteLater();
    }

  private:
    void ask(const QUrl& url) {
        if (!network_) {
            network_.emplace();
            network_->setProxyFactory(new EnvironmentProxy);
        }
        QNetworkRequest request(url);
        request.setHeader(QNetworkRequest::UserAgentHeader, userAgent_);
        request.setRawHeader("Accept", "application/json");
        // Else the toolkit names the user's language, and unpacks what may be far larger unpacked.
        request.setRawHeader("Accept-Language", "*");
        request.setRawHeader("Accept-Encoding", "identity");
        request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                             QNetworkRequest::ManualRedirectPolicy);
        request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                             QNetworkRequest::AlwaysNetwork);
        request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
        request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
        request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
        request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute,
                             QNetworkRequest::Manual);
        request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
        request.setTransferTimeout(static_cast<int>(milliseconds(limits_.idle).count()));
        bytes_.clear();
        reply_ = network_->get(request);
        reply_->setReadBufferSize(static_cast<qint64>(limits_.size) + 1);
        connect(reply_, &QNetworkReply::readyRead, this, [this] { take(); });
        connect(reply_, &QNetworkReply::finished, this, [this] { answered(); });
    }

    /// False when that is more than a feed may be; the fetch is over then.
    bool take() {
        const auto part = reply_->read(static_cast<qint64>(limits_.size + 1 - bytes_.size()));
        bytes_.insert(bytes_.end(), part.begin(), part.end());
        if (bytes_.size() > limits_.size) {
            finish(failure(FeedError::tooLarge));
            return false;
        }
        return true;
    }

    void answered() {
        const int status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        const auto target = reply_->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
        if (!target.isEmpty()) {
            redirect(reply_->url().resolved(target));
        } else if (status < 300 && reply_->error() != QNetworkReply::NoError) {
            finish(failure(errorOf(reply_->error())));
        } else if (status != 200) {
            finish(FeedFailure{FeedError::httpStatus, status});
        } else if (take()) {
            finish(std::move(bytes_));
        }
    }

    void redirect(const QUrl& target) {
        dropReply();
        if (!mayBeAsked(target, plainLoopback_)) {
            finish(failure(FeedError::insecureRedirect));
        } else if (++redirects_ > limits_.redirects) {
            finish(failure(FeedError::tooManyRedirects));
        } else {
            ask(target);
        }
    }

    void finishSoon(FeedResult result) {
        QTimer::singleShot(0, this, [this, result = std::move(result)] { finish(result); });
    }

    void finish(FeedResult result) {
        deadline_.stop();
        dropReply();
        deleteLater();
        if (const auto callback = std::exchange(callback_, nullptr)) {
            callback(std::move(result));
        }
    }

    void dropReply() {
        if (auto* const reply = std::exchange(reply_, nullptr)) {
            reply->disconnect(this);
            reply->abort();
            reply->deleteLater();
        }
    }

    NetworkFeedSource::Limits limits_;
    PlainLoopback plainLoopback_;
    QByteArray userAgent_;
    Callback callback_;
    QTimer deadline_;
    std::vector<std::uint8_t> bytes_;
    int redirects_ = 0;
    // Takes its thread and its connections along when the fetch is over.
    std::optional<QNetworkAccessManager> network_;
    QNetworkReply* reply_ = nullptr;
};

}  // namespace

NetworkFeedSource::NetworkFeedSource(std::string version)
    : NetworkFeedSource(std::move(version), Limits(), PlainLoopback::refused) {}

NetworkFeedSource::NetworkFeedSource(std::string version, const Limits& limits,
                                     PlainLoopback plainLoopback)
    : version_(std::move(version)), limits_(limits), plainLoopback_(plainLoopback) {}

Token NetworkFeedSource::fetch(const std::string& address, Callback callback) {
    auto* const fetch =
        new Fetch(limits_, plainLoopback_, "Tessellon/" + QByteArray::fromStdString(version_),
                  std::move(callback));
    fetch->start(QUrl(QString::fromStdString(address), QUrl::StrictMode));
    return Token([guarded = QPointer<Fetch>(fetch)] {
        if (guarded) {
            guarded->cancel();
        }
    });
}

}  // namespace tessellon
