// From the code of a status to what the client does on it: one row a code. The handlers stand by
// subject in connection_statuses, login_statuses, page_statuses and signing_statuses. GUI thread.
#pragma once

#include <vector>

#include "ui/session/connection_statuses.h"
#include "ui/session/failure_presenter.h"
#include "ui/session/login_statuses.h"
#include "ui/session/page_statuses.h"
#include "ui/session/signing_statuses.h"

namespace zorvanelink::ui {

struct StatusHandlers {
    PageStatuses pages;
    ConnectionStatuses connection;
    LoginStatuses login;
    SigningStatuses signing;
};

void LogStatus(common::MsgCode code);

class StatusTable {
  public:
    using Data = core::sslvpn::CLMsgCommonReplyData;

    StatusTable(SessionCore& core, FailurePresenter& failures, StatusHandlers& handlers)
        : core_(core), failures_(failures), handlers_(handlers) {}

    // Nothing when the status does not concern the running profile, or its present attempt.
    void HandleCommonReplyData(Data const& data);

    // Every code with a row of its own, in the order of the table.
    static std::vector<common::MsgCode> Codes();

  private:
    SessionCore& core_;
    FailurePresenter& failures_;
    StatusHandlers& handlers_;
};

}  // namespace zorvanelink::ui
