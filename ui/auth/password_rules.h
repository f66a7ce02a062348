// The gateway's rules for a new password, for people. Whether one is good enough decides the
// gateway alone. GUI thread.
#pragma once

#include <QString>
#include <vector>

#include "core/reply_records.h"

namespace zorvanelink::ui {

struct PasswordRule {
    QString text;
    bool (*count)(QChar sign);  // what counts; null: the user name, which must not be part of it
    int least = 0;

    bool MetBy(QString const& password, QString const& userName) const;
};

// Empty without a policy.
std::vector<PasswordRule> PasswordRulesOf(core::sslvpn::UserPasswordComplexity const& policy);
// The same as lines, each behind a line break.
QString ConvertPWDComplexityToString(core::sslvpn::UserPasswordComplexity const& policy);

}  // namespace zorvanelink::ui
