#include "ui/accessible_button.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAccessibleWidget>

namespace tessellon {
namespace {

constexpr auto property = "tessellonAccessibleByClick";

class ClickedButton : public QAccessibleWidget {
  public:
    explicit ClickedButton(QAbstractButton& button)
        : QAccessibleWidget(
              &button, button.autoExclusive() ? QAccessible::RadioButton : QAccessible::CheckBox) {}

    QString text(QAccessible::Text kind) const override {
        const auto text = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && text.isEmpty() ? button().text() : text;
    }

    QAccessible::State state() const override {
        auto state = QAccessibleWidget::state();
        state.checkable = true;
        state.checked = button().isChecked();
        state.pressed = button().isDown();
        return state;
    }

    QStringList actionNames() const override {
        auto names = QAccessibleWidget::actionNames();
        if (button().isEnabled()) {
            names.prepend(QAccessibleActionInterface::toggleAction());
        }
        return names;
    }

    void doAction(const QString& action) override {
        if (action != QAccessibleActionInterface::toggleAction()) {
            QAccessibleWidget::doAction(action);
        } else if (button().isEnabled()) {
            button().click();
        }
    }

    QStringList keyBindingsForAction(const QString& /*action*/) const override { return {}; }

  private:
    QAbstractButton& button() const { return *static_cast<QAbstractButton*>(object()); }
};

QAccessibleInterface* byClick(const QString& /*className*/, QObject* object) {
    auto* const button = qobject_cast<QAbstractButton*>(object);
    return button != nullptr && button->property(property).toBool() ? new ClickedButton(*button)
                                                                    : nullptr;
}

}  // namespace

void setAccessibleByClick(QAbstractButton& button) {
    // The toolkit keeps a factory that it knows already only once.
    QAccessible::installFactory(byClick);
    button.setProperty(property, true);
    // It keeps what it made at the button's first change of a name or text as well.
    auto* const known = QAccessible::queryAccessibleInterface(&button);
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(known));
}

}  // namespace tessellon
