// What the checked build stops on.

#include <gmock/gmock.h>

#include "VexaBase/rx/KyRxClass.h"

namespace {

TEST(KyRxChecksDeathTest, KinshipToANullNameIsStopped) {
    EXPECT_DEATH(
        KyRxRunTimeClass::s_classInfo.IsClassOf(static_cast<const char*>(nullptr)),
        "VexaBase/rx/KyRxClass.cpp:[0-9]+: KyRxClassInfo::IsClassOf: null name \\(class KyRxRunTimeClass\\)");
}

TEST(KyRxChecks, WhatIsDefinedIsNotStopped) {
    const KyRxClassInfo& info = KyRxRunTimeClass::s_classInfo;

    EXPECT_FALSE(info.IsClassOf(static_cast<const KyRxClassInfo*>(nullptr)));
    EXPECT_FALSE(info.IsClassOf(""));
    EXPECT_EQ(info.NewObject(), nullptr);
}

}  // namespace
