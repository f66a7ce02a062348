#include "ui/shell/state_texts.h"

#include "ui/text/texts.h"
#include "ui/tunnel/format.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

QString clock(QDateTime const& time) {
    return time.toString(QStringLiteral("HH:mm:ss"));
}

}  // namespace

QString NamedText(QString const& name, QString const& text) {
    return name.isEmpty() ? text : Translate(QT_TRANSLATE_NOOP("ui", "%1: %2")).arg(name, text);
}

QString InBrackets(QString const& text, QString const& name) {
    return name.isEmpty() ? text : Translate(QT_TRANSLATE_NOOP("ui", "%1 (%2)")).arg(text, name);
}

// A silence says more than an interruption, and that more than a warning of the login.
QString StripText(ViewState const& view, ConnectionState const& state) {
    if (view.silent) {
        return Translate(QT_TRANSLATE_NOOP(
                             "ui",
                             "No word from the service since %1. What you see may be out of "
                             "date."))
            .arg(clock(*state.silentSince));
    }
    if (view.look == Look::kReconnecting) {
        return Translate(QT_TRANSLATE_NOOP(
                             "ui", "Interrupted since %1. The connection is being made again."))
            .arg(clock(state.since));
    }
    return view.hasWarning ? GetTrMsg(view.warning) : QString();
}

QString EndText(SessionEnd const& end, QString const& name) {
    QString const at = end.at.toString(QStringLiteral("HH:mm"));
    QString const text =
        end.since.isValid()
            ? Translate(QT_TRANSLATE_NOOP("ui", "%1 ended at %2 after %3"))
                  .arg(name, at, GetDateTimeString(end.since, end.at))
            : Translate(QT_TRANSLATE_NOOP("ui", "%1 could not be connected at %2")).arg(name, at);
    QString const why = QString::fromStdString(end.why);
    return why.isEmpty() ? text : NamedText(text, why);
}

QString ServiceGoneHint() {
    return Translate(QT_TRANSLATE_NOOP(
        "ui",
        "The service on this computer does not answer. Trying again … If this lasts, restart the "
        "computer or ask your administrator."));
}

QString SilentText() {
    return Translate(QT_TRANSLATE_NOOP("ui", "The service does not answer"));
}

QString ProgressText(ConnectionState const& state, bool answering) {
    QString step = Translate(QT_TRANSLATE_NOOP("ui", "Logging in"));
    if (state.secondFactor) {
        step = GetTrMsg(MsgCode::UI_TR_SECOND_AUTH);
    } else if (answering) {
        step = Translate(QT_TRANSLATE_NOOP("ui", "Waiting for your answer"));
    } else if (state.queryingAuthType) {
        step = GetTrMsg(MsgCode::UI_TR_CHECK_AUTH_TYPE);
    }
    qint64 const seconds = state.since.secsTo(QDateTime::currentDateTime());
    return seconds < 1
               ? step
               : Translate(QT_TRANSLATE_NOOP("ui", "%1, %2 s")).arg(step, QString::number(seconds));
}

}  // namespace zorvanelink::ui
