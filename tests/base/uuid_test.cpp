// Identifiers in text form.
#include "base/uuid.h"

#include <gtest/gtest.h>

namespace tessellon {
namespace {

TEST(Uuid, ReadsEitherCaseAndWritesUpperCase) {
    const auto id = Uuid::parse("3f2b8c1e-7D4A-4e6b-9a0c-5d1e2f3a4b5c");
    ASSERT_TRUE(id);
    EXPECT_EQ(id->toString(), "3F2B8C1E-7D4A-4E6B-9A0C-5D1E2F3A4B5C");
}

TEST(Uuid, RefusesAnyOtherText) {
    for (const auto* text :
         {"", "not-a-uuid", "3F2B8C1E7D4A4E6B9A0C5D1E2F3A4B5C",
          "3F2B8C1E-7D4A-4E6B-9A0C-5D1E2F3A4B5", "3F2B8C1E-7D4A-4E6B-9A0C-5D1E2F3A4B5CA",
          "3F2B8C1E-7D4A-4E6B-9A0C-5D1E2F3A4B5G", "{F2B8C1E-7D4A-4E6B-9A0C-5D1E2F3A4B5}",
          " 3F2B8C1E-7D4A-4E6B-9A0C-5D1E2F3A4B5", "3F2B8C1-E7D4A-4E6B-9A0C-5D1E2F3A4B5C"}) {
        EXPECT_FALSE(Uuid::parse(text)) << text;
    }
}

TEST(Uuid, RandomOnesDifferAndNamedOnesStay) {
    EXPECT_NE(Uuid::random(), Uuid::random());
    EXPECT_EQ(Uuid::random().toString()[14], '4');
    EXPECT_EQ(Uuid::fromName("monitor"), Uuid::fromName("monitor"));
    EXPECT_NE(Uuid::fromName("monitor"), Uuid::fromName("monitor 2"));
    EXPECT_EQ(Uuid::fromName("monitor").toString()[14], '5');
}

}  // namespace
}  // namespace tessellon
