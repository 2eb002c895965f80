// The tray icon on a bus of the test's own, on which the test plays the panel.
#include "platform/linux/status_notifier_item.h"

#include "platform/linux/status_notifier_object.h"
#include "private_bus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <memory>
#include <vector>

namespace tessellon {
namespace {

/// Keeps the list of items as a desktop does.
class Watcher : public QDBusVirtualObject {
  public:
    explicit Watcher(QDBusConnection connection) : connection_(std::move(connection)) {
        connection_.registerVirtualObject("/StatusNotifierWatcher", this);
    }

    bool begin() { return connection_.registerService("org.kde.StatusNotifierWatcher"); }
    void end() { connection_.unregisterService("org.kde.StatusNotifierWatcher"); }

    void setHasHost(bool hasHost) {
        hasHost_ = hasHost;
        connection_.send(QDBusMessage::createSignal(
            "/StatusNotifierWatcher", "org.kde.StatusNotifierWatcher",
            hasHost ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered"));
    }

    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() == "RegisterStatusNotifierItem") {
            items.append(message.arguments()[0].toString());
            return connection.send(message.createReply());
        }
        if (message.member() == "Get") {
            ++questions;
            return connection.send(
                message.createReply(QVariant::fromValue(QDBusVariant(hasHost_))));
        }
        return false;
    }

    QStringList items;
    int questions = 0;

  private:
    QDBusConnection connection_;
    bool hasHost_ = false;
};

IconImage halfTransparent(int size, IconColor /*color*/) {
    return {size, std::vector<std::uint32_t>(
                      static_cast<std::size_t>(size) * static_cast<std::size_t>(size), 0x80402000)};
}

class StatusNotifierItemTest : public PrivateBusTest {
  protected:
    StatusNotifierItemTest() {
        tokens_.push_back(item.availabilityChanged().subscribe([this] { ++changes; }));
        tokens_.push_back(item.activated().subscribe([this] { ++presses; }));
    }

    /// Calls the item without blocking its thread, which is this one.
    QDBusMessage ask(QDBusConnection& from, const QString& service, const QString& interface,
                     const QString& method, const QVariantList& arguments) {
        auto message =
            QDBusMessage::createMethodCall(service, "/StatusNotifierItem", interface, method);
        message.setArguments(arguments);
        const auto pending = from.asyncCall(message);
        EXPECT_TRUE(waitFor([&] { return pending.isFinished(); }));
        return pending.reply();
    }

    QVariant property(QDBusConnection& from, const QString& service, const QString& name) {
        const auto reply = ask(from, service, "org.freedesktop.DBus.Properties", "Get",
                               {"org.kde.StatusNotifierItem", name});
        EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << name.toStdString();
        return reply.arguments().isEmpty() ? QVariant()
                                           : reply.arguments()[0].value<QDBusVariant>().variant();
    }

    StatusNotifierItem item{halfTransparent, "/icons"};
    int changes = 0;
    int presses = 0;

