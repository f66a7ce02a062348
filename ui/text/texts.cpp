#include "ui/text/texts.h"

#include "app/environment/app_ctrl.h"

namespace zorvanelink::ui {

QString GetTrMsg(common::MsgCode code) {
    common::IPCMessage const row = common::g_IPCMessageMap.Get(code);
    return QString::fromStdString(IsChineseDisplayLangguage() ? row.chinese : row.english);
}

QString GetErrMsg(common::MsgCode code) {
    return GetTrMsg(code);
}

}  // namespace zorvanelink::ui
