#include "platform/linux/bus_name.h"

#include <QDBusMessage>
#include <utility>

namespace tessellon {
namespace {

// As D-Bus numbers the flags and answers of RequestName.
constexpr unsigned doNotQueue = 0x4;
constexpr unsigned primaryOwner = 1;
constexpr unsigned alreadyOwner = 4;

QDBusMessage toBus(const QString& method) {
    const auto bus = QStringLiteral("org.freedesktop.DBus");
    return QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                          method);
}

}  // namespace

BusName::BusName(const QDBusConnection& connection, const QString& name, WhenTaken whenTaken,
                 std::function<void()> decided)
    : connection_(connection), name_(name) {
    auto request = toBus(QStringLiteral("RequestName"));
    request << name << (whenTaken == WhenTaken::giveUp ? doNotQueue : 0U);
    answer_ = std::make_unique<QDBusPendingCallWatcher>(connection_.asyncCall(request));
    QObject::connect(answer_.get(), &QDBusPendingCallWatcher::finished, answer_.get(),
                     [this, decided = std::move(decided)](QDBusPendingCallWatcher* answer) {
                         const auto arguments = answer->reply().arguments();
                         const auto outcome =
                             answer->isError() || arguments.isEmpty() ? 0U : arguments[0].toUInt();
                         isDecided_ = true;
                         isOwned_ = outcome == primaryOwner || outcome == alreadyOwner;
                         if (decided) {
                             decided();
                         }
                     });
}

BusName::~BusName() {
    auto release = toBus(QStringLiteral("ReleaseName"));
    release << name_;
    connection_.call(release, QDBus::NoBlock);
}

}  // namespace tessellon
