#include "ui/application_icon.h"

namespace tessellon {
QIcon applicationIcon(const QString& /*icon*/) {
    return {};
}
}  // namespace tessellon
