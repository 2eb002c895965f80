// An updater that counts what it is asked for.
#pragma once

#include "platform/updater.h"

namespace tessellon {

class MemoryUpdater final : public Updater {
  public:
    void start() override { ++starts_; }
    void checkForUpdates() override { ++checks_; }
    bool automaticallyChecksForUpdates() const override { return automatic_; }
    void setAutomaticallyChecksForUpdates(bool checks) override {
        if (automatic_ != checks) {
            automatic_ = checks;
            changed_.emit();
        }
    }

    int starts() const { return starts_; }
    int checks() const { return checks_; }

  private:
    bool automatic_ = false;
    int starts_ = 0;
    int checks_ = 0;
};

}  // namespace tessellon
