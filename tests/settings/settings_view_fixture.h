// The settings off screen, and ways to use and to look at what is shown.
#pragma once

#include "fakes/toolkit.h"
#include "fakes/widgets.h"
#include "settings/settings_fixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QWidget>
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

    /// The visible control of that name, among those of one kind; throws when there is none.
    template <typename Control = QAbstractButton>
    static Control& control(const QWidget& within, const std::string& name) {
        return named(shown<Control>(within), name);
    }

    /// The texts that can be read now.
    static std::vector<std::string> texts(const QWidget& within) {
        std::vector<std::string> found;
        for (const auto* const label : shown<QLabel>(within)) {
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
