// The move-only object that every registration returns: dropping it undoes the registration, so a
// callback never outlives whoever asked for it.
#pragma once

#include <functional>
#include <utility>

namespace tessellon {

class [[nodiscard]] Token {
  public:
    Token() = default;
    explicit Token(std::function<void()> undo) : undo_(std::move(undo)) {}
    Token(Token&& other) noexcept : undo_(std::exchange(other.undo_, nullptr)) {}
    Token& operator=(Token&& other) noexcept {
        if (this != &other) {
            reset();
            undo_ = std::exchange(other.undo_, nullptr);
        }
        return *this;
    }
    Token(const Token&) = delete;
    Token& operator=(const Token&) = delete;
    ~Token() { reset(); }

    /// Undoes the registration now; harmless when it is undone already.
    void reset() {
        if (auto undo = std::exchange(undo_, nullptr)) {
            undo();
        }
    }

    /// True while there is something to undo.
    explicit operator bool() const { return static_cast<bool>(undo_); }

  private:
    std::function<void()> undo_;
};

}  // namespace tessellon
