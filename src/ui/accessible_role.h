// What painted widgets are for assistive technology, where the toolkit could only guess.
#pragma once

#include <QAccessible>
#include <QWidget>

namespace tessellon {

/// Presents the widget in this role instead of a mere container's.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

}  // namespace tessellon
