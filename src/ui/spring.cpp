#include "ui/spring.h"

#include <cmath>
#include <numbers>

namespace tessellon {
namespace {

constexpr double tolerance = 0.001;

}  // namespace

Spring::Spring(double response, double dampingFraction)
    : frequency_(2 * std::numbers::pi / response),
      decay_(dampingFraction * frequency_),
      dampedFrequency_(frequency_ * std::sqrt(1 - dampingFraction * dampingFraction)) {}

double Spring::sinePart() const {
    return (startVelocity_ + decay_ * cosinePart()) / dampedFrequency_;
}

double Spring::valueAt(double elapsed) const {
    const double angle = dampedFrequency_ * elapsed;
    return target_ + std::exp(-decay_ * elapsed) *
                         (cosinePart() * std::cos(angle) + sinePart() * std::sin(angle));
}

double Spring::velocityAt(double elapsed) const {
    const double angle = dampedFrequency_ * elapsed;
    const double pull =
        (frequency_ * frequency_ * cosinePart() + decay_ * startVelocity_) / dampedFrequency_;
    return std::exp(-decay_ * elapsed) *
           (startVelocity_ * std::cos(angle) - pull * std::sin(angle));
}

void Spring::aim(double target, double elapsed) {
    const double value = valueAt(elapsed);
    startVelocity_ = velocityAt(elapsed);
    start_ = value;
    target_ = target;
}

double Spring::settlingTime() const {
    const double amplitude = std::hypot(cosinePart(), sinePart());
    return amplitude > tolerance ? std::log(amplitude / tolerance) / decay_ : 0;
}

}  // namespace tessellon
