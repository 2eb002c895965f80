// The accessibility port on X11: windows and their attributes from the mirror, frames by way of the
// window manager.
#pragma once

#include "platform/accessibility.h"
#include "platform/x11/dragged_frame.h"
#include "platform/x11/dragged_size.h"
#include "platform/x11/frame_writer.h"
#include "platform/x11/frames_at_press.h"
#include "platform/x11/raw_input.h"
#include "platform/x11/window_mirror.h"

#include <cstdint>

namespace tessellon::x11 {

class X11Accessibility : public Accessibility {
  public:
    /// All of them must outlive this object.
    X11Accessibility(Connection& connection, WindowMirror& mirror, const RawInput& input);

    bool isTrusted() const override;
    std::optional<std::string> requestTrust() override;
    void setMessagingTimeout(Seconds timeout) override;
    Element applicationElement(Pid pid) const override;
    std::optional<Pid> pidOf(const Element& element) const override;
    std::optional<Element> elementAtPosition(Point point) const override;
    std::optional<AttributeValue> read(const Element& element, Attribute attribute) const override;
    bool write(const Element& element, Attribute attribute, const AttributeValue& value) override;
    void writeDraggedSize(const Element& window, Size size) override;
    Token holdDraggedSize(const Element& window) override;
    std::optional<Rect> frameAtPress(const Element& element) const override;
    Token beginReads() const override;

  private:
    void onPressed(std::uint32_t button);
    const ClientWindow* windowAt(Point point) const;
    const ClientWindow* clientAt(Point point, xcb_window_t topLevel) const;
    std::optional<AttributeValue> readApplication(Pid pid, Attribute attribute) const;
    std::optional<AttributeValue> readWindow(const ClientWindow& window, Attribute attribute) const;
    bool isInvisible(xcb_window_t window) const;
    void look() const;
    void endDrag();
    void followWindowManager();

    Connection& connection_;
    WindowMirror& mirror_;
    const RawInput& input_;
    DraggedSizes draggedSizes_;
    FramesAtPress framesAtPress_;
    mutable DraggedFrame draggedFrame_;
    mutable FrameWriter writer_;      // a read first brings about what was written
    std::optional<Element> pressed_;  // what the left button was pressed on last
    std::uint64_t toldWindowManager_ = 0;
    Token buttonPressed_;
    Token idle_;
};

}  // namespace tessellon::x11
