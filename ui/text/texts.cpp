#include "ui/text/texts.h"

#include <QCoreApplication>

#include "app/environment/app_ctrl.h"

namespace zorvanelink::ui {

QString GetTrMsg(common::MsgCode code) {
    common::IPCMessage const row = common::g_IPCMessageMap.Get(code);
    std::string_view const text = IsChineseDisplayLangguage() ? row.chinese : row.english;
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

QString GetErrMsg(common::MsgCode code) {
    return GetTrMsg(code);
}

QString GetCaption(common::MsgCode code) {
    QString text = GetTrMsg(code).trimmed();
    if (text.endsWith(QLatin1Char(':')) || text.endsWith(QChar(u'：'))) {
        text.chop(1);
    }
    return text;
}

QString Translate(char const* english) {
    return QCoreApplication::translate("ui", english);
}

}  // namespace zorvanelink::ui
