// The grid that appears while a window is dragged, and the preview.
#pragma once

#include "settings/settings_services.h"
#include "settings/snap_preview_demo.h"

#include <QWidget>

namespace tessellon {

class ZonesPage : public QWidget {
  public:
    /// Shows everything as it is now; what `services` names must outlive the page.
    explicit ZonesPage(const SettingsServices& services, QWidget* parent = nullptr);

  protected:
    void hideEvent(QHideEvent* event) override;

  private:
    SnapPreviewDemo demo_;
};

}  // namespace tessellon
