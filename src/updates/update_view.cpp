#include "updates/update_view.h"

#include "ui/accessible_role.h"
#include "ui/control_style.h"
#include "ui/focus_ring.h"
#include "ui/fonts.h"
#include "ui/glyph.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/text_label.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPalette>
#include <QScreen>
#include <QScrollBar>
#include <QTextDocument>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace tessellon {
namespace {

constexpr int contentWidth = 392;
constexpr int margin = 24;
constexpr int spacing = 18;
constexpr int glyphSize = 52;
constexpr int glyphSpacing = 18;
constexpr int textWidthBesideGlyph = contentWidth - glyphSize - glyphSpacing;
constexpr int buttonSpacing = 12;

constexpr double headlineSize = 18;
constexpr double textSize = 13;

constexpr double cardRadius = 14;
constexpr int cardPadding = 12;
constexpr int mostNotesHeight = 190;

// The bar of the notes alone: the toolkit's own has edges where everything here is round.
constexpr auto scrollBarStyle = R"(
    QScrollBar:vertical { background: transparent; width: 8px; margin: 0; border: none; }
    QScrollBar::handle:vertical { background: #ebdcc6; border-radius: 4px; min-height: 28px; }
    QScrollBar::handle:vertical:hover { background: #7a6758; }
    QScrollBar::add-line, QScrollBar::sub-line { height: 0; }
    QScrollBar::add-page, QScrollBar::sub-page { background: none; }
)";

QString fromUtf8(const std::string& text) {
    return QString::fromStdString(text);
}

/// The paper that the notes lie on.
class NotesCard : public QWidget {
  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        paintRoundedRect(painter, rect(), cardRadius, palette::paper,
                         {palette::ink, control_style::outline});
    }
};

TextLabel* makeLabel(double size, QFont::Weight weight, const QColor& color, int width,
                     QWidget* parent) {
    auto* const label = new TextLabel({}, size, weight, color, TextWrap::words, parent);
    label->setFixedWidth(width);
    return label;
}

struct Words {
    QString headline;
    QString text;
};

/// What a state is called, and what it means.
struct Describe {
    QString program;

    Words operator()(const Checking& /*state*/) const {
        return {QStringLiteral("Checking…"),
                QStringLiteral("Looking for a version newer than %1.").arg(program)};
    }
    Words operator()(const UpToDate& /*state*/) const {
        return {QStringLiteral("Tessellon is up to date"),
                QStringLiteral("You have version %1, and there is no newer one.").arg(program)};
    }
    Words operator()(const Update& update) const {
        return {QStringLiteral("Tessellon %1 is available").arg(fromUtf8(update.version.text())),
                QStringLiteral("You have version %1.").arg(program)};
    }
    Words operator()(const CheckFailed& failure) const {
        return {QStringLiteral("The check did not work"), fromUtf8(failure.problem)};
    }
    Words operator()(const NoFeed& /*state*/) const {
        return {QStringLiteral("No update feed"),
                QStringLiteral("This build of Tessellon knows no update feed, so it cannot look "
                               "for newer versions. You have version %1.")
                    .arg(program)};
    }
};

}  // namespace

UpdateView::UpdateView(UpdateModel& model, OpenPage openPage)
    : model_(&model), openPage_(std::move(openPage)) {
    setAccessibleRole(*this, QAccessible::Window);
    setWindowTitle(QStringLiteral("Tessellon Updates"));
    setWindowIcon(glyphIcon());
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint |
                   Qt::WindowMinimizeButtonHint);
    auto colors = QWidget::palette();
    colors.setColor(QPalette::Window, palette::background);
    setPalette(colors);
    setAutoFillBackground(true);
    makeContent();
    changed_ = model.changed().subscribe([this] { refresh(); });
    choiceChanged_ = model.updater().changed().subscribe([this] { refreshChoice(); });
    refresh();
    refreshChoice();
}

void UpdateView::detach() {
    changed_.reset();
    choiceChanged_.reset();
    model_ = nullptr;
}

void UpdateView::bringToFront() {
    setAttribute(Qt::WA_ShowWithoutActivating, false);
    if (!isVisible()) {
        center();
    }
    if (isMinimized()) {
        showNormal();
    } else {
        show();
    }
    raise();
    activateWindow();
}

void UpdateView::showQuietly() {
    if (!isVisible()) {
        setAttribute(Qt::WA_ShowWithoutActivating);
        center();
        show();
    }
}

void UpdateView::center() {
    const auto size = sizeHint();
    move(screen()->availableGeometry().center() - QPoint(size.width(), size.height()) / 2);
}

