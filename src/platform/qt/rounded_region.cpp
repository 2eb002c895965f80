#include "platform/qt/rounded_region.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace tessellon {

QRegion roundedRegion(const QRect& rect, double radius) {
    const double r = std::min(radius, std::min(rect.width(), rect.height()) / 2.0);
    const int cornerRows = static_cast<int>(std::ceil(r - 0.5));
    if (rect.isEmpty() || cornerRows < 1) {
        return QRegion(rect);
    }
    // Row by row from the top, as setRects wants them.
    std::vector<QRect> rows;
    const auto addCornerRow = [&](int y, int row) {
        const double fromCentre = r - (row + 0.5);
        const double reach = std::sqrt(std::max(0.0, r * r - fromCentre * fromCentre));
        const int inset = static_cast<int>(std::ceil(r - reach - 0.5));
        const QRect line(rect.x() + inset, y, rect.width() - 2 * inset, 1);
        if (!line.isEmpty()) {
            rows.push_back(line);
        }
    };
    for (int row = 0; row < cornerRows; ++row) {
        addCornerRow(rect.top() + row, row);
    }
    if (const int middle = rect.height() - 2 * cornerRows; middle > 0) {
        rows.emplace_back(rect.x(), rect.top() + cornerRows, rect.width(), middle);
    }
    for (int row = cornerRows - 1; row >= 0; --row) {
        addCornerRow(rect.bottom() - row, row);
    }
    QRegion region;
    region.setRects(rows.data(), static_cast<int>(rows.size()));
    return region;
}

}  // namespace tessellon
