// A paragraph that explains something on a page.
#pragma once

#include "ui/text_label.h"

#include <QString>
#include <QWidget>

namespace tessellon {

/// As wide as the page, in the colour of secondary text and in line with the other texts.
TextLabel* makePageNote(const QString& text, QWidget* parent = nullptr);

}  // namespace tessellon
