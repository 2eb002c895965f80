#include "settings/rules_page_view.h"

#include "app/preferences.h"
#include "settings/application_chooser_view.h"
#include "settings/ignored_list_view.h"
#include "settings/page_header_view.h"
#include "settings/section_title_view.h"
#include "ui/bound_controls.h"
#include "ui/card.h"
#include "ui/divide.h"
#include "ui/focus_ring.h"
#include "ui/palette.h"
#include "ui/pill_button.h"
#include "ui/symbol_label.h"
#include "ui/text.h"
#include "ui/text_field.h"
#include "ui/text_label.h"

#include <QHBoxLayout>
#include <QHideEvent>
#include <QVBoxLayout>

namespace tessellon {
namespace {

constexpr int blockSpacing = 14;
constexpr int rowSpacing = 10;
constexpr int partSpacing = 8;
constexpr int lensSize = 18;
constexpr int pawSize = 16;
constexpr double textSize = 13;
constexpr double tipSize = 12;
// A longer word has to be broken, or it would not fit on a line of the page.
constexpr int longestWord = 40;

/// The text with places at which words that are too long for a line may be broken.
QString breakable(const QString& text) {
    QString result;
    int length = 0;
    for (const auto character : text) {
        length = character.isSpace() ? 0 : length + 1;
        result += character;
        if (length >= longestWord && !character.isHighSurrogate()) {
            result += QChar(0x200B);  // a space without width
            length = 0;
        }
    }
    return result;
}

}  // namespace

RulesPage::RulesPage(const SettingsServices& services, QWidget* parent)
    : QWidget(parent),
      model_(services.defaults, services.directory, services.engine.services().applications),
      heading_(new SectionTitle(QStringLiteral("Apps that never snap"), this)),
      list_(new IgnoredList(this)),
      nothing_(new TextLabel(QStringLiteral("No apps yet. Everything snaps."), textSize,
                             QFont::Medium, palette::muted, TextWrap::words, this)),
      error_(new TextLabel(QString(), textSize, QFont::DemiBold, palette::coral, TextWrap::words,
                           this)) {
    // The pills before the field, which is the order of the Tab key.
    refresh();
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(blockSpacing);
    column->addWidget(new PageHeader(QStringLiteral("Rules"),
                                     QStringLiteral("Some apps just don't like being snapped. Tell "
                                                    "Tessellon once and it leaves them alone."),
                                     this));
    column->addWidget(heading_);
    auto* const apps = new Card(rowsCardStyle(), this);
    apps->column().setSpacing(rowSpacing);
    apps->column().addWidget(list_);
    apps->column().addWidget(nothing_);
    apps->column().addWidget(new Divide(apps));
    apps->column().addWidget(makeAddRow());
    apps->column().addWidget(error_);
    column->addWidget(apps);
    auto* const rows = new Card(rowsCardStyle(), this);
    rows->column().addWidget(makeBoundToggleRow(
        services.defaults, preference::ignoreSmall, QStringLiteral("Ignore small windows"),
        QStringLiteral("Dialogs and pickers under 400 × 300 never snap."), rows));
    column->addWidget(rows);
    column->addWidget(makeTip());
    column->addStretch();
    nothing_->setContentsMargins(FocusRing::reach, FocusRing::reach, FocusRing::reach,
                                 FocusRing::reach);
    error_->setContentsMargins(FocusRing::reach, 0, FocusRing::reach, 0);
    list_->setNextControl(*field_);
    modelToken_ = model_.changed().subscribe([this] { refresh(); });
    removalToken_ = list_->removed().subscribe(
        [this](const std::string& identifier) { model_.remove(identifier); });
}

RulesPage::~RulesPage() {
    delete chooser_;
}

QWidget* RulesPage::makeAddRow() {
    auto* const row = new QWidget(this);
    auto* const line = new QHBoxLayout(row);
    line->setContentsMargins(FocusRing::reach, FocusRing::reach, FocusRing::reach,
                             FocusRing::reach);
    line->setSpacing(partSpacing + FocusRing::reach);
    line->addWidget(
        new SymbolLabel(Symbol::magnifyingGlass, lensSize, palette::muted, symbolStroke, row));
    field_ = new TextField(QStringLiteral("App to add"),
                           QStringLiteral("Add an app that should never snap…"), row);
    field_->setEscape(EscapeInField::clears);
    line->addWidget(field_, 1);
    auto* const button = new PillButton(QStringLiteral("Add app"), PillButtonStyle::primary, row);
    button->setSymbol(Symbol::plus);
    line->addWidget(button);
    connect(field_, &QLineEdit::textChanged, this,
            [this](const QString& text) { model_.setQuery(text.toStdString()); });
    connect(field_, &QLineEdit::returnPressed, this, [this] { add(); });
    connect(button, &QAbstractButton::clicked, this, [this] { add(); });
    return row;
}

QWidget* RulesPage::makeTip() {
    auto* const row = new QWidget(this);
    auto* const line = new QHBoxLayout(row);
    line->setContentsMargins(FocusRing::reach, 0, FocusRing::reach, 0);
    line->setSpacing(partSpacing);
    line->addWidget(
        new SymbolLabel(Symbol::pawprintFill, pawSize, palette::muted, symbolStroke, row));
    line->addWidget(
        new TextLabel(QStringLiteral("Tip: use “Ignore this app” in the menu bar to add the app "
                                     "you're in. Quibbin approves."),
                      tipSize, QFont::Medium, palette::muted, TextWrap::words, row),
        1);
    return row;
}

void RulesPage::refresh() {
    const auto entries = model_.entries();
    heading_->setChip(toQString(model_.count()), palette::teal);
    list_->setEntries(entries);
    list_->setVisible(!entries.empty());
    nothing_->setVisible(entries.empty());
    const auto query = toQString(model_.query());
    if (field_ != nullptr && field_->text() != query) {
        field_->setText(query);
    }
    const auto& error = model_.error();
    const auto problem = error ? toQString(*error) : QString();
    error_->setText(breakable(problem));
    error_->setAccessibleName(problem);
    error_->setVisible(error.has_value());
    if (field_ != nullptr) {
        field_->setAccessibleDescription(problem);
    }
}

void RulesPage::add() {
    if (model_.query().empty()) {
        choose();
    } else {
        model_.search();
    }
}

void RulesPage::choose() {
    if (chooser_) {
        return;
    }
    chooser_ = new ApplicationChooser(model_.choosable(), window());
    choiceToken_ = chooser_->chosen().subscribe([this](const auto& identifiers) {
        for (const auto& identifier : identifiers) {
            model_.add(identifier);
        }
    });
    chooser_->open();
}

void RulesPage::hideEvent(QHideEvent* event) {
    // A window that is merely minimised keeps its question.
    if (!event->spontaneous() && chooser_) {
        chooser_->reject();
    }
    QWidget::hideEvent(event);
}

}  // namespace tessellon
