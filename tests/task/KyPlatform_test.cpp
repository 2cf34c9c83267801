#include "VexaBase/task/KyPlatform.h"

#include <gtest/gtest.h>

namespace {

TEST(KyPlatform, TheProcessIsNotA32BitOne) {
    EXPECT_FALSE(IsWow64());
    EXPECT_EQ(sizeof(void*), 8u);
}

TEST(KyPlatform, TheSystemIsA64BitOne) { EXPECT_TRUE(IsOS64()); }

}  // namespace
