#include "ui/auth/change_pwd_flow.h"

#include <QApplication>

#include "components/logger/logger.h"
#include "core/clmsg_json.h"
#include "ui/text/texts.h"
#include "ui/widgets/bring_into_view.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;

// What the gateway's no says; others are told by their number.
struct Refusal {
    MsgCode code;
    MsgCode text;
};
constexpr Refusal kRefusals[] = {
    {MsgCode::ERR_PASSWORD_COMPLEXITY, MsgCode::UI_INFO_OBEY_PWD_RULE},
    {MsgCode::ERR_HISTORY_PASSWORD, MsgCode::UI_INFO_NO_HISTORY_PWD},
    {MsgCode::WRONG_USR_PWD_IN_CHANGE_PWD, MsgCode::UI_INFO_WRONG_USER_OR_PWD},
};

QString refusalOf(int code) {
    for (Refusal const& row : kRefusals) {
        if (static_cast<int>(row.code) == code) {
            return GetTrMsg(row.text);
        }
    }
    return GetTrMsg(MsgCode::UI_ERROR_UNKNOWN).arg(code);
}

}  // namespace

ChangePWDFlow::ChangePWDFlow(Session& session)
    : session_(session), deadline_(session.clock), response_(session.clock) {
    connect(&session_, &Session::NeedChangePwd, this, &ChangePWDFlow::HandleChangePWD);
    connect(&session_, &Session::ChangePWDRetSignal, this, &ChangePWDFlow::onChangePWDRet);
    connect(&deadline_, &Deadline::Passed, this, &ChangePWDFlow::timeout);
    connect(&deadline_, &Deadline::Ticked, this, [this] {
        if (dialog_) {
            dialog_->ShowTimeLeft(deadline_.TimeLeft());
        }
    });
    connect(&session_, &Session::Changed, this, [this] {
        if (session_.state.Idle()) {
            sent_.reset();  // nobody answers any more
        }
    });
    connect(&response_, &Deadline::Passed, this, &ChangePWDFlow::ResponseTimeOut);
}

ChangePWDFlow::~ChangePWDFlow() {
    session_.conversation.Close(*this);
}

void ChangePWDFlow::HandleChangePWD(core::sslvpn::CLMsgCommonReplyData const& data) {
    session_.context.passwordPolicy = data;
    ChangePWD(data, static_cast<ChangePWdType>(data.changePWDType));
    Log().info("change pwd handle down ");
}

void ChangePWDFlow::onActionActiveChangePWDTriggered() {
    if (QApplication::activeModalWidget() != nullptr) {
        BringForward(session_.window);  // what stands open is answered first
    } else if (session_.state.online && session_.context.allowLocalChangePassword) {
        ChangePWD(session_.context.passwordPolicy, ChangePWdType::kUser);
    }
}

void ChangePWDFlow::ChangePWD(core::sslvpn::UserPasswordComplexity const& policy,
                              ChangePWdType type) {
    auto const profile = session_.RunningProfile();
    if (!profile) {
        Log().error("Can not get client");
        return;
    }
    bool const demanded = type_ == ChangePWdType::kUser && type != ChangePWdType::kUser;
    if (dialog_ && session_.conversation.Is(*this) && !demanded) {
        session_.Failures().ProcessErrorMsg(GetTrMsg(MsgCode::UI_ERROR_INTERNAL_ERROR));
        return;
    }
    if (dialog_ && demanded) {
        Attempt const here = session_.Now();
        OnSuperseded();
        if (!here.Still() || !session_.state.SessionStands()) {
            return;
        }
    }
    close();  // one of an attempt before may stand behind its text
    session_.conversation.Open(*this);
    if (!session_.conversation.Is(*this)) {
        return;
    }
    type_ = type;
    changed_ = false;
    auto* const dialog = new ChangePWDDialog(QString::fromStdString(profile->userName), policy,
                                             type, session_.prompts, session_.window);
    dialog_ = dialog;
    connect(dialog, &ChangePWDDialog::ChangePWDSignal, this, &ChangePWDFlow::onChangePWD);
    connect(dialog, &ChangePWDDialog::GivenUp, this, &ChangePWDFlow::onGivenUp);
    connect(dialog, &QDialog::finished, this,
            [this, dialog](int result) { onFinished(*dialog, result); });
    deadline_.Start(kChangeTime);
    dialog->ShowTimeLeft(deadline_.TimeLeft());
    if (type == ChangePWdType::kUser) {
        BringForward(session_.window);
    } else {
        session_.Demand(dialog->windowTitle());
    }
    dialog->show();
}

void ChangePWDFlow::onChangePWD(std::string const& current, std::string const& password) {
    auto const profile = session_.RunningProfile();
    if (!profile) {
        Log().error("Can not get client");
        if (dialog_) {
            dialog_->SetWaiting(false);
        }
        return;
    }
    sent_ = Sent{profile, password};
    session_.Send(core::sslvpn::CLMsgJson::BuildNewPassword(profile->name, current, password));
    response_.Start(kResponseTime);
}

bool ChangePWDFlow::OnAnswer(MsgCode code) {
    switch (code) {
        case MsgCode::CHANGE_PWD_SUCCESS:
        case MsgCode::ERR_PASSWORD_COMPLEXITY:
        case MsgCode::ERR_HISTORY_PASSWORD:
        case MsgCode::ERR_CHANGE_PWD_WITH_CLIENT:
        case MsgCode::WRONG_USR_PWD_IN_CHANGE_PWD:
            onChangePWDRet(static_cast<int>(code));
            return true;
        case MsgCode::DISALLOW_CHG_PASS_IN_ONLINE_STATE:
            Log().debug("stop change pwd response timer");
            response_.Stop();
            if (dialog_) {
                dialog_->SetWaiting(false);
            }
            return false;  // told as any failure is
        default:
            return false;
    }
}

