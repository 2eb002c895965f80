// The ring around the control that has the keyboard. It lies outside the control's edge, on the
// parent, so that controls keep their measures.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace tessellon {

class FocusRing : public QObject {
  public:
    /// Shows the ring around `control`, which owns it, while the control has the focus and did not
    /// get it by a click. `radius` is the control's corner radius in logical pixels; half its
    /// height makes a capsule.
    FocusRing(QWidget& control, double radius);
    FocusRing(const FocusRing&) = delete;
    FocusRing& operator=(const FocusRing&) = delete;
    ~FocusRing() override;

    /// How far the ring reaches beyond the control on each side, in logical pixels: the room to
    /// leave between a control and its parent's edge.
    static constexpr int reach = 4;

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void place();
    void setShown(bool shown);

    QWidget& control_;
    double radius_;
    bool byKeyboard_ = false;
    QPointer<QWidget> frame_;
};

}  // namespace tessellon
