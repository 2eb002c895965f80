// Finds the widgets of a window by what they are and what they are called.
#pragma once

#include <QAbstractButton>
#include <QWidget>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessellon {

/// The widgets of one kind in the order they were made. (The toolkit's own search knows only its
/// own classes, and takes any widget of theirs for one of ours.)
template <typename Widget>
std::vector<Widget*> all(const QWidget& within) {
    std::vector<Widget*> found;
    for (auto* const widget : within.findChildren<QWidget*>()) {
        if (auto* const typed = dynamic_cast<Widget*>(widget)) {
            found.push_back(typed);
        }
    }
    return found;
}

/// Those of them that are visible.
template <typename Widget>
std::vector<Widget*> shown(const QWidget& within) {
    auto found = all<Widget>(within);
    std::erase_if(found, [](const Widget* widget) { return !widget->isVisible(); });
    return found;
}

/// What assistive technology calls the widget: its name, else a button's text.
inline std::string nameOf(const QWidget& widget) {
    const auto name = widget.accessibleName().toStdString();
    const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
    return name.empty() && button != nullptr ? button->text().toStdString() : name;
}

/// The first one of that name, else null.
template <typename Widget>
Widget* findNamed(const std::vector<Widget*>& widgets, const std::string& name) {
    for (auto* const widget : widgets) {
        if (nameOf(*widget) == name) {
            return widget;
        }
    }
    return nullptr;
}

/// The first one of that name; throws when there is none.
template <typename Widget>
Widget& named(const std::vector<Widget*>& widgets, const std::string& name) {
    auto* const found = findNamed(widgets, name);
    return found != nullptr ? *found : throw std::runtime_error("no control " + name);
}

}  // namespace tessellon
