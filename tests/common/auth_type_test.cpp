#include "common/auth_type.h"

#include <gtest/gtest.h>

namespace zorvanelink::common {
namespace {

struct Row {
    std::int32_t number;
    char const* text;
    bool password;
    bool certificate;
    bool listable;
};

constexpr Row kRows[] = {
    {0, "none", false, false, false},      {1, "pwd", true, false, true},
    {2, "cookie", false, false, true},     {3, "onlyUkey", false, true, true},
    {4, "piccQrcode", false, false, true}, {5, "pwdWithCert", true, true, true},
    {6, "oauth", false, false, true},
};

TEST(AuthType, NumbersTextsAndNeedsAgree) {
    for (Row const& row : kRows) {
        SCOPED_TRACE(row.text);
        auto const type = static_cast<SupportedAuthType>(row.number);
        EXPECT_EQ(AuthTypeToString(type), row.text);
        EXPECT_EQ(StringToAuthType(row.text), type);
        EXPECT_EQ(NeedsPassword(type), row.password);
        EXPECT_EQ(NeedsCertificate(type), row.certificate);
        EXPECT_EQ(IsListableAuthType(row.number), row.listable);
    }
}

TEST(AuthType, WhatStandsOutsideTheTable) {
    for (char const* text : {"", "PWD", "pwd ", "pwdWithCertX", "unknown"}) {
        EXPECT_EQ(StringToAuthType(text), SupportedAuthType::kUnknown) << text;
    }
    for (std::int32_t number : {-1, 7, 8, 4096}) {
        auto const type = static_cast<SupportedAuthType>(number);
        EXPECT_EQ(AuthTypeToString(type), "none") << number;
        EXPECT_FALSE(NeedsPassword(type)) << number;
        EXPECT_FALSE(NeedsCertificate(type)) << number;
        EXPECT_FALSE(IsListableAuthType(number)) << number;
    }
}

}  // namespace
}  // namespace zorvanelink::common
