#include "common/auth_type_list.h"

#include <gtest/gtest.h>

namespace zorvanelink::components::utils {
namespace {

using common::SupportedAuthType;
using Texts = std::vector<std::string>;
using Types = std::vector<SupportedAuthType>;

TEST(AuthTypeList, EveryFormIsInValueOrderWithoutStrangers) {
    using enum SupportedAuthType;
    EXPECT_EQ(ConvertSupportedAuthTypeToStrList(
                  {kOauth, kPwd, kUnknown, kNone, kOauth, static_cast<SupportedAuthType>(-1)}),
              (Texts{"pwd", "oauth"}));
    EXPECT_EQ(ConvertStrListToSupportedAuthType({"pwdWithCert", "face", "none", "pwd", "Pwd"}),
              (Types{kPwd, kPwdWithCert}));
    EXPECT_EQ(ConvertSupportedAuthTypeStrListToIntBitmap({"none", "cookie", "oauth", "x"}), 0x44);
    EXPECT_EQ(ConvertIntBitmapToSupportedAuthTypeStrList(1), Texts{});
    EXPECT_EQ(ConvertIntBitmapToSupportedAuthTypeStrList(-1),
              (Texts{"pwd", "cookie", "onlyUkey", "piccQrcode", "pwdWithCert", "oauth"}));
}

}  // namespace
}  // namespace zorvanelink::components::utils
