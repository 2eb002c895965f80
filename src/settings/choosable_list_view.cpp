#include "settings/choosable_list_view.h"

#include "settings/installed_icon_view.h"
#include "ui/control_style.h"
#include "ui/fonts.h"
#include "ui/palette.h"
#include "ui/scroll_bar.h"
#include "ui/shapes.h"
#include "ui/symbols.h"
#include "ui/text.h"

#include <QAbstractListModel>
#include <QFocusEvent>
#include <QHash>
#include <QIcon>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <algorithm>
#include <cmath>

namespace tessellon {
namespace {

constexpr int iconRole = Qt::UserRole;

constexpr int rowHeight = 42;
constexpr int sidePadding = 12;
constexpr int spacing = 12;
constexpr int boxSize = 18;
constexpr double boxRadius = 6;
constexpr double markInset = 3;
constexpr double markStroke = 3.4;
constexpr int iconSize = 24;
constexpr double nameSize = 13.5;
constexpr double noteSize = 11.5;
constexpr double rowRadius = 10;
constexpr double lightOpacity = 0.5;
constexpr double chosenOpacity = 0.22;

/// Paints the lines. An icon is looked for when its line is first to be seen.
class Delegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& /*option*/,
                   const QModelIndex& /*index*/) const override {
        const auto line = static_cast<int>(std::ceil(lineHeight(interfaceFont(nameSize))));
        return {0, std::max(rowHeight, line + spacing)};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
        const bool isChosen = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        paintGround(*painter, option, isEnabled, isChosen);
        const auto place = [&option](int x, int side) {
            return QStyle::visualRect(
                option.direction, option.rect,
                QRect(option.rect.x() + x, option.rect.y() + (option.rect.height() - side) / 2,
                      side, side));
        };
        painter->setOpacity(isEnabled ? 1 : control_style::disabledOpacity);
        paintBox(*painter, place(sidePadding, boxSize), isChosen || !isEnabled);
        int x = sidePadding + boxSize + spacing;
        icon(index.data(iconRole).toString()).paint(painter, place(x, iconSize));
        x += iconSize + spacing;
        paintTexts(*painter, option, index, isEnabled, x);
        painter->restore();
    }

    /// Anywhere on its line a click chooses it.
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override {
        if (!index.flags().testFlag(Qt::ItemIsEnabled)) {
            return false;
        }
        if (event->type() == QEvent::MouseButtonRelease) {
            const auto* const click = static_cast<QMouseEvent*>(event);
            if (click->button() != Qt::LeftButton ||
                !option.rect.contains(click->position().toPoint())) {
                return false;
            }
        } else if (event->type() != QEvent::KeyPress ||
                   static_cast<QKeyEvent*>(event)->key() != Qt::Key_Space) {
            return false;
        }
        const bool isChosen = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        return model->setData(index, isChosen ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    }

  private:
    static void paintGround(QPainter& painter, const QStyleOptionViewItem& option, bool isEnabled,
                            bool isChosen) {
        const QRectF ground = QRectF(option.rect).adjusted(2, 1, -2, -1);
        QColor fill;
        if (isEnabled && isChosen) {
            fill = palette::withOpacity(palette::teal, chosenOpacity);
        } else if (isEnabled && option.state.testFlag(QStyle::State_MouseOver)) {
            fill = palette::withOpacity(palette::line, lightOpacity);
        }
        const bool isCurrent = option.state.testFlag(QStyle::State_HasFocus);
        paintRoundedRect(painter, ground, rowRadius, fill,
                         isCurrent ? Border{palette::ink, 2} : Border{});
    }

    static void paintBox(QPainter& painter, const QRectF& box, bool isMarked) {
        paintRoundedRect(painter, box, boxRadius, isMarked ? palette::teal : palette::paper,
                         {palette::ink, control_style::outline});
        if (isMarked) {
            drawSymbol(painter, Symbol::checkmark,
                       box.adjusted(markInset, markInset, -markInset, -markInset), palette::ink,
                       markStroke);
        }
    }

    static void paintTexts(QPainter& painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index, bool isEnabled, int x) {
        QRect room = option.rect.adjusted(x, 0, -sidePadding, 0);
        const auto inDirection = [&option](const QRect& rect) {
            return QStyle::visualRect(option.direction, option.rect, rect);
        };
        if (!isEnabled) {
            const auto note = QStringLiteral("Already ignored");
            const auto font = interfaceFont(noteSize, QFont::DemiBold);
            const auto width = static_cast<int>(std::ceil(textWidth(font, note)));
            QRect end = room;
            end.setLeft(room.right() + 1 - width);
            painter.setFont(font);
            painter.setPen(palette::ink);
            drawLine(painter, inDirection(end), note, Qt::AlignLeading);
            room.setRight(end.left() - spacing);
        }
        const auto name = fitText(index.data(Qt::DisplayRole).toString(), room.width(), nameSize,
                                  QFont::DemiBold, 1);
        painter.setFont(name.font);
        painter.setPen(palette::ink);
        drawLine(painter, inDirection(room), name.text, Qt::AlignLeading);
    }

    const QIcon& icon(const QString& name) const {
        const auto found = icons_.constFind(name);
        return found != icons_.constEnd() ? *found : *icons_.insert(name, installedIcon(name));
    }

    mutable QHash<QString, QIcon> icons_;
};

}  // namespace

