// Lists of authentication types in their three forms: values, texts of the link, bitmap. Every
// result is in value order 1 to 6, each at most once; what is not in the table is left out.
#pragma once

#include <string>
#include <vector>

#include "common/auth_type.h"

namespace zorvanelink::components::utils {

std::vector<std::string> ConvertSupportedAuthTypeToStrList(
    std::vector<common::SupportedAuthType> const& types);
std::vector<common::SupportedAuthType> ConvertStrListToSupportedAuthType(
    std::vector<std::string> const& texts);

// Bit n stands for the type of value n; bit 0 is never set and not read.
int ConvertSupportedAuthTypeStrListToIntBitmap(std::vector<std::string> const& texts);
std::vector<std::string> ConvertIntBitmapToSupportedAuthTypeStrList(int bitmap);

}  // namespace zorvanelink::components::utils
