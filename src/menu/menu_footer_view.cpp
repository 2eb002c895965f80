#include "menu/menu_footer_view.h"

#include "menu/menu_button_view.h"

namespace tessellon {

MenuFooter::MenuFooter(const Callbacks& callbacks, QWidget* parent) : MenuSection(parent) {
    auto* const settings = new MenuTextButton(QStringLiteral("Settings"), this);
    settings->setKeyHint(QStringLiteral("\u2318,"));
    auto* const updates = new MenuTextButton(QStringLiteral("Updates"), this);
    updates->setAccessibleDescription(QStringLiteral("Checks for updates now"));
    auto* const quit = new MenuTextButton(QStringLiteral("Quit"), this);
    quit->setKeyHint(QStringLiteral("\u2318Q"));
    connect(settings, &QAbstractButton::clicked, this, callbacks.settings);
    connect(updates, &QAbstractButton::clicked, this, callbacks.checkUpdates);
    connect(quit, &QAbstractButton::clicked, this, callbacks.quit);

    // The texts end where the column does, and the space between them is the same.
    const int left = origin().x() - MenuTextButton::overhang;
    const int right = origin().x() + contentWidth + MenuTextButton::overhang;
    settings->move(left, origin().y());
    quit->move(right - quit->width(), origin().y());
    const int gapLeft = settings->geometry().right() + 1;
    updates->move(gapLeft + (quit->x() - gapLeft - updates->width()) / 2, origin().y());
    setContentHeight(settings->height());
    addRow({settings, updates, quit});
}

}  // namespace tessellon
