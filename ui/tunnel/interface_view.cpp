#include "ui/tunnel/interface_view.h"

#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QScrollArea>

#include "ui/text/texts.h"
#include "ui/widgets/push_button_ext.h"

namespace zorvanelink::ui {
namespace {

constexpr int kLabelWidth = 190;
constexpr std::size_t kManyRows = 8;

}  // namespace

// A tunnel of both families has more rows than a small window has room for.
InterfaceView::InterfaceView(QWidget* parent) : QWidget(parent) {
    auto* area = new QScrollArea(this);
    auto* body = new QWidget(area);
    column_ = new QVBoxLayout(body);
    column_->setContentsMargins(0, 0, 0, 0);
    note_ = new QLabel(Translate(QT_TRANSLATE_NOOP("ui", "No addresses")), body);
    note_->setProperty("role", QStringLiteral("secondary"));
    note_->setAlignment(Qt::AlignCenter);
    column_->addWidget(note_);
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
        addRow(shown_[i], i == 0, i + 1 == shown_.size());
    }
    note_->setVisible(shown_.empty());
    panel_->setVisible(!shown_.empty());
    column_->insertWidget(0, panel_);
}

QPushButton* InterfaceView::copyButton(QWidget* parent) {
    auto* button = new QPushButtonExt(Translate(QT_TRANSLATE_NOOP("ui", "Copy All")), parent);
    button->setObjectName(QStringLiteral("copy_all_"));
    button->setProperty("outline", true);
    connect(button, &QPushButton::clicked, this, [this] {
        QStringList lines;
        for (InterfaceRow const& row : shown_) {
            bool const wide = row.label.endsWith(QChar(0xFF1A));  // a full-width colon
            lines += row.label.trimmed() + (wide ? QString() : QStringLiteral(" ")) + row.value;
        }
        QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
    });
    return button;
}

void InterfaceView::addRow(InterfaceRow const& row, bool first, bool last) {
    // All rows of a tunnel of both families fit the window.
    int const room = shown_.size() > kManyRows ? 3 : 9;
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
    pair->setContentsMargins(0, room, 0, room);
    pair->setSpacing(16);
    pair->addWidget(label, 0, Qt::AlignTop);
    pair->addWidget(value, 1);
    if (first) {
        pair->addWidget(copyButton(line), 0, Qt::AlignTop);
    }
    panel_->layout()->addWidget(line);
}

void InterfaceView::Clear() {
    shown_.clear();
    delete panel_;
    panel_ = nullptr;
    note_->show();
}

}  // namespace zorvanelink::ui
