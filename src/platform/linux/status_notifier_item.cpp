#include "platform/linux/status_notifier_item.h"

#include "platform/linux/bus_connection.h"
#include "platform/linux/bus_name.h"
#include "platform/linux/status_notifier_object.h"
#include "platform/linux/status_notifier_watcher.h"
#include "platform/linux/symbolic_icon.h"

#include <QDBusConnection>
#include <QString>
#include <array>
#include <utility>

#include <unistd.h>

namespace tessellon {
namespace {

// The sizes that panels show on ordinary and on dense screens.
constexpr std::array pixmapSizes{16, 22, 24, 32, 48};

// Panels that take pixels do not say whether they are dark or light; this grey is as far from the
// usual dark ones (#2b2b2b) as from the usual light ones (#f6f5f4).
constexpr IconColor pixmapColor = 0x808080;

const auto itemPath = QStringLiteral("/StatusNotifierItem");

NotifierPixmaps pixmaps(const IconPainter& paint) {
    NotifierPixmaps all;
    for (const int size : pixmapSizes) {
        all.append(notifierPixmap(paint(size, pixmapColor)));
    }
    return all;
}

}  // namespace

struct StatusNotifierItem::OnBus {
    explicit OnBus(StatusNotifierItem& item)
        : item_(item),
          object_(item.symbolicIcons_ ? QString::fromUtf8(symbolicIconName) : QString(),
                  item.symbolicIcons_ ? QString::fromStdString(item.symbolicIcons_->string())
                                      : QString(),
                  pixmaps(item.paint_), [&item] { item.activated_.emit(); }),
          bus_(Bus::session, [this](const QDBusConnection& connection) { begin(connection); }) {}

    bool hasHost() const { return watcher_ && watcher_->hasHost(); }

    /// Names the item on the bus, which puts it on the watcher's list, or takes the name away, upon
    /// which the watcher drops it.
    void follow(bool shown) {
        if (!connection_) {
            return;
        }
        if (!shown) {
            name_.reset();
            connection_->unregisterObject(itemPath);
        } else if (!name_) {
            connection_->registerObject(
                itemPath, &object_,
                QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties);
            name_ = std::make_unique<BusName>(
                *connection_, QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(getpid()),
                BusName::WhenTaken::giveUp, [this] { addToList(); });
        }
    }

  private:
    void begin(const QDBusConnection& connection) {
        connection_ = connection;
        watcher_ = std::make_unique<StatusNotifierWatcher>(
            connection,
            StatusNotifierWatcher::Listeners{[this] { addToList(); },
                                             [this] { item_.availabilityChanged_.emit(); }});
        follow(item_.isShown_);
    }

    void addToList() {
        if (watcher_ && name_ && name_->isDecided()) {
            // A program in a container can have our process id and so our name.
            watcher_->add(name_->isOwned() ? name_->name() : connection_->baseService());
        }
    }

    StatusNotifierItem& item_;
    StatusNotifierObject object_;
    std::optional<QDBusConnection> connection_;
    std::unique_ptr<StatusNotifierWatcher> watcher_;
    std::unique_ptr<BusName> name_;
    BusConnection bus_;
};

StatusNotifierItem::StatusNotifierItem(IconPainter paint,
                                       std::optional<std::filesystem::path> symbolicIcons)
    : paint_(std::move(paint)), symbolicIcons_(std::move(symbolicIcons)) {}

StatusNotifierItem::~StatusNotifierItem() = default;

void StatusNotifierItem::start() {
    if (!onBus_) {
        onBus_ = std::make_unique<OnBus>(*this);
    }
}

bool StatusNotifierItem::isAvailable() const {
    return onBus_ && onBus_->hasHost();
}

void StatusNotifierItem::setShown(bool shown) {
    if (std::exchange(isShown_, shown) != shown && onBus_) {
        onBus_->follow(shown);
    }
}

}  // namespace tessellon