class ChoosableList::Model : public QAbstractListModel {
  public:
    Model(const std::vector<ChoosableApplication>& applications, const Signal<>& changed)
        : changed_(changed) {
        lines_.reserve(applications.size());
        for (const auto& each : applications) {
            lines_.push_back({singleLine(each.application.name),
                              toQString(each.application.identifier),
                              toQString(each.application.icon), each.isIgnored});
        }
        setFilter(QString());
    }

    void setFilter(const QString& text) {
        beginResetModel();
        seen_.clear();
        for (std::size_t at = 0; at < lines_.size(); ++at) {
            const auto& line = lines_[at];
            if (line.name.contains(text, Qt::CaseInsensitive) ||
                line.identifier.contains(text, Qt::CaseInsensitive)) {
                seen_.push_back(at);
            }
        }
        endResetModel();
    }

    std::vector<std::string> chosen() const {
        std::vector<std::string> identifiers;
        for (const auto& line : lines_) {
            if (line.isChosen) {
                identifiers.push_back(line.identifier.toStdString());
            }
        }
        return identifiers;
    }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(seen_.size());
    }

    Qt::ItemFlags flags(const QModelIndex& index) const override {
        constexpr auto choosable = Qt::ItemIsEnabled | Qt::ItemIsUserCheckable;
        return (line(index).isIgnored ? Qt::ItemFlags() : choosable) | Qt::ItemNeverHasChildren;
    }

    QVariant data(const QModelIndex& index, int role) const override {
        const auto& shown = line(index);
        switch (role) {
            case Qt::DisplayRole:
                return shown.name;
            case Qt::ToolTipRole:
                return shown.identifier.toHtmlEscaped();
            case Qt::AccessibleDescriptionRole:
                return shown.isIgnored ? QStringLiteral("Already ignored") : shown.identifier;
            case Qt::CheckStateRole:
                return shown.isChosen || shown.isIgnored ? Qt::Checked : Qt::Unchecked;
            case iconRole:
                return shown.icon;
            default:
                return {};
        }
    }

    bool setData(const QModelIndex& index, const QVariant& value, int role) override {
        if (role != Qt::CheckStateRole || line(index).isIgnored) {
            return false;
        }
        line(index).isChosen = value.toInt() == Qt::Checked;
        Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});
        changed_.emit();
        return true;
    }

  private:
    struct Line {
        QString name;
        QString identifier;
        QString icon;
        bool isIgnored = false;
        bool isChosen = false;
    };

    const Line& line(const QModelIndex& index) const {
        return lines_.at(seen_.at(static_cast<std::size_t>(index.row())));
    }
    Line& line(const QModelIndex& index) {
        return lines_.at(seen_.at(static_cast<std::size_t>(index.row())));
    }

    std::vector<Line> lines_;
    /// Those that the filter lets through.
    std::vector<std::size_t> seen_;
    const Signal<>& changed_;
};

ChoosableList::ChoosableList(const std::vector<ChoosableApplication>& applications, QWidget* parent)
    : QListView(parent), model_(std::make_unique<Model>(applications, choiceChanged_)) {
    setAccessibleName(QStringLiteral("Applications"));
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setUniformItemSizes(true);
    setMouseTracking(true);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollBar(new ScrollBar(this));
    verticalScrollBar()->setSingleStep(rowHeight / 2);
    viewport()->setAutoFillBackground(false);
    setItemDelegate(new Delegate(this));
    setModel(model_.get());
}

ChoosableList::~ChoosableList() {
    setModel(nullptr);
}

void ChoosableList::setFilter(const QString& text) {
    model_->setFilter(text);
    goToFirst();
}

int ChoosableList::lineCount() const {
    return model_->rowCount();
}

std::vector<std::string> ChoosableList::chosen() const {
    return model_->chosen();
}

void ChoosableList::chooseCurrent() {
    if (currentIndex().isValid()) {
        model_->setData(currentIndex(), Qt::Checked, Qt::CheckStateRole);
    }
}

void ChoosableList::goToFirst() {
    for (int row = 0; row < model_->rowCount(); ++row) {
        const auto index = model_->index(row);
        if (index.flags().testFlag(Qt::ItemIsEnabled)) {
            setCurrentIndex(index);
            return;
        }
    }
}

void ChoosableList::focusInEvent(QFocusEvent* event) {
    if (!currentIndex().isValid()) {
        goToFirst();
    }
    QListView::focusInEvent(event);
}

}  // namespace tessellon
