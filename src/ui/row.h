// One setting: its name, a line about it and the control that changes it.
#pragma once

#include <QString>
#include <QVBoxLayout>
#include <QWidget>

namespace tessellon {

class TextLabel;

class Row : public QWidget {
  public:
    /// Takes `trailing`, the control at its trailing edge, as its child. Without a subtitle there
    /// is no second line.
    Row(const QString& title, const QString& subtitle, QWidget* trailing,
        QWidget* parent = nullptr);

    void setSubtitle(const QString& subtitle);
    /// Empty when there is none.
    QString subtitle() const;

    /// Puts another control before the one at the trailing edge; takes it as its child.
    void addBeside(QWidget* control);

    /// Puts another widget below the texts, such as a link or an error; takes it as its child.
    void addBelow(QWidget* widget);

  protected:
    bool event(QEvent* event) override;

  private:
    QVBoxLayout* texts_;
    QWidget* trailing_;
    QVBoxLayout* below_ = nullptr;
    TextLabel* subtitle_ = nullptr;
};

}  // namespace tessellon
