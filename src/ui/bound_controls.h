// Controls that show a stored setting, change it at once, and follow whoever else changes it.
#pragma once

#include "platform/user_defaults.h"
#include "ui/pill_toggle.h"
#include "ui/row.h"
#include "ui/slider_row.h"

#include <QString>
#include <QWidget>
#include <string_view>

namespace tessellon {

/// A switch for a boolean setting; `key` is one of the constants in `preference`. The settings must
/// outlive it.
PillToggle* makeBoundToggle(UserDefaults& defaults, std::string_view key,
                            const QString& accessibleName, QWidget* parent = nullptr);

/// A row with such a switch, which is called what the row is.
Row* makeBoundToggleRow(UserDefaults& defaults, std::string_view key, const QString& title,
                        const QString& subtitle, QWidget* parent = nullptr);

/// A row with a slider for a setting that is a number.
SliderRow* makeBoundSliderRow(UserDefaults& defaults, std::string_view key,
                              const SliderRowSpec& spec, QWidget* parent = nullptr);

}  // namespace tessellon
