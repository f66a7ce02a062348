#include "ui/widgets/dialog_foot.h"

#include <QHBoxLayout>

#include "ui/text/texts.h"

namespace zorvanelink::ui {

using common::MsgCode;

DialogFoot::DialogFoot(QWidget* parent, char const* okName, char const* cancelName)
    : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(12);
    row->addStretch();
    auto const add = [&](MsgCode text, char const* name) {
        auto* button = new QPushButtonExt(GetTrMsg(text), this);
        button->setObjectName(QLatin1String(name));
        row->addWidget(button);
        return button;
    };
    if (cancelName != nullptr) {
        cancel_ = add(MsgCode::UI_INFO_CANCEL, cancelName);
    }
    ok_ = add(MsgCode::UI_INFO_OK, okName);
    ok_->setDefault(true);
}

}  // namespace zorvanelink::ui