void UpdateView::makeContent() {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(spacing);
    column->setSizeConstraint(QLayout::SetFixedSize);

    auto* const top = new QHBoxLayout;
    top->setSpacing(glyphSpacing);
    top->addWidget(new Glyph(glyphSize, this), 0, Qt::AlignTop);
    auto* const words = new QVBoxLayout;
    words->setSpacing(4);
    headline_ = makeLabel(headlineSize, QFont::Bold, palette::ink, textWidthBesideGlyph, this);
    text_ = makeLabel(textSize, QFont::Medium, palette::muted, textWidthBesideGlyph, this);
    words->addStretch();
    words->addWidget(headline_);
    words->addWidget(text_);
    words->addStretch();
    top->addLayout(words);
    column->addLayout(top);

    notesCard_ = new NotesCard(this);
    notesCard_->setFixedWidth(contentWidth);
    auto* const inCard = new QVBoxLayout(notesCard_);
    inCard->setContentsMargins(cardPadding, cardPadding, cardPadding, cardPadding);
    notes_ = new QPlainTextEdit(notesCard_);
    notes_->setReadOnly(true);
    notes_->setTabChangesFocus(true);
    notes_->setFrameShape(QFrame::NoFrame);
    notes_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    notes_->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    notes_->setContextMenuPolicy(Qt::NoContextMenu);
    notes_->setFont(interfaceFont(textSize));
    notes_->document()->setDocumentMargin(0);
    notes_->verticalScrollBar()->setStyleSheet(QLatin1String(scrollBarStyle));
    notes_->setAccessibleName(QStringLiteral("What is new"));
    auto colors = notes_->palette();
    colors.setColor(QPalette::Base, palette::paper);
    colors.setColor(QPalette::Text, palette::ink);
    colors.setColor(QPalette::Highlight, palette::withOpacity(palette::teal, 0.4));
    colors.setColor(QPalette::HighlightedText, palette::ink);
    notes_->setPalette(colors);
    new FocusRing(*notes_, FocusRing::reach);
    inCard->addWidget(notes_);
    column->addWidget(notesCard_);

    auto* const choiceLine = new QHBoxLayout;
    choiceLabel_ = makeLabel(textSize, QFont::DemiBold, palette::ink, contentWidth / 2, this);
    choiceLabel_->setText(QStringLiteral("Check once a day"));
    choice_ = new PillToggle(choiceLabel_->text(), this);
    choiceLine->addWidget(choiceLabel_);
    choiceLine->addStretch();
    choiceLine->addWidget(choice_);
    column->addLayout(choiceLine);

    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(buttonSpacing);
    buttons->addStretch();
    close_ = new PillButton(QStringLiteral("Close"), PillButtonStyle::quiet, this);
    tryAgain_ = new PillButton(QStringLiteral("Try again"), PillButtonStyle::primary, this);
    open_ = new PillButton(QStringLiteral("Open page"), PillButtonStyle::primary, this);
    for (auto* const button : {close_, tryAgain_, open_}) {
        buttons->addWidget(button);
    }
    column->addLayout(buttons);

    connect(choice_, &QAbstractButton::clicked, this, [this](bool checked) {
        if (model_ != nullptr) {
            model_->updater().setAutomaticallyChecksForUpdates(checked);
        }
    });
    connect(close_, &QAbstractButton::clicked, this, [this] { close(); });
    connect(tryAgain_, &QAbstractButton::clicked, this, [this] {
        if (model_ != nullptr) {
            model_->updater().checkForUpdates();
        }
    });
    connect(open_, &QAbstractButton::clicked, this, [this] { this->openPage(); });
}

void UpdateView::refresh() {
    const auto& state = model_->state();
    const auto words = std::visit(Describe{fromUtf8(model_->program().text())}, state);
    headline_->setText(words.headline);
    text_->setText(words.text);
    text_->setTextInteractionFlags(Qt::NoTextInteraction);
    setAccessibleDescription(words.headline + QStringLiteral(". ") + words.text);

    const auto* const update = std::get_if<Update>(&state);
    showNotes(update != nullptr ? fromUtf8(update->notes) : QString());
    const bool hasFeed = !std::holds_alternative<NoFeed>(state);
    choiceLabel_->setVisible(hasFeed);
    choice_->setVisible(hasFeed);
    // The button that goes would hand the keyboard to whatever comes next.
    close_->setFocus(Qt::ActiveWindowFocusReason);
    open_->setVisible(update != nullptr);
    tryAgain_->setVisible(std::holds_alternative<CheckFailed>(state));
    for (auto* const primary : {open_, tryAgain_}) {
        if (!primary->isHidden()) {
            primary->setFocus(Qt::ActiveWindowFocusReason);
        }
    }
}

void UpdateView::refreshChoice() {
    choice_->setChecked(model_->updater().automaticallyChecksForUpdates());
}

void UpdateView::showNotes(const QString& notes) {
    notesCard_->setVisible(!notes.isEmpty());
    notes_->setPlainText(notes);
    const int lineWidth = contentWidth - 2 * cardPadding;
    const auto heightAt = [&](int width) {
        const auto copy = std::unique_ptr<QTextDocument>(notes_->document()->clone());
        copy->setDefaultFont(notes_->font());
        copy->setTextWidth(width);
        return static_cast<int>(std::ceil(copy->size().height()));
    };
    const int height = heightAt(lineWidth);
    const bool scrolls = height > mostNotesHeight;
    notes_->setFixedHeight(std::min(height, mostNotesHeight));
    notes_->setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    // Without anything to scroll the keyboard has nothing to do there.
    notes_->setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::ClickFocus);
}

void UpdateView::openPage() {
    const auto* const update = model_ != nullptr ? std::get_if<Update>(&model_->state()) : nullptr;
    if (update == nullptr) {
        return;
    }
    const auto address = fromUtf8(update->page);
    if (!openPage_(QUrl(address, QUrl::StrictMode))) {
        text_->setText(QStringLiteral("The page could not be opened. Its address is ") + address);
        text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
}

void UpdateView::closeEvent(QCloseEvent* event) {
    event->accept();
    if (model_ != nullptr) {
        // Destroys what this window belongs to, and has it deleted later.
        const auto closed = model_->closed;
        closed();
    }
}

void UpdateView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape || event->matches(QKeySequence::Close)) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

}  // namespace tessellon
