// Reads and writes on the desktop in memory. Keeps count of what it was asked, so that tests can
// tell how an answer was come by: what was sent, in which order, and how often somebody waited.
#pragma once

#include "platform/accessibility.h"

#include <memory>
#include <optional>
#include <vector>

namespace tessellon {

class MemoryDesktop;

class MemoryAccessibility final : public Accessibility {
  public:
    struct Write {
        Element element;
        Attribute attribute;
        AttributeValue value;
        bool operator==(const Write&) const = default;
    };

    struct DraggedSize {
        Element window;
        Size size;
        bool operator==(const DraggedSize&) const = default;
    };

    explicit MemoryAccessibility(MemoryDesktop& desktop) : desktop_(desktop) {}

    bool isTrusted() const override;
    std::optional<std::string> requestTrust() override;
    void announceTrust() const { trustChanged_.emit(); }
    void setMessagingTimeout(Seconds timeout) override { timeout_ = timeout; }
    Element applicationElement(Pid pid) const override;
    std::optional<Pid> pidOf(const Element& element) const override;
    std::optional<Element> elementAtPosition(Point point) const override;
    std::optional<AttributeValue> read(const Element& element, Attribute attribute) const override;
    bool write(const Element& element, Attribute attribute, const AttributeValue& value) override;
    void writeDraggedSize(const Element& window, Size size) override;
    Token holdDraggedSize(const Element& window) override;
    std::optional<Rect> frameAtPress(const Element& window) const override;
    Token beginReads() const override;

    /// The sizes asked for with writeDraggedSize, which are in writes() as well.
    const std::vector<DraggedSize>& draggedSizes() const { return draggedSizes_; }
    /// How many tokens of holdDraggedSize are alive.
    int holdsOfDraggedSizes() const { return *holds_; }

    /// Every write since the last clear, also those that had no effect.
    const std::vector<Write>& writes() const { return writes_; }
    void clearWrites() { writes_.clear(); }

    Seconds messagingTimeout() const { return timeout_; }
    /// The time that all requests together have waited for answers.
    Seconds waited() const { return waited_; }
    int reads() const { return reads_; }
    /// Reads while no token of beginReads was alive.
    int readsOutsideOperations() const { return readsOutsideOperations_; }
    /// How often a read found writes before it that it had to wait for.
    int waitsForWrites() const { return waitsForWrites_; }

  private:
    bool waitFor(Seconds delay) const;
    void settle() const;
    std::optional<AttributeValue> readApplication(Pid pid, Attribute attribute) const;
    std::optional<AttributeValue> readWindow(const Element& element, Attribute attribute) const;
    std::optional<AttributeValue> readControl(const Element& element, Attribute attribute) const;

    MemoryDesktop& desktop_;
    Seconds timeout_{6};  // until somebody sets one
    std::vector<Write> writes_;
    std::vector<DraggedSize> draggedSizes_;
    std::shared_ptr<int> holds_ = std::make_shared<int>(0);  // tokens may outlive this object
    mutable std::optional<Seconds> unsettled_;
    mutable Seconds waited_{0};
    mutable int reads_ = 0;
    mutable int readsOutsideOperations_ = 0;
    mutable int waitsForWrites_ = 0;
    mutable int operations_ = 0;
};

}  // namespace tessellon
