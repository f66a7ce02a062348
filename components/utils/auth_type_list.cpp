#include "components/utils/auth_type_list.h"

#include <cstdint>

namespace zorvanelink::components::utils {
namespace {

using common::SupportedAuthType;

constexpr int kFirst = 1;
constexpr int kLast = 6;

int bitOf(SupportedAuthType type) {
    auto const value = static_cast<std::int32_t>(type);
    return common::IsListableAuthType(value) ? 1 << value : 0;
}

template <class Visit>
void forEachType(int bitmap, Visit visit) {
    for (int value = kFirst; value <= kLast; ++value) {
        if ((bitmap & (1 << value)) != 0) {
            visit(static_cast<SupportedAuthType>(value));
        }
    }
}

}  // namespace

std::vector<std::string> ConvertSupportedAuthTypeToStrList(
    std::vector<SupportedAuthType> const& list) {
    int bitmap = 0;
    for (SupportedAuthType const type : list) {
        bitmap |= bitOf(type);
    }
    return ConvertIntBitmapToSupportedAuthTypeStrList(bitmap);
}

std::vector<SupportedAuthType> ConvertStrListToSupportedAuthType(
    std::vector<std::string> const& list) {
    std::vector<SupportedAuthType> types;
    forEachType(ConvertSupportedAuthTypeStrListToIntBitmap(list),
                [&types](SupportedAuthType type) { types.push_back(type); });
    return types;
}

int ConvertSupportedAuthTypeStrListToIntBitmap(std::vector<std::string> const& list) {
    int bitmap = 0;
    for (std::string const& text : list) {
        bitmap |= bitOf(common::StringToAuthType(text));
    }
    return bitmap;
}

std::vector<std::string> ConvertIntBitmapToSupportedAuthTypeStrList(int bitmap) {
    std::vector<std::string> texts;
    forEachType(bitmap, [&texts](SupportedAuthType type) {
        texts.emplace_back(common::AuthTypeToString(type));
    });
    return texts;
}

}  // namespace zorvanelink::components::utils
