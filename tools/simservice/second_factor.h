// The code that a login wants besides the password. Counts what the client tries; knows no clock of
// its own. One thread.
#pragma once

#include <string>

#include "core/request_records.h"
#include "tools/simservice/scenario.h"

namespace zorvanelink::simservice {

class SecondFactor {
  public:
    // It must outlive this.
    explicit SecondFactor(SecondFactorRules const& rules) : rules_(rules) {}

    // The demand, and the verdict on a code that came `age_ms` after the last one was sent out.
    core::sslvpn::CLMsgCommonReplyData Demand() const;
    common::MsgCode Check(std::string const& code, long long age_ms);
    // Whether a message of the client belongs to a code of this kind.
    bool Concerns(core::sslvpn::SetType message) const;
    // Whether there is another code.
    bool Resend();

    // Whether the verdict ends the login.
    static bool Ends(common::MsgCode verdict);
    static bool Accepts(common::MsgCode verdict);

  private:
    SecondFactorRules const& rules_;
    std::size_t resent_ = 0;
    int wrong_ = 0;
};

}  // namespace zorvanelink::simservice
