// Who may in: looks at the credentials of a login, and counts the wrong ones. One thread.
#pragma once

#include <map>
#include <string>

#include "core/request_records.h"
#include "tools/simservice/scenario.h"
#include "tools/simservice/scheduler.h"

namespace zorvanelink::simservice {

// Of a login: the user who may in, or the code that refuses it.
struct Judgement {
    User const* user = nullptr;
    common::MsgCode refusal{};
    int lock_seconds = 0;  // how long the account stays locked, when that is the refusal
};

class Gatekeeper {
  public:
    // Both must outlive it.
    Gatekeeper(Scenario const& scenario, Scheduler const& scheduler);

    // Of a login whose type is on offer. Opens the certificate's file with its PIN.
    Judgement Judge(core::sslvpn::CLMsgStartData const& start);
    // Of a new password, both as sensitive values; CHANGE_PWD_SUCCESS when it holds from here on.
    common::MsgCode ChangePassword(User const& user, std::string const& current,
                                   std::string const& password);
    // Whether the user has to change the password before anything else.
    bool MustChange(User const& user) const;

  private:
    struct Account {
        std::string password;  // when it is no longer the scenario's
        std::vector<std::string> old_ones;
        int wrong_tries = 0;
        Scheduler::Clock::time_point locked_until{};
    };

    // The user whose credentials these are; null with the refusal.
    User const* recognise(core::sslvpn::CLMsgStartData const& start,
                          common::MsgCode& refusal) const;
    std::string const& passwordOf(User const& user) const;
    int lockedSeconds(std::string const& name) const;
    void countWrongTry(std::string const& name);

    Scenario const& scenario_;
    Scheduler const& scheduler_;
    std::map<std::string, Account> accounts_;  // by the user's name
};

}  // namespace zorvanelink::simservice
