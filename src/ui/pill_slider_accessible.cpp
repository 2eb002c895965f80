#include "ui/pill_slider_accessible.h"

#include "ui/pill_slider.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QString>
#include <cmath>

namespace tessellon {
namespace {

class PillSliderAccessible : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    explicit PillSliderAccessible(PillSlider* slider)
        : QAccessibleWidget(slider, QAccessible::Slider), slider_(*slider) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface) {
            return static_cast<QAccessibleValueInterface*>(this);
        }
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? QString::number(slider_.value())
                                          : QAccessibleWidget::text(kind);
    }

    QVariant currentValue() const override { return slider_.value(); }
    void setCurrentValue(const QVariant& value) override {
        bool isNumber = false;
        const double number = value.toDouble(&isNumber);
        if (isNumber && std::isfinite(number) && slider_.isEnabled()) {
            slider_.choose(number);
        }
    }
    QVariant minimumValue() const override { return slider_.range().lower; }
    QVariant maximumValue() const override { return slider_.range().upper; }
    QVariant minimumStepSize() const override { return slider_.step(); }

  private:
    PillSlider& slider_;  // an interface is dropped before its object
};

QAccessibleInterface* pillSliderInterface(const QString& /*className*/, QObject* object) {
    auto* slider = dynamic_cast<PillSlider*>(object);
    return slider != nullptr ? new PillSliderAccessible(slider) : nullptr;
}

}  // namespace

void installPillSliderAccessibility() {
    QAccessible::installFactory(pillSliderInterface);
}

}  // namespace tessellon