// The dialog may have gone; what the gateway has changed is changed.
void ChangePWDFlow::onChangePWDRet(int code) {
    response_.Stop();
    if (code == static_cast<int>(MsgCode::CHANGE_PWD_SUCCESS)) {
        onChanged();
        return;
    }
    sent_.reset();
    if (!session_.conversation.Is(*this)) {
        Log().debug("No dialog waits for status {}", code);
    } else if (dialog_) {
        dialog_->Refuse(refusalOf(code));
    }
}

// Kept at once: whatever comes behind the text, the old password is no longer good.
void ChangePWDFlow::onChanged() {
    if (!sent_) {
        Log().warning("A password was changed that nobody has asked for");
        return;
    }
    Sent const sent = *std::exchange(sent_, std::nullopt);
    sent.profile->password = sent.password;
    if (sent.profile->rememberPassword) {
        session_.config.Save();
    } else {
        sent.profile->tempCredential = false;  // good for the next attempt
    }
    Log().debug("sus to change pwd: {}", sent.profile->name);
    Log().info("Change pwd ok");
    if (!session_.conversation.Is(*this)) {
        session_.Failures().Tell(
            OkBox(BoxKind::kInformation, GetTrMsg(MsgCode::UI_INFO_CHANGE_PWD_SUCCESS)));
        return;
    }
    deadline_.Stop();
    changed_ = true;
    session_.prompts.CloseAll();  // what says that no answer came
    endWith(BoxKind::kInformation, type_ == ChangePWdType::kUser
                                       ? MsgCode::UI_INFO_CHANGE_PWD_SUCCESS
                                       : MsgCode::UI_INFO_CHANGE_PWD_SUCCESS_PLEASE_LOGIN_AGAIN);
}

// After a change that the gateway wanted, the user logs in again.
void ChangePWDFlow::endWith(BoxKind kind, MsgCode text) {
    if (type_ == ChangePWdType::kUser) {
        session_.Failures().EndConversation(OkBox(kind, GetTrMsg(text)));
    } else {
        session_.Failures().EndWith(kind, GetTrMsg(text));
    }
}

void ChangePWDFlow::timeout() {
    if (session_.conversation.Is(*this)) {
        Log().info("change pwd dialog active widget ");
        endWith(BoxKind::kCritical, MsgCode::UI_INFO_CHANGE_PWD_TIMEOUT);
    }
}

// A yes may come while the text stands, or later.
void ChangePWDFlow::ResponseTimeOut() {
    QPointer<ChangePWDDialog> const here = dialog_;
    session_.prompts.Critical(here, GetTrMsg(MsgCode::UI_ERROR),
                              GetTrMsg(MsgCode::UI_ERROR_NETWORK_ERROR),
                              GetTrMsg(MsgCode::UI_INFO_OK));
    if (!here || here != dialog_ || !session_.conversation.Is(*this)) {
        return;
    }
    here->done(QDialog::Rejected);
    if (type_ != ChangePWdType::kUser) {
        session_.conversation.Close(*this);
        session_.state.errorShown = true;
        session_.Flow().StopConnect();
    }
}

void ChangePWDFlow::onGivenUp() {
    if (!session_.conversation.Is(*this)) {
        return;
    }
    session_.conversation.Close(*this);
    if (type_ != ChangePWdType::kUser) {
        session_.state.errorShown = true;
        session_.Flow().StopConnect();
    }
}

void ChangePWDFlow::OnLost() {
    if (!dialog_ || std::exchange(session_.state.errorShown, true)) {
        close();
        return;
    }
    session_.Failures().EndConversation(
        OkBox(BoxKind::kCritical, GetTrMsg(MsgCode::UI_INFO_CONNECTION_TERMINATED)));
}

void ChangePWDFlow::OnSuperseded() {
    bool const wanted = dialog_ && type_ == ChangePWdType::kUser;
    close();
    if (wanted) {
        session_.prompts.Information(
            session_.window, GetTrMsg(MsgCode::UI_INFO_CHANGE_PWD),
            Translate(QT_TRANSLATE_NOOP("ui",
                                        "The connection needs your attention first. Change the "
                                        "password afterwards.")),
            GetTrMsg(MsgCode::UI_INFO_OK));
    }
}

void ChangePWDFlow::close() {
    session_.conversation.Close(*this);
    if (dialog_) {
        dialog_->done(changed_ ? QDialog::Accepted : QDialog::Rejected);
    }
}

void ChangePWDFlow::onFinished(ChangePWDDialog& dialog, int result) {
    dialog.DeleteBehindBoxes();
    if (dialog_ != &dialog) {
        return;
    }
    dialog_ = nullptr;
    deadline_.Stop();
    response_.Stop();
    if (result != QDialog::Accepted) {
        Log().debug("Failed to change pwd");
        Log().info("Change pwd not ok with type {}", static_cast<int>(type_));
    }
    Log().info("Change pwd process done");
    // Queued: whoever leaves the program is not shown its window once more.
    QMetaObject::invokeMethod(
        this, [this] { BringForward(session_.window); }, Qt::QueuedConnection);
}

}  // namespace zorvanelink::ui
