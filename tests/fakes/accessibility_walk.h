// What a person finds out about a window who cannot see it, or has no pointer: a walk over what it
// tells assistive technology, and one along Tab.
#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QTest>
#include <QWidget>
#include <cmath>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {

class AccessibilityWalk {
  public:
    /// Walks below a window that is shown and active.
    explicit AccessibilityWalk(QWidget& window) : window_(window) {
        visit(QAccessible::queryAccessibleInterface(&window));
    }

    /// The enabled controls, in the order of the tree.
    const std::vector<QWidget*>& controls() const { return controls_; }

    /// Fails for every control that lacks a name, a role, a value or a state.
    void expectControlsToBeDescribed() const {
        EXPECT_EQ(faults_, std::vector<std::string>{});
        EXPECT_FALSE(controls_.empty());
    }

    /// Fails for every control that Tab does not come to, that is out of sight when it does, or
    /// that does not show that it has the keyboard.
    void expectTabToReachThem() {
        const auto stops = tabStops();
        for (QWidget* const control : controls_) {
            const auto* const button = qobject_cast<QAbstractButton*>(control);
            // Of those that exclude each other the arrows choose.
            if (button != nullptr && button->autoExclusive() && !button->isChecked()) {
                continue;
            }
            EXPECT_TRUE(stops.count(control) != 0) << "Tab does not come to " << nameOf(*control);
        }
    }

    static std::string nameOf(QWidget& widget) {
        const auto* const object = QAccessible::queryAccessibleInterface(&widget);
        return object->text(QAccessible::Name).toStdString() + " (" +
               widget.metaObject()->className() + ")";
    }

  private:
    void visit(QAccessibleInterface* object) {
        if (object == nullptr || object->state().invisible) {
            return;
        }
        judge(*object);
        for (int index = 0; index < object->childCount(); ++index) {
            visit(object->child(index));
        }
    }

    void judge(const QAccessibleInterface& object) {
        const auto role = object.role();
        const auto state = object.state();
        const auto name = object.text(QAccessible::Name);
        const auto require = [&](bool holds, const char* fault) {
            if (!holds) {
                const auto* const kind =
                    object.object() != nullptr ? object.object()->metaObject()->className() : "";
                faults_.push_back(name.toStdString() + " (" + kind + ", role " +
                                  std::to_string(role) + "): " + fault);
            }
        };
        if (role == QAccessible::StaticText || role == QAccessible::Graphic) {
            require(!name.isEmpty(), "says nothing");
        }
        auto* const widget = qobject_cast<QWidget*>(object.object());
        // A scroll area takes the wheel and the page keys for what is in it.
        const bool isControl = widget != nullptr && !widget->isWindow() &&
                               (state.focusable || qobject_cast<QAbstractButton*>(widget)) &&
                               !widget->inherits("QAbstractScrollArea");
        if (!isControl) {
            return;
        }
        require(!name.isEmpty(), "has no name");
        require(role != QAccessible::Client && role != QAccessible::NoRole &&
                    role != QAccessible::Pane && role != QAccessible::StaticText,
                "is no control");
        auto* const value = const_cast<QAccessibleInterface&>(object).valueInterface();
        if (role == QAccessible::Slider) {
            require(value != nullptr && std::isfinite(value->currentValue().toDouble()) &&
                        value->minimumValue().toDouble() <= value->currentValue().toDouble() &&
                        value->currentValue().toDouble() <= value->maximumValue().toDouble(),
                    "has no value");
        }
        const auto* const button = qobject_cast<QAbstractButton*>(widget);
        if (button != nullptr && button->isCheckable()) {
            require(role == QAccessible::CheckBox || role == QAccessible::RadioButton,
                    "is not told apart from a button");
            require(state.checkable && state.checked == button->isChecked(), "hides its state");
        }
        if (widget->isEnabled()) {
            controls_.push_back(widget);
        }
    }

    /// The controls that Tab comes to until it starts over.
    std::set<QWidget*> tabStops() {
        std::set<QWidget*> stops;
        QWidget* before = window_.focusWidget();
        constexpr int most = 2000;
        for (int step = 0; step < most; ++step) {
            press(Qt::Key_Tab);
            auto* const stop = window_.focusWidget();
            if (stop == nullptr || !stops.insert(stop).second) {
                break;
            }
            if (stop != before) {
                expectToBeSeen(*stop);
            }
            before = stop;
        }
        return stops;
    }

    void press(Qt::Key key) {
        auto* const target = window_.focusWidget() != nullptr ? window_.focusWidget() : &window_;
        QTest::keyClick(target, key);
        QApplication::processEvents();
    }

    void expectToBeSeen(QWidget& stop) {
        if (stop.inherits("QAbstractScrollArea")) {
            return;
        }
        EXPECT_EQ(stop.visibleRegion().boundingRect().size(), stop.size())
            << nameOf(stop) << " is out of sight";
        constexpr int around = 6;
        const QRect place = QRect(stop.mapTo(&window_, QPoint()), stop.size())
                                .adjusted(-around, -around, around, around);
        const QImage with = window_.grab(place).toImage();
        stop.clearFocus();
        const QImage without = window_.grab(place).toImage();
        stop.setFocus(Qt::TabFocusReason);
        EXPECT_NE(with, without) << nameOf(stop) << " does not show that it has the keyboard";
    }

    QWidget& window_;
    std::vector<QWidget*> controls_;
    std::vector<std::string> faults_;
};

}  // namespace tessellon
