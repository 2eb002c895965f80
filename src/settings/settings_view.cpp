#include "settings/settings_view.h"

#include "app/notification_names.h"
#include "settings/about_page_view.h"
#include "settings/arrangements_page_view.h"
#include "settings/displays_page_view.h"
#include "settings/general_page_view.h"
#include "settings/rules_page_view.h"
#include "settings/settings_sidebar_view.h"
#include "settings/shortcuts_page_view.h"
#include "settings/zones_page_view.h"
#include "ui/page_scroll.h"
#include "ui/widget_colors.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QKeySequence>
#include <QScrollBar>
#include <QShortcut>
#include <QShowEvent>
#include <QVBoxLayout>
#include <any>
#include <cstddef>

namespace tessellon {
namespace {

constexpr int sideMargin = 28;
constexpr int topMargin = 26;
constexpr int bottomMargin = 24;

}  // namespace

SettingsView::SettingsView(const SettingsServices& services, Page page, QWidget* parent)
    : QWidget(parent), services_(services), page_(page) {
    setWindowColors(*this);

    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(0);
    sidebar_ = new SettingsSidebar(services.defaults, page, this);
    sidebar_->setFixedWidth(sidebarWidth);
    line->addWidget(sidebar_);
    scroll_ = new PageScroll(this);
    line->addWidget(scroll_, 1);

    auto* const sheet = new QWidget;
    sheet_ = new QVBoxLayout(sheet);
    sheet_->setContentsMargins(sideMargin, topMargin, sideMargin - PageScroll::barWidth,
                               bottomMargin);
    pageWidget_ = makePage();
    sheet_->addWidget(pageWidget_);
    sheet_->addStretch();
    scroll_->setWidget(sheet);
    sheet->setAutoFillBackground(false);

    chosen_ = sidebar_->selected().subscribe([this](Page chosen) { setPage(chosen); });
    selected_ = services.notifications.observe(
        notification::settingsSelect, [this](const NotificationCenter::Object& object) {
            if (const auto* const wanted = std::any_cast<Page>(&object)) {
                setPage(*wanted);
            }
        });
    addStepShortcuts();
}

void SettingsView::setPage(Page page) {
    if (page != page_) {
        page_ = page;
        sidebar_->setPage(page);
        rebuildPage();
    }
}

void SettingsView::rebuildPage() {
    isStale_ = false;
    auto* const old = pageWidget_;
    const auto* const focused = focusWidget();
    const bool hadFocus = old->isAncestorOf(focused) || sidebar_->isAncestorOf(focused);
    sheet_->removeWidget(old);
    old->hide();
    // One of its controls may be what selects another page.
    old->deleteLater();
    pageWidget_ = makePage();
    sheet_->insertWidget(0, pageWidget_);
    pageWidget_->show();
    scroll_->verticalScrollBar()->setValue(0);
    if (hadFocus) {
        sidebar_->takeFocus();
    }
}

void SettingsView::showEvent(QShowEvent* event) {
    if (isStale_) {
        rebuildPage();
    }
    QWidget::showEvent(event);
}

void SettingsView::hideEvent(QHideEvent* event) {
    // A window that is merely minimized keeps its page as it is.
    isStale_ = isStale_ || !event->spontaneous();
    QWidget::hideEvent(event);
}

bool SettingsView::event(QEvent* event) {
    // Where the focus follows the pointer, nobody else notices.
    if (event->type() == QEvent::WindowDeactivate || event->type() == QEvent::Hide) {
        services_.recorder.stop();
    }
    return QWidget::event(event);
}

void SettingsView::addStepShortcuts() {
    const auto add = [this](const QKeySequence& keys, std::size_t step) {
        auto* const shortcut = new QShortcut(keys, this);
        connect(shortcut, &QShortcut::activated, this, [this, step] {
            const auto place = static_cast<std::size_t>(page_) + step;
            setPage(allSettingsPages.at(place % allSettingsPages.size()));
        });
    };
    constexpr std::size_t forward = 1;
    constexpr std::size_t back = allSettingsPages.size() - 1;
    add(QKeySequence(Qt::CTRL | Qt::Key_Tab), forward);
    add(QKeySequence(Qt::CTRL | Qt::Key_PageDown), forward);
    add(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab), back);
    add(QKeySequence(Qt::CTRL | Qt::Key_PageUp), back);
}

QWidget* SettingsView::makePage() {
    switch (page_) {
        case Page::general:
            return new GeneralPage(services_);
        case Page::zones:
            return new ZonesPage(services_);
        case Page::shortcuts:
            return new ShortcutsPage(services_);
        case Page::arrangements:
            return new ArrangementsPage(services_);
        case Page::rules:
            return new RulesPage(services_);
        case Page::displays:
            return new DisplaysPage(services_);
        case Page::about:
            break;
    }
    return new AboutPage(services_);
}

}  // namespace tessellon
