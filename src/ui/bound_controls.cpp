#include "ui/bound_controls.h"

#include "base/token.h"

#include <QObject>
#include <utility>

namespace tessellon {
namespace {

/// Keeps a registration for as long as the control it belongs to.
class Keeper : public QObject {
  public:
    Keeper(QObject* control, Token token) : QObject(control), token_(std::move(token)) {}

  private:
    Token token_;
};

}  // namespace

PillToggle* makeBoundToggle(UserDefaults& defaults, std::string_view key,
                            const QString& accessibleName, QWidget* parent) {
    auto* const toggle = new PillToggle(accessibleName, parent);
    toggle->setChecked(defaults.boolForKey(key));
    QObject::connect(toggle, &QAbstractButton::clicked, toggle,
                     [&defaults, key](bool checked) { defaults.setBool(key, checked); });
    new Keeper(toggle, defaults.changed().subscribe([&defaults, key, toggle](auto changed) {
        if (changed == key) {
            toggle->setChecked(defaults.boolForKey(key));
        }
    }));
    return toggle;
}

Row* makeBoundToggleRow(UserDefaults& defaults, std::string_view key, const QString& title,
                        const QString& subtitle, QWidget* parent) {
    return new Row(title, subtitle, makeBoundToggle(defaults, key, title, parent), parent);
}

SliderRow* makeBoundSliderRow(UserDefaults& defaults, std::string_view key,
                              const SliderRowSpec& spec, QWidget* parent) {
    auto* const row = new SliderRow(spec, defaults.doubleForKey(key), parent);
    new Keeper(row, row->valueChanged().subscribe(
                        [&defaults, key](double value) { defaults.setDouble(key, value); }));
    new Keeper(row, defaults.changed().subscribe([&defaults, key, row](auto changed) {
        if (changed == key) {
            row->setValue(defaults.doubleForKey(key));
        }
    }));
    return row;
}

}  // namespace tessellon
