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
    if (cancelName != nullptr) {
        cancel_ = AddButton(GetTrMsg(MsgCode::UI_INFO_CANCEL), cancelName);
    }
    ok_ = AddButton(GetTrMsg(MsgCode::UI_INFO_OK), okName);
    ok_->setDefault(true);
}

QPushButtonExt* DialogFoot::AddButton(QString const& text, char const* name) {
    auto* row = static_cast<QHBoxLayout*>(layout());
    auto* button = new QPushButtonExt(text, this);
    button->setObjectName(QLatin1String(name));
    row->insertWidget(ok_ != nullptr ? row->indexOf(ok_) : row->count(), button);
    return button;
}

void DialogFoot::SetLead(QWidget* lead) {
    static_cast<QHBoxLayout*>(layout())->insertWidget(0, lead);
}

}  // namespace zorvanelink::ui
