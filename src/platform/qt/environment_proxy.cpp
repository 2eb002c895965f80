#include "platform/qt/environment_proxy.h"

#include <QString>
#include <QUrl>
#include <algorithm>

namespace tessellon {
namespace {

QString variable(const char* name) {
    const auto value = qEnvironmentVariable(name);
    return value.isEmpty() ? qEnvironmentVariable(QByteArray(name).toUpper().constData()) : value;
}

bool isExempt(const QString& host) {
    const auto entries = variable("no_proxy").split(QLatin1Char(','), Qt::SkipEmptyParts);
    return std::any_of(entries.begin(), entries.end(), [&host](const QString& each) {
        auto entry = each.trimmed();
        if (entry == QLatin1String("*")) {
            return true;
        }
        while (entry.startsWith(QLatin1Char('.'))) {
            entry.remove(0, 1);
        }
        return !entry.isEmpty() && (host.compare(entry, Qt::CaseInsensitive) == 0 ||
                                    host.endsWith(QLatin1Char('.') + entry, Qt::CaseInsensitive));
    });
}

}  // namespace

QList<QNetworkProxy> EnvironmentProxy::queryProxy(const QNetworkProxyQuery& query) {
    const QNetworkProxy none(QNetworkProxy::NoProxy);
    const auto host = query.peerHostName();
    if (host == QLatin1String("127.0.0.1") || isExempt(host)) {
        return {none};
    }
    auto text = variable("https_proxy");
    if (text.isEmpty()) {
        text = variable("all_proxy");
    }
    const QUrl url(text.contains(QLatin1String("://")) ? text : QStringLiteral("http://") + text);
    if (text.isEmpty() || url.host().isEmpty()) {
        return {none};
    }
    const bool isSocks = url.scheme().startsWith(QLatin1String("socks5"));
    if (!isSocks && url.scheme() != QLatin1String("http")) {
        return {none};
    }
    constexpr int httpPort = 8080;
    constexpr int socksPort = 1080;
    return {QNetworkProxy(isSocks ? QNetworkProxy::Socks5Proxy : QNetworkProxy::HttpProxy,
                          url.host(),
                          static_cast<quint16>(url.port(isSocks ? socksPort : httpPort)),
                          url.userName(QUrl::FullyDecoded), url.password(QUrl::FullyDecoded))};
}

}  // namespace tessellon
