// Sizes that were asked for while the user drags windows: remembers those that the window manager
// would not keep before the button goes up. For the accessibility port.
#pragma once

#include "base/geometry.h"
#include "base/token.h"
#include "platform/accessibility.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace tessellon::x11 {

class DraggedSizes {
  public:
    /// Remembers a size for a window, in place of an older one.
    void remember(const Element& window, Size size);

    /// The size of this window is no longer wanted: another frame was written.
    void forget(const Element& window);

    /// The size that the window will have, in points, while it is outstanding.
    std::optional<Size> outstanding(const Element& window) const;

    /// While the token lives, takeDue() leaves the size of this window out. May outlive this
    /// object.
    Token hold(const Element& window);

    /// Takes the sizes that have to come about now that nothing is dragged.
    std::vector<std::pair<Element, Size>> takeDue();

  private:
    struct Entry {
        Element window;
        Size size;
    };

    std::vector<Entry> entries_;
    // A window that is held twice is in it twice.
    std::shared_ptr<std::vector<Element>> held_ = std::make_shared<std::vector<Element>>();
};

}  // namespace tessellon::x11
