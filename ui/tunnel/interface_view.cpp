#include "ui/tunnel/interface_view.h"

#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>

#include "ui/text/texts.h"

namespace zorvanelink::ui {
namespace {

constexpr int kLabelWidth = 190;

}  // namespace

// A tunnel of both families has more rows than a small window has room for.
InterfaceView::InterfaceView(QWidget* parent) : QWidget(parent) {
    auto* area = new QScrollArea(this);
    auto* body = new QWidget(area);
    column_ = new QVBoxLayout(body);
    column_->setContentsMargins(0, 0, 0, 0);
    column_->addStretch();
    area->setWidget(body);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setAccessibleName(GetTrMsg(common::MsgCode::UI_TR_INTERFACE));
    area->viewport()->setAutoFillBackground(false);
    body->setAutoFillBackground(false);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(area);
}

void InterfaceView::Set(InterfaceRows const& rows) {
    Clear();
    panel_ = new QFrame(this);
    panel_->setObjectName(QStringLiteral("interface_panel_"));
    panel_->setProperty("card", true);
    auto* list = new QVBoxLayout(panel_);
    list->setContentsMargins(16, 4, 16, 4);
    list->setSpacing(0);
    for (auto const& row : rows) {
        if (!row.value.isEmpty()) {
            shown_.push_back(row);
        }
    }
    for (std::size_t i = 0; i < shown_.size(); ++i) {
        addRow(shown_[i], i + 1 == shown_.size());
    }
    panel_->setVisible(!shown_.empty());
    column_->insertWidget(0, panel_);
}

void InterfaceView::addRow(InterfaceRow const& row, bool last) {
    auto* line = new QFrame(panel_);
    line->setProperty("rule", !last);
    auto* label = new QLabel(row.label.trimmed(), line);
    label->setProperty("role", QStringLiteral("row"));
    label->setFixedWidth(kLabelWidth);
    label->setWordWrap(true);
    auto* value = new QLabel(row.value, line);
    value->setProperty("role", QStringLiteral("value"));
    value->setTextFormat(Qt::PlainText);
    value->setWordWrap(true);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* pair = new QHBoxLayout(line);
    pair->setContentsMargins(0, 9, 0, 9);
    pair->setSpacing(16);
    pair->addWidget(label, 0, Qt::AlignTop);
    pair->addWidget(value, 1);
    panel_->layout()->addWidget(line);
}

void InterfaceView::Clear() {
    shown_.clear();
    delete panel_;
    panel_ = nullptr;
}

}  // namespace zorvanelink::ui
