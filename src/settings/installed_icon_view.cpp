#include "settings/installed_icon_view.h"

#include "ui/application_icon.h"

namespace tessellon {

QIcon installedIcon(const QString& icon) {
    const auto own = applicationIcon(icon);
    return own.isNull() ? applicationIcon(QStringLiteral("application-x-executable")) : own;
}

}  // namespace tessellon
