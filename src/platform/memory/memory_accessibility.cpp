#include "platform/memory/memory_accessibility.h"

#include "platform/memory/memory_desktop.h"

#include <algorithm>
#include <cmath>
#include <variant>

namespace tessellon {
namespace {

double roundedDown(double value, double increment) {
    return increment > 0 ? std::floor(value / increment) * increment : value;
}

Size acceptedSize(const MemoryWindow& window, Size wanted) {
    return {
        std::max(roundedDown(wanted.width, window.sizeIncrement.width), window.minimumSize.width),
        std::max(roundedDown(wanted.height, window.sizeIncrement.height),
                 window.minimumSize.height)};
}

template <typename T>
std::optional<AttributeValue> wrapped(const std::optional<T>& value) {
    return value ? std::optional<AttributeValue>(*value) : std::nullopt;
}

Pid pidOfApplicationElement(const Element& element) {
    return static_cast<Pid>(static_cast<std::uint32_t>(element.id));
}

}  // namespace

bool MemoryAccessibility::isTrusted() const {
    return desktop_.isTrusted();
}

std::optional<std::string> MemoryAccessibility::requestTrust() {
    desktop_.countTrustRequest();
    return desktop_.isTrusted() ? std::nullopt
                                : std::optional<std::string>("Start a window manager.");
}

Element MemoryAccessibility::applicationElement(Pid pid) const {
    return {ElementKind::application, static_cast<std::uint32_t>(pid), 0};
}

std::optional<Pid> MemoryAccessibility::pidOf(const Element& element) const {
    if (element.kind == ElementKind::application) {
        const Pid pid = pidOfApplicationElement(element);
        return desktop_.application(pid) != nullptr ? std::optional(pid) : std::nullopt;
    }
    if (element.kind == ElementKind::control) {
        const auto window = desktop_.windowAround(element);
        return window ? pidOf(*window) : std::nullopt;
    }
    const auto* window = desktop_.window(element);
    return window != nullptr ? std::optional(window->pid) : std::nullopt;
}

std::optional<Element> MemoryAccessibility::elementAtPosition(Point point) const {
    settle();
    return desktop_.elementAt(point);
}

std::optional<AttributeValue> MemoryAccessibility::read(const Element& element,
                                                        Attribute attribute) const {
    ++reads_;
    readsOutsideOperations_ += operations_ == 0 ? 1 : 0;
    settle();
    switch (element.kind) {
        case ElementKind::application:
            return readApplication(pidOfApplicationElement(element), attribute);
        case ElementKind::window:
            return readWindow(element, attribute);
        case ElementKind::control:
            return readControl(element, attribute);
    }
    return std::nullopt;
}

std::optional<AttributeValue> MemoryAccessibility::readApplication(Pid pid,
                                                                   Attribute attribute) const {
    const auto* application = desktop_.application(pid);
    if (application == nullptr) {
        return std::nullopt;
    }
    if (!application->answers) {
        waited_ += timeout_;
        return std::nullopt;
    }
    switch (attribute) {
        case Attribute::focusedWindow:
            return wrapped(application->focusedWindow);
        case Attribute::windows:
            return application->windows;
        case Attribute::enhancedUserInterface:
            return application->enhancedUserInterface;
        default:
            return std::nullopt;
    }
}

std::optional<AttributeValue> MemoryAccessibility::readWindow(const Element& element,
                                                              Attribute attribute) const {
    auto* window = desktop_.window(element);
    if (window == nullptr) {
        return std::nullopt;
    }
    if (window->readsBeforeItDies && (*window->readsBeforeItDies)-- <= 0) {
        desktop_.close(element);
        return std::nullopt;
    }
    if (!window->answers) {
        waited_ += timeout_;
        return std::nullopt;
    }
    if (!waitFor(window->answerDelay)) {
        return std::nullopt;
    }
    if (const auto instead = window->answersInstead.find(attribute);
        instead != window->answersInstead.end()) {
        return instead->second;
    }
    switch (attribute) {
        case Attribute::position:
            return window->frame.origin();
        case Attribute::size:
            return window->frame.size();
        case Attribute::title:
            return wrapped(window->title);
        case Attribute::role:
            return wrapped(window->role);
        case Attribute::subrole:
            return wrapped(window->subrole);
        case Attribute::fullScreen:
            return window->fullScreen;
        case Attribute::minimized:
            return window->minimized;
        case Attribute::maximized:
            return window->maximized;
        case Attribute::parent:
            return applicationElement(window->pid);
        default:
            return std::nullopt;
    }
}

std::optional<AttributeValue> MemoryAccessibility::readControl(const Element& element,
                                                               Attribute attribute) const {
    const auto* control = desktop_.control(element);
    if (control == nullptr) {
        return std::nullopt;
    }
    switch (attribute) {
        case Attribute::position:
            return control->frame.origin();
        case Attribute::size:
            return control->frame.size();
        case Attribute::role:
            return control->role;
        case Attribute::parent:
            return control->parent;
        case Attribute::window:
            return control->knowsItsWindow ? wrapped(desktop_.windowAround(element)) : std::nullopt;
        default:
            return std::nullopt;
    }
}

bool MemoryAccessibility::write(const Element& element, Attribute attribute,
                                const AttributeValue& value) {
    writes_.push_back({element, attribute, value});
    if (element.kind == ElementKind::application) {
        auto* application = desktop_.application(pidOfApplicationElement(element));
        const auto* flag = std::get_if<bool>(&value);
        if (application == nullptr || flag == nullptr ||
            attribute != Attribute::enhancedUserInterface) {
            return false;
        }
        if (application->answers) {
            application->enhancedUserInterface = *flag;
        }
        return true;
    }
    auto* window = desktop_.window(element);
    if (window == nullptr) {
        return false;
    }
    const auto* point = std::get_if<Point>(&value);
    const auto* size = std::get_if<Size>(&value);
    if (!(attribute == Attribute::position && point != nullptr) &&
        !(attribute == Attribute::size && size != nullptr)) {
        return false;
    }
    unsettled_ =
        std::max(unsettled_.value_or(Seconds{0}), window->answers ? window->answerDelay : timeout_);
    if (!window->answers || window->answerDelay > timeout_) {
        return true;
    }
    if (point != nullptr && !window->refusesToMove) {
        window->frame.x = point->x;
        window->frame.y = point->y;
    }
    if (size != nullptr && !window->refusesToResize) {
        const Size accepted = acceptedSize(*window, *size);
        window->frame.width = accepted.width;
        window->frame.height = accepted.height;
    }
    return true;
}

// Here a window can always be changed, so the size comes about at once.
void MemoryAccessibility::writeDraggedSize(const Element& window, Size size) {
    draggedSizes_.push_back({window, size});
    write(window, Attribute::size, size);
}

Token MemoryAccessibility::holdDraggedSize(const Element& /*window*/) {
    ++*holds_;
    return Token([holds = holds_] { --*holds; });
}

std::optional<Rect> MemoryAccessibility::frameAtPress(const Element& window) const {
    const auto* pressed = desktop_.window(window);
    return pressed != nullptr ? pressed->frameAtPress : std::nullopt;
}

Token MemoryAccessibility::beginReads() const {
    ++operations_;
    return Token([this] { --operations_; });
}

/// Lets the time of one answer pass; false when it would be longer than the timeout.
bool MemoryAccessibility::waitFor(Seconds delay) const {
    waited_ += std::min(delay, timeout_);
    return delay <= timeout_;
}

void MemoryAccessibility::settle() const {
    if (unsettled_) {
        waitFor(*unsettled_);
        unsettled_.reset();
        ++waitsForWrites_;
    }
}

}  // namespace tessellon
