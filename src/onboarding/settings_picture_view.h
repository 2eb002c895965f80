// A small picture of the list in which the permission is given.
#pragma once

#include <QWidget>
#include <cstdint>

namespace tessellon {

enum class Permission : std::uint8_t { missing, granted };

/// Assistive technology passes over it.
class SettingsPicture : public QWidget {
  public:
    explicit SettingsPicture(Permission permission, QWidget* parent = nullptr);

    void setPermission(Permission permission);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Permission permission_;
};

}  // namespace tessellon
