// Lists of authentication types in their three forms: numbers, the texts of the link, and bits.
// Answers stand in value order, each type once; "none" never appears.
#pragma once

#include <string>
#include <vector>

#include "common/auth_type.h"

namespace zorvanelink::components::utils {

std::vector<std::string> ConvertSupportedAuthTypeToStrList(
    std::vector<common::SupportedAuthType> const& list);
std::vector<common::SupportedAuthType> ConvertStrListToSupportedAuthType(
    std::vector<std::string> const& list);
// Bit n for the type n, 1 to 6.
int ConvertSupportedAuthTypeStrListToIntBitmap(std::vector<std::string> const& list);
std::vector<std::string> ConvertIntBitmapToSupportedAuthTypeStrList(int bitmap);

}  // namespace zorvanelink::components::utils
