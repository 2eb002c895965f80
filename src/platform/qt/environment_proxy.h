// The proxy that the environment names. The toolkit's own look-up can run scripts from the network,
// and everything waits for them.
#pragma once

#include <QList>
#include <QNetworkProxy>

namespace tessellon {

/// https_proxy, else all_proxy, in small or capital letters, unless no_proxy lists the host, the
/// end of its name, or "*". A proxy that is no http or SOCKS 5 address counts as none.
class EnvironmentProxy : public QNetworkProxyFactory {
  public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override;
};

}  // namespace tessellon
