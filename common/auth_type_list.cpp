#include "common/auth_type_list.h"

namespace zorvanelink::components::utils {
namespace {

using common::SupportedAuthType;

constexpr int kFirst = 1;
constexpr int kLast = 6;

int bitOf(SupportedAuthType type) {
    auto const value = static_cast<int>(type);
    return common::IsListableAuthType(value) ? 1 << value : 0;
}

template <class Result, class Convert>
std::vector<Result> listOf(int bitmap, Convert convert) {
    std::vector<Result> list;
    for (int value = kFirst; value <= kLast; ++value) {
        if ((bitmap & 1 << value) != 0) {
            list.push_back(Result(convert(static_cast<SupportedAuthType>(value))));
        }
    }
    return list;
}

}  // namespace

std::vector<std::string> ConvertSupportedAuthTypeToStrList(
    std::vector<SupportedAuthType> const& types) {
    int bitmap = 0;
    for (SupportedAuthType const type : types) {
        bitmap |= bitOf(type);
    }
    return ConvertIntBitmapToSupportedAuthTypeStrList(bitmap);
}

std::vector<SupportedAuthType> ConvertStrListToSupportedAuthType(
    std::vector<std::string> const& texts) {
    return listOf<SupportedAuthType>(ConvertSupportedAuthTypeStrListToIntBitmap(texts),
                                     [](SupportedAuthType type) { return type; });
}

int ConvertSupportedAuthTypeStrListToIntBitmap(std::vector<std::string> const& texts) {
    int bitmap = 0;
    for (std::string const& text : texts) {
        bitmap |= bitOf(common::StringToAuthType(text));
    }
    return bitmap;
}

std::vector<std::string> ConvertIntBitmapToSupportedAuthTypeStrList(int bitmap) {
    return listOf<std::string>(bitmap, &common::AuthTypeToString);
}

}  // namespace zorvanelink::components::utils
