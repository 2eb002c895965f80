// The settings off screen, and ways to use and to look at what is shown.
#pragma once

#include "fakes/toolkit.h"
#include "settings/settings_fixture.h"
#include "ui/text_label.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <QWidget>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessellon {

class SettingsViewTest : public SettingsTest {
  protected:
    /// Carries out what is due, the deletion of old pages included.
    static void settle() {
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }

    /// Shows a page or a view by itself, in this size, as the active window.
    static void show(QWidget& widget, const QSize& size) {
        widget.resize(size);
        widget.show();
        widget.activateWindow();
        settle();
    }
    /// What a page gets of the settings window.
    static constexpr QSize pageSize{608, 670};

    /// The visible widgets of one kind, in the order they were made. (The toolkit's own search
    /// knows only its own classes.)
    template <typename Widget>
    static std::vector<Widget*> all(const QWidget& within) {
        std::vector<Widget*> found;
        for (auto* const widget : within.findChildren<QWidget*>()) {
            auto* const typed = dynamic_cast<Widget*>(widget);
            if (typed != nullptr && typed->isVisible()) {
                found.push_back(typed);
            }
        }
        return found;
    }

    /// What assistive technology calls the control: its name, else its text.
    static std::string nameOf(const QWidget& widget) {
        const auto name = widget.accessibleName().toStdString();
        const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
        return name.empty() && button != nullptr ? button->text().toStdString() : name;
    }

    /// The visible control of that name, among those of one kind; throws when there is none.
    template <typename Control = QAbstractButton>
    static Control& control(const QWidget& within, const std::string& name) {
        for (auto* const found : all<Control>(within)) {
            if (nameOf(*found) == name) {
                return *found;
            }
        }
        throw std::runtime_error("no control " + name);
    }

    /// The texts that can be read now.
    static std::vector<std::string> texts(const QWidget& within) {
        std::vector<std::string> found;
        for (const auto* const label : all<QLabel>(within)) {
            found.push_back(label->text().toStdString());
        }
        return found;
    }
    static bool says(const QWidget& within, const std::string& text) {
        for (const auto& found : texts(within)) {
            if (found == text) {
                return true;
            }
        }
        return false;
    }

    static void click(QWidget& widget) {
        QTest::mouseClick(&widget, Qt::LeftButton);
        settle();
    }
};

}  // namespace tessellon
