// The push button of the program: a capsule with a line of text.
#pragma once

#include <QAbstractButton>
#include <QString>
#include <cstdint>

namespace tessellon {

/// What a page is there for is the primary button; all others are quiet.
enum class PillButtonStyle : std::uint8_t { primary, quiet };

/// As wide as its text needs and 34 logical pixels high. Space and Return press it. Leave
/// FocusRing::reach around it.
class PillButton : public QAbstractButton {
  public:
    PillButton(const QString& text, PillButtonStyle style, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    PillButtonStyle style_;
};

}  // namespace tessellon
