// A field for one line of text.
#pragma once

#include <QLineEdit>
#include <QString>

namespace tessellon {

/// Leave FocusRing::reach around it.
class TextField : public QLineEdit {
  public:
    /// `accessibleName` says to assistive technology what is to be typed.
    TextField(const QString& accessibleName, const QString& placeholder, QWidget* parent = nullptr);

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace tessellon
