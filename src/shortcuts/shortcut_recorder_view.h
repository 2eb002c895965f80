// The control that shows a shortcut and records a new one.
#pragma once

#include "base/token.h"
#include "shortcuts/hotkey_target.h"
#include "shortcuts/recorder.h"

#include <QAbstractButton>
#include <QPainter>
#include <QRectF>
#include <QSize>
#include <QSizeF>
#include <QString>
#include <QStringList>

namespace tessellon {

class Chip;

/// The keys of a target's shortcut as caps, "Record" where there is none, or the request for new
/// keys while they are recorded; with a chip beside it when the shortcut is somebody else's. A
/// click or the space bar starts the recording and ends it; a control that goes leaves it to the
/// next one for the target. The window that holds the control has to end it once it is hidden or
/// not the active one any more. As wide as what it shows. Leave FocusRing::reach around it.
class ShortcutRecorder : public QAbstractButton {
  public:
    /// `size` is the height of the key caps in logical pixels. The recorder must outlive the
    /// control.
    ShortcutRecorder(Recorder& recorder, const HotkeyTarget& target, double size,
                     QWidget* parent = nullptr);

    /// What assistive technology calls the target instead of its title, which other targets may
    /// have, too.
    void setSpokenTitle(const QString& title);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    /// The part that a click counts on: all but the chip.
    QRectF buttonRect() const;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool hitButton(const QPoint& position) const override;

  private:
    enum class Shown { keys, record, recording };

    bool isRecording() const { return recorder_.target() == target_; }
    void follow();
    void describe();
    void showChip(bool shown);
    void place();
    QSizeF buttonSize() const;
    void paintButton(QPainter& painter) const;

    Recorder& recorder_;
    HotkeyTarget target_;
    double size_;
    int revision_ = 0;
    Shown shown_ = Shown::record;
    QStringList keys_;
    /// Whose the keys are, in a sentence; empty while they are ours.
    QString takenHelp_;
    QString spokenTitle_;
    Chip* chip_ = nullptr;
    Token changed_;
};

}  // namespace tessellon