  private:
    std::vector<Token> tokens_;
};

TEST_F(StatusNotifierItemTest, ListsAndHostsAreFollowedAsTheyComeAndGo) {
    startBus();
    item.start();
    item.setShown(true);
    Watcher first(peer("first"));
    ASSERT_TRUE(first.begin()) << "the list may come later";
    ASSERT_TRUE(waitFor([&] { return first.items.size() == 1 && first.questions == 1; }));
    EXPECT_FALSE(item.isAvailable()) << "nobody shows the list";
    first.setHasHost(true);
    ASSERT_TRUE(waitFor([&] { return item.isAvailable(); }));
    EXPECT_EQ(changes, 1);
    first.setHasHost(false);
    ASSERT_TRUE(waitFor([&] { return !item.isAvailable(); }));
    first.setHasHost(true);
    ASSERT_TRUE(waitFor([&] { return item.isAvailable(); }));

    first.end();
    ASSERT_TRUE(waitFor([&] { return !item.isAvailable(); }));
    EXPECT_EQ(changes, 4);
    Watcher second(peer("second"));
    second.setHasHost(true);
    ASSERT_TRUE(second.begin());
    ASSERT_TRUE(waitFor([&] { return item.isAvailable() && second.items.size() == 1; }));
    EXPECT_EQ(second.items, first.items) << "the item is on the new list";
    first.setHasHost(false);
    stopBus();
    EXPECT_EQ(changes, 5) << "who kept the list before has no say";
}

TEST_F(StatusNotifierItemTest, ItIsOnTheListAsLongAsItIsShown) {
    startBus();
    auto connection = peer("watcher");
    Watcher watcher(connection);
    ASSERT_TRUE(watcher.begin());
    watcher.setHasHost(true);
    item.start();
    ASSERT_TRUE(waitFor([&] { return item.isAvailable(); }));
    EXPECT_TRUE(watcher.items.isEmpty());
    item.setShown(true);
    ASSERT_TRUE(waitFor([&] { return watcher.items.size() == 1; }));
    const auto name = watcher.items[0];
    EXPECT_NE(ownerOf(connection, name), "");
    item.setShown(false);
    EXPECT_TRUE(waitFor([&] { return ownerOf(connection, name).isEmpty(); }));
    item.setShown(true);
    EXPECT_TRUE(waitFor([&] { return watcher.items.size() == 2; }));
}

TEST_F(StatusNotifierItemTest, PanelsReadAndPressIt) {
    startBus();
    auto panel = peer("panel");
    Watcher watcher(panel);
    ASSERT_TRUE(watcher.begin());
    item.start();
    item.setShown(true);
    ASSERT_TRUE(waitFor([&] { return !watcher.items.isEmpty(); }));
    const auto service = watcher.items[0];

    EXPECT_EQ(property(panel, service, "Status"), "Active");
    EXPECT_EQ(property(panel, service, "IconName"), "tessellon-symbolic");
    EXPECT_EQ(property(panel, service, "IconThemePath"), "/icons");
    EXPECT_EQ(property(panel, service, "ItemIsMenu"), false);
    const auto pixmaps =
        qdbus_cast<NotifierPixmaps>(property(panel, service, "IconPixmap").value<QDBusArgument>());
    QList<int> sizes;
    for (const auto& pixmap : pixmaps) {
        sizes.append(pixmap.width);
        EXPECT_EQ(pixmap.bytes.size(), pixmap.width * pixmap.height * 4);
        // Alpha, red, green, blue, with the alpha taken out of the colors again.
        EXPECT_EQ(pixmap.bytes.left(4).toHex(), "80804000");
    }
    EXPECT_EQ(sizes, (QList<int>{16, 22, 24, 32, 48}));

    int expected = 0;
    for (const auto* method : {"Activate", "SecondaryActivate", "ContextMenu"}) {
        EXPECT_EQ(ask(panel, service, "org.kde.StatusNotifierItem", method, {10, 20}).type(),
                  QDBusMessage::ReplyMessage)
            << method;
        EXPECT_EQ(presses, ++expected) << method;
    }
    EXPECT_EQ(ask(panel, service, "org.kde.StatusNotifierItem", "Scroll", {1, "vertical"}).type(),
              QDBusMessage::ReplyMessage);
    EXPECT_EQ(presses, expected);
}

TEST_F(StatusNotifierItemTest, WithoutABusAndWithASilentOneItIsNotAvailable) {
    item.start();
    item.setShown(true);
    QCoreApplication::processEvents();
    EXPECT_FALSE(item.isAvailable());
    startSilentBus();
    auto waiting = std::make_unique<StatusNotifierItem>(halfTransparent, std::nullopt);
    waiting->start();
    waiting->setShown(true);
    EXPECT_TRUE(silentBusIsCalled());
    EXPECT_FALSE(waiting->isAvailable());
    EXPECT_TRUE(endsAtOnce(std::move(waiting)));
}

TEST_F(StatusNotifierItemTest, ABusThatFallsSilentDelaysNobody) {
    auto& bus = startHalfDeadBus({"Hello", "GetId"});
    auto waiting = std::make_unique<StatusNotifierItem>(halfTransparent, std::nullopt);
    waiting->start();
    waiting->setShown(true);
    EXPECT_TRUE(
        waitFor([&] { return bus.calls("GetNameOwner") > 0 && bus.calls("RequestName") > 0; }));
    EXPECT_FALSE(waiting->isAvailable());
    EXPECT_TRUE(endsAtOnce(std::move(waiting)));
}

}  // namespace
}  // namespace tessellon
