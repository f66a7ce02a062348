#include <gtest/gtest.h>

#include "common/auth_type_list.h"

namespace zorvanelink::common {
namespace {

using components::utils::ConvertIntBitmapToSupportedAuthTypeStrList;
using components::utils::ConvertStrListToSupportedAuthType;
using components::utils::ConvertSupportedAuthTypeStrListToIntBitmap;
using components::utils::ConvertSupportedAuthTypeToStrList;
using Texts = std::vector<std::string>;

TEST(AuthType, NumbersTextsAndNeedsAgree) {
    struct {
        std::int32_t number;
        char const* text;
        char const* marks;  // listable, needs a password, needs a certificate
    } const table[]{
        {0, "none", "---"},     {1, "pwd", "lp-"},        {2, "cookie", "l--"},
        {3, "onlyUkey", "l-c"}, {4, "piccQrcode", "l--"}, {5, "pwdWithCert", "lpc"},
        {6, "oauth", "l--"},    {-1, "none", "---"},      {7, "none", "---"},
        {4097, "none", "---"},
    };
    for (auto const& [number, text, marks] : table) {
        auto const type = static_cast<SupportedAuthType>(number);
        EXPECT_EQ(AuthTypeToString(type), text) << number;
        EXPECT_EQ(std::string() + (IsListableAuthType(number) ? 'l' : '-') +
                      (NeedsPassword(type) ? 'p' : '-') + (NeedsCertificate(type) ? 'c' : '-'),
                  marks)
            << number;
        bool const known = number >= 0 && number <= 6;
        EXPECT_EQ(StringToAuthType(known ? text : "unknown"),
                  known ? type : SupportedAuthType::kUnknown);
    }
}

TEST(AuthTypeList, EveryFormIsInValueOrderWithoutStrangers) {
    using enum SupportedAuthType;
    EXPECT_EQ(ConvertSupportedAuthTypeToStrList(
                  {kOauth, kPwd, kUnknown, kNone, kOauth, static_cast<SupportedAuthType>(-1)}),
              (Texts{"pwd", "oauth"}));
    EXPECT_EQ(ConvertStrListToSupportedAuthType({"pwdWithCert", "face", "none", "pwd", "Pwd"}),
              (std::vector{kPwd, kPwdWithCert}));
    EXPECT_EQ(ConvertSupportedAuthTypeStrListToIntBitmap({"none", "cookie", "oauth", "x"}), 0x44);
    EXPECT_EQ(ConvertIntBitmapToSupportedAuthTypeStrList(1), Texts{});
    EXPECT_EQ(ConvertIntBitmapToSupportedAuthTypeStrList(-1),
              (Texts{"pwd", "cookie", "onlyUkey", "piccQrcode", "pwdWithCert", "oauth"}));
}

}  // namespace
}  // namespace zorvanelink::common
