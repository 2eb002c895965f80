// The motion of a damped spring, in closed form: what animations that follow the hand are made of.
#pragma once

namespace tessellon {

class Spring {
  public:
    /// `response` is the period without damping, in seconds; a `dampingFraction` (0…1, both
    /// excluded) near 1 hardly overshoots. It rests at 0.
    Spring(double response, double dampingFraction);

    /// Has it head for `target` from where it is `elapsed` seconds after the last call, and as fast
    /// as it is then.
    void aim(double target, double elapsed);

    /// Where it is that many seconds after the last aim().
    double valueAt(double elapsed) const;
    double target() const { return target_; }

    /// The seconds after aim() from which on it is no farther from its target than a thousandth.
    double settlingTime() const;

  private:
    double velocityAt(double elapsed) const;
    /// The part of the motion that begins at rest, and its sibling a quarter of a period later.
    double cosinePart() const { return start_ - target_; }
    double sinePart() const;

    double frequency_;
    double decay_;
    double dampedFrequency_;
    double start_ = 0;
    double startVelocity_ = 0;
    double target_ = 0;
};

}  // namespace tessellon
