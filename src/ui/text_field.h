// A field for one line of text.
#pragma once

#include <QLineEdit>
#include <QString>
#include <cstdint>

namespace tessellon {

/// What the Escape key does in a field.
enum class EscapeInField : std::uint8_t {
    /// Is left to what the field lies in, such as a dialog that it closes.
    passes,
    /// Empties the field; with nothing in it, it passes.
    clears,
    /// Passes the keyboard on to the next control.
    leaves,
};

/// Leave FocusRing::reach around it.
class TextField : public QLineEdit {
  public:
    /// `accessibleName` says to assistive technology what is to be typed.
    TextField(const QString& accessibleName, const QString& placeholder, QWidget* parent = nullptr);

    void setEscape(EscapeInField escape) { escape_ = escape; }

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    EscapeInField escape_ = EscapeInField::passes;
};

}  // namespace tessellon
