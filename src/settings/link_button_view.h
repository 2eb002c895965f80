// A button that reads like a link within a text.
#pragma once

#include <QAbstractButton>
#include <QString>

namespace tessellon {

/// An underlined line of text; Space and Return press it. Leave FocusRing::reach around it.
class LinkButton : public QAbstractButton {
  public:
    explicit LinkButton(const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace tessellon
