#include "ui/auth/password_rules.h"

#include <algorithm>

#include "ui/text/texts.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using Policy = core::sslvpn::UserPasswordComplexity;

struct Row {
    std::int32_t Policy::*least;
    MsgCode text;
    bool (*count)(QChar sign);
};

constexpr Row kRows[] = {
    {&Policy::minLength, MsgCode::UI_INFO_MINIMAL_PWD_LENGTH, [](QChar) { return true; }},
    {&Policy::capitalLetters, MsgCode::UI_INFO_CAPITAL_LENGTH,
     [](QChar sign) { return sign.isUpper(); }},
    {&Policy::smallLetters, MsgCode::UI_INFO_SMALL_LENGTH,
     [](QChar sign) { return sign.isLower(); }},
    {&Policy::numericCharacters, MsgCode::UI_INFO_NUMERIC_LENGTH,
     [](QChar sign) { return sign.isDigit(); }},
    {&Policy::nonAlphanumericLetters, MsgCode::UI_INFO_NON_ALPHANUMERIC_LETTER_LENGTH,
     [](QChar sign) { return !sign.isLetterOrNumber(); }},
};

}  // namespace

bool PasswordRule::MetBy(QString const& password, QString const& userName) const {
    if (count == nullptr) {
        return !password.isEmpty() &&
               (userName.isEmpty() || !password.contains(userName, Qt::CaseInsensitive));
    }
    return std::count_if(password.begin(), password.end(), count) >= least;
}

std::vector<PasswordRule> PasswordRulesOf(Policy const& policy) {
    std::vector<PasswordRule> rules;
    if (!policy.enableComplexity) {
        return rules;
    }
    for (Row const& row : kRows) {
        if (int const least = policy.*row.least; least > 0) {
            rules.push_back(
                {QStringLiteral("%1 %2").arg(GetTrMsg(row.text)).arg(least), row.count, least});
        }
    }
    if (policy.noIncludeUserName) {
        rules.push_back({GetTrMsg(MsgCode::UI_INFO_NO_USER_NAME), nullptr});
    }
    return rules;
}

QString ConvertPWDComplexityToString(Policy const& policy) {
    QString lines;
    for (PasswordRule const& rule : PasswordRulesOf(policy)) {
        lines += QLatin1Char('\n') + rule.text;
    }
    return lines;
}

}  // namespace zorvanelink::ui
