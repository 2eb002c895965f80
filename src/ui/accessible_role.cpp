#include "ui/accessible_role.h"

#include <QAccessibleWidget>
#include <QVariant>

namespace tessellon {
namespace {

constexpr auto property = "tessellonAccessibleRole";

QAccessibleInterface* withRole(const QString& /*className*/, QObject* object) {
    const auto role = object != nullptr ? object->property(property) : QVariant();
    auto* const widget = qobject_cast<QWidget*>(object);
    return widget != nullptr && role.isValid()
               ? new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()))
               : nullptr;
}

}  // namespace

void setAccessibleRole(QWidget& widget, QAccessible::Role role) {
    // The toolkit keeps a factory that it knows already only once.
    QAccessible::installFactory(withRole);
    widget.setProperty(property, static_cast<int>(role));
}

}  // namespace tessellon
