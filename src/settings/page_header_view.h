// The head of a page: what it is called and what it is for.
#pragma once

#include <QString>
#include <QWidget>

namespace tessellon {

class PageHeader : public QWidget {
  public:
    PageHeader(const QString& title, const QString& subtitle, QWidget* parent = nullptr);
};

}  // namespace tessellon
