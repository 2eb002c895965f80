// One of the applications that never snap, as the list of them shows it.
#pragma once

#include "settings/installed_icon_view.h"
#include "settings/rules_model.h"

#include <QAbstractButton>
#include <QColor>
#include <QImage>
#include <QString>
#include <QWidget>
#include <functional>
#include <optional>
#include <utility>

namespace tessellon {

/// Icon and name in a coloured capsule, with a button that removes it. A name that is too wide for
/// the pill ends in an ellipsis.
class IgnoredPill : public QWidget {
  public:
    IgnoredPill(IgnoredApplication application, QWidget* parent);

    const IgnoredApplication& application() const { return application_; }
    QAbstractButton& removeButton() const { return *remove_; }

    void setTint(const QColor& tint);

    /// `wanted` is called whenever the pill has been drawn without its icon, which has not been
    /// looked for yet.
    void setIconWanted(std::function<void()> wanted) { iconWanted_ = std::move(wanted); }
    bool waitsForIcon() const { return waitsForIcon_; }
    void findIcon();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

  private:
    int furniture() const;
    int nameLeft() const;
    QRect nameRect() const;
    InstalledPicture picture() const;
    void paintIcon(QPainter& painter, const QRect& square);

    std::function<void()> iconWanted_;
    IgnoredApplication application_;
    QString name_;
    /// Null when there is none; nothing before it was looked for.
    std::optional<QImage> icon_;
    bool waitsForIcon_ = false;
    int nameWidth_;
    int height_;
    QString fittedName_;
    QColor tint_;
    QAbstractButton* remove_;
};

}  // namespace tessellon
