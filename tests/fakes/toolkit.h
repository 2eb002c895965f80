// Qt without a display, with the one screen that the desktop in memory has.
#pragma once

#include <QApplication>
#include <QTemporaryFile>
#include <memory>
#include <stdexcept>

#include <gtest/gtest.h>

namespace tessellon {

/// One application for all tests of a program.
class Toolkit : public testing::Environment {
  public:
    void SetUp() override {
        // The screen that the desktop in memory has.
        if (!screens_.open()) {
            throw std::runtime_error("no temporary file");
        }
        screens_.write(R"({"synchronousWindowSystemEvents": true, "windowFrameMargins": false,
            "screens": [{"name": "One", "x": 0, "y": 0, "width": 1920, "height": 1080,
                         "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
        screens_.close();
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens_.fileName().toUtf8());
        static int count = 1;
        static char name[] = "view_test";
        static char* arguments[] = {name, nullptr};
        application_ = std::make_unique<QApplication>(count, arguments);
    }
    void TearDown() override { application_.reset(); }

  private:
    QTemporaryFile screens_;
    std::unique_ptr<QApplication> application_;
};
inline const auto* const toolkit = testing::AddGlobalTestEnvironment(new Toolkit);

}  // namespace tessellon
