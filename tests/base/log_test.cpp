// What reaches the reader of the standard error.
#include "base/log.h"

#include <cstdlib>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

TEST(Log, AMessageIsOneLineWithoutControlCharacters) {
    unsetenv("JOURNAL_STREAM");
    unsetenv("TESSELLON_DEBUG");
    testing::internal::CaptureStderr();
    logError("the file “a\x1B[2J\r\nb\x7F” is odd");
    logDebug("not wanted");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "tessellon: the file “a [2J  b ” is odd\n");
}

}  // namespace
}  // namespace tessellon
