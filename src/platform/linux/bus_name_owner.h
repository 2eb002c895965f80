// Who has a well-known name on a bus, as its owners come and go. Nothing here waits for the bus,
// which listening to the name itself would: the library asks who owns it, and waits for the answer.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <functional>

namespace tessellon {

class BusNameOwner : public QObject {
    Q_OBJECT

  public:
    /// Begins to ask. `changed` is called at every change of the owner, with the bus's own name for
    /// the new one, which is empty when there is none.
    BusNameOwner(const QDBusConnection& connection, const QString& name,
                 std::function<void(const QString& owner)> changed);

    /// Empty while nobody has the name, and until the bus has answered.
    const QString& owner() const { return owner_; }

  private:
    Q_SLOT void ownerChanged(const QString& name, const QString& before, const QString& now);
    void ask(const QString& name);
    void setOwner(const QString& owner);

    QDBusConnection connection_;
    std::function<void(const QString& owner)> changed_;
    QString owner_;
    bool isKnown_ = false;
};

}  // namespace tessellon
