#include "ui/auth/change_pwd_flow.h"

#include <QApplication>

#include "components/logger/logger.h"
#include "core/clmsg_json.h"
#include "ui/session/session_pages.h"

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
    : DialogFlow(session), deadline_(session.clock), response_(session.clock) {
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

void ChangePWDFlow::HandleChangePWD(core::sslvpn::CLMsgCommonReplyData const& data) {
    session_.context.passwordPolicy = data;
    ChangePWD(data, static_cast<ChangePWdType>(data.changePWDType), true);
    Log().info("change pwd handle down ");
}

void ChangePWDFlow::onActionActiveChangePWDTriggered() {
    if (QApplication::activeModalWidget() != nullptr) {
        BringForward(session_.window);  // what stands open is answered first
    } else if (MayChangePassword(session_.state, session_.context)) {
        ChangePWD(session_.context.passwordPolicy, ChangePWdType::kUser, false);
    }
}

void ChangePWDFlow::ChangePWD(core::sslvpn::UserPasswordComplexity const& policy,
                              ChangePWdType type, bool demanded) {
    auto const profile = session_.RunningProfile();
    if (!profile) {
        Log().error("Can not get client");
        return;
    }
    if (isOpen() && demanded_ == demanded) {
        session_.Failures().ProcessErrorMsg(GetTrMsg(MsgCode::UI_ERROR_INTERNAL_ERROR));
        return;
    }
    if (isOpen()) {
        OnSuperseded();
    }
    begin();
    type_ = type;
    demanded_ = demanded;
    changed_ = late_ = false;
    auto* const dialog = new ChangePWDDialog(QString::fromStdString(profile->userName), policy,
                                             type, session_.window);
    run(*dialog);
    connect(dialog, &ChangePWDDialog::ChangePWDSignal, this, &ChangePWDFlow::onChangePWD);
    connect(dialog, &ChangePWDDialog::Refused, this,
            [this](BoxRequest const& request) { say(request); });
    connect(dialog, &ChangePWDDialog::GivenUp, this, &ChangePWDFlow::onGivenUp);
    session_.state.errorShown = false;  // an earlier text does not speak for the dialog's end
    deadline_.Start(kChangeTime);
    dialog->ShowTimeLeft(deadline_.TimeLeft());
    if (demanded) {
        session_.Demand(dialog->windowTitle());
    } else {
        BringForward(session_.window);
    }
    show();
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
    sent_ = Sent{profile, password, sent_.has_value()};
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
            onChangePWDRet(static_cast<int>(code));
            return late_;  // else told as any failure is
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
    if (!isOpen() || late_) {
        Log().debug("No dialog waits for status {}", code);
    } else if (code == static_cast<int>(MsgCode::DISALLOW_CHG_PASS_IN_ONLINE_STATE)) {
        dialog_->SetWaiting(false);  // its text is not the dialog's
    } else {
        dialog_->Refuse(refusalOf(code),
                        code == static_cast<int>(MsgCode::WRONG_USR_PWD_IN_CHANGE_PWD));
    }
}

// Kept at once: whatever comes behind the text, the old password is no longer good.
void ChangePWDFlow::onChanged() {
    if (!sent_) {
        Log().warning("A password was changed that nobody has asked for");
        return;
    }
    Sent const sent = *std::exchange(sent_, std::nullopt);
    // Which of two it was is not told: then the next login asks.
    sent.profile->password = sent.second ? std::string() : sent.password;
    if (sent.profile->rememberPassword) {
        session_.config.Save();
    } else {
        sent.profile->tempCredential = false;  // good for the next attempt
    }
    Log().debug("sus to change pwd: {}", sent.profile->name);
    Log().info("Change pwd ok");
    if (!isOpen()) {
        session_.Failures().Tell(
            OkBox(BoxKind::kInformation, GetTrMsg(MsgCode::UI_INFO_CHANGE_PWD_SUCCESS)));
        return;
    }
    deadline_.Stop();
    changed_ = true;
    endWith(BoxKind::kInformation, demanded_
                                       ? MsgCode::UI_INFO_CHANGE_PWD_SUCCESS_PLEASE_LOGIN_AGAIN
                                       : MsgCode::UI_INFO_CHANGE_PWD_SUCCESS);
}

// After a change that the gateway wanted, the user logs in again.
void ChangePWDFlow::endWith(BoxKind kind, MsgCode text) {
    if (demanded_) {
        session_.Failures().EndWith(kind, GetTrMsg(text));
    } else {
        session_.Failures().EndConversation(OkBox(kind, GetTrMsg(text)));
    }
}

void ChangePWDFlow::timeout() {
    if (isOpen()) {
        Log().info("change pwd dialog active widget ");
        endWith(BoxKind::kCritical, MsgCode::UI_INFO_CHANGE_PWD_TIMEOUT);
    }
}

// A yes may come while the text stands, or later: the way down comes behind it.
void ChangePWDFlow::ResponseTimeOut() {
    if (!isOpen()) {
        return;
    }
    late_ = true;
    say(dialog_->Complaint(GetTrMsg(MsgCode::UI_ERROR_NETWORK_ERROR)), [this](int) {
        onGivenUp();
        close();
    });
}

void ChangePWDFlow::onGivenUp() {
    if (!isOpen()) {
        return;
    }
    session_.conversation.Close(*this);
    if (demanded_) {
        session_.state.errorShown = true;
        session_.Flow().StopConnect();
    }
}

// Queued: what supersedes it comes first, and under the text.
void ChangePWDFlow::OnSuperseded() {
    bool const wanted = dialog_ && !demanded_;
    close();
    if (!wanted) {
        return;
    }
    auto const tell = [this, here = session_.Now()] {
        BoxRequest box = OkBox(
            BoxKind::kInformation,
            Translate(QT_TRANSLATE_NOOP("ui",
                                        "The connection needs your attention first. Change the "
                                        "password afterwards.")));
        box.title = GetTrMsg(MsgCode::UI_INFO_CHANGE_PWD);
        if (here.NotBegunAnew()) {
            session_.Boxes().SayWhile([here] { return here.NotBegunAnew(); }, std::move(box));
        }
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

void ChangePWDFlow::onFinished(int /*result*/, bool /*itself*/) {
    deadline_.Stop();
    response_.Stop();
    if (!changed_) {
        Log().debug("Failed to change pwd");
        Log().info("Change pwd not ok with type {}", static_cast<int>(type_));
    }
    Log().info("Change pwd process done");
    bringWindowForward();
}

}  // namespace zorvanelink::ui
