#include "ui/editor/editor_form.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QRegularExpressionValidator>
#include <QScrollBar>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QWheelEvent>

#include "ui/text/texts.h"
#include "ui/widgets/dialog_foot.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

// Pixels, before scaling.
constexpr int kSide = 20;
constexpr int kSpacing = 12;
constexpr int kLabelSpacing = 5;
constexpr int kPortWidth = 168;
constexpr int kLabelWidth = 168;

constexpr int kMaxNameChars = 127;
constexpr char const* kServerPattern = "^[!-~]*$";
constexpr char const* kPortPattern =
    "^([1-9]|[1-9][0-9]|[1-9][0-9]{2}|[1-9][0-9]{3}|[1-5][0-9]{4}|6[0-4][0-9]{3}|"
    "65[0-4][0-9]{2}|655[0-2][0-9]|6553[0-5])$";

// Scrolling the form must not change what stands under the pointer.
class StillComboBox : public QComboBox {
  public:
    using QComboBox::QComboBox;

  protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

// A pasted address or number often brings blanks along, which would have all of it refused.
class BlanklessValidator : public QRegularExpressionValidator {
  public:
    using QRegularExpressionValidator::QRegularExpressionValidator;

    State validate(QString& input, int& position) const override {
        for (int i = input.size() - 1; i >= 0; --i) {
            if (input[i].isSpace()) {
                input.remove(i, 1);
                position -= i < position ? 1 : 0;
            }
        }
        return QRegularExpressionValidator::validate(input, position);
    }
};

void restrictTo(QLineEdit* edit, char const* pattern) {
    edit->setValidator(new BlanklessValidator(QRegularExpression(QLatin1String(pattern)), edit));
}

QLineEdit* makeEdit(QWidget* parent, char const* name, QString const& placeholder) {
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(QLatin1String(name));
    edit->setPlaceholderText(placeholder);
    return edit;
}

// A label above its field needs no colon.
QString heading(MsgCode code) {
    QString text = GetTrMsg(code);
    while (text.endsWith(QLatin1Char(':')) || text.endsWith(QChar(0xFF1A))) {
        text.chop(1);
    }
    return text;
}

QWidget* labelled(QWidget* parent, QLineEdit* edit, QString const& text) {
    auto* field = new QWidget(parent);
    auto* label = new QLabel(text, field);
    label->setProperty("role", QStringLiteral("label"));
    label->setBuddy(edit);
    edit->setAccessibleName(text);
    auto* column = new QVBoxLayout(field);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kLabelSpacing);
    column->addWidget(label);
    column->addWidget(edit);
    return field;
}

QCheckBox* makeCheck(QWidget* parent, char const* name, QString const& text) {
    auto* check = new QCheckBox(text, parent);
    check->setObjectName(QLatin1String(name));
    check->setAccessibleName(text);
    return check;
}

QComboBox* makeModes(QWidget* parent) {
    auto* combo = new StillComboBox(parent);
    for (MsgCode const code : {MsgCode::UI_INFO_AUTO, MsgCode::UI_INFO_ON, MsgCode::UI_INFO_OFF}) {
        combo->addItem(GetTrMsg(code));
    }
    return combo;
}

}  // namespace

EditorForm::EditorForm(QWidget* body) {
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    buildTabs(body);
    buildFoot(body);
    buildFields(body);
    column->addWidget(tabs);
    column->addWidget(scroll, 1);
    column->addWidget(foot);
    for (QComboBox* combo : body->findChildren<QComboBox*>()) {
        // The plain delegate would leave the stylesheet's items out.
        combo->setItemDelegate(new QStyledItemDelegate(combo));
    }
}

QPushButton* EditorForm::addTab(char const* name, QString const& text) {
    auto* tab = new QPushButton(text, tabs);
    tab->setObjectName(QLatin1String(name));
    tab->setAccessibleName(text);
    tab->setCheckable(true);
    tab->setAutoDefault(false);
    tabs->layout()->addWidget(tab);
    return tab;
}

void EditorForm::buildTabs(QWidget* body) {
    tabs = new QWidget(body);
    tabs->setObjectName(QStringLiteral("ssl_tabs_"));
    auto* row = new QHBoxLayout(tabs);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    pushButton_tls = addTab("pushButton_tls", QStringLiteral("TLS"));
    pushButton_gmssl = addTab("pushButton_gmssl", QStringLiteral("GM SSL"));
    // One of the two, and the arrow keys go from one to the other.
    auto* group = new QButtonGroup(tabs);
    group->addButton(pushButton_tls);
    group->addButton(pushButton_gmssl);
    pushButton_tls->setChecked(true);
}

void EditorForm::buildFields(QWidget* body) {
    scroll = new QScrollArea(body);
    scroll->setObjectName(QStringLiteral("form_scroll_"));
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    auto* content = new QWidget(scroll);
    content->setObjectName(QStringLiteral("form_content_"));
    profile_name_ =
        makeEdit(content, "profile_name_", GetTrMsg(MsgCode::UI_INFO_INPUT_CONNECTION_NAME));
    profile_name_->setMaxLength(kMaxNameChars);
    server_ = makeEdit(content, "server_", GetTrMsg(MsgCode::UI_INFO_INPUT_SERVER_ADDR));
    restrictTo(server_, kServerPattern);
    port_ = makeEdit(content, "port_", GetTrMsg(MsgCode::UI_INFO_INPUT_PORT));
    restrictTo(port_, kPortPattern);

    auto* address = new QHBoxLayout;
    address->setSpacing(kSpacing);
    address->addWidget(labelled(content, server_, heading(MsgCode::UI_INFO_SERVER)), 1);
    QWidget* portField = labelled(content, port_, heading(MsgCode::UI_INFO_PORT));
    portField->setMinimumWidth(kPortWidth);
    address->addWidget(portField);

    checkbox_keep_auth_type_ = makeCheck(content, "checkbox_keep_auth_type_",
                                         GetTrMsg(MsgCode::UI_TR_INFO_REMEMBER_AUTH_TYPE));
    btn_icon_advanced_config_ =
        new QPushButton(Translate(QT_TRANSLATE_NOOP("ui", "Advanced Settings")), content);
    btn_icon_advanced_config_->setObjectName(QStringLiteral("btn_icon_advanced_config_"));
    btn_icon_advanced_config_->setAutoDefault(false);
    btn_icon_advanced_config_->setIconSize({12, 12});
    buildAdvanced(content);

    column_ = new QVBoxLayout(content);
    column_->setContentsMargins(kSide, 14, kSide, 8);
    column_->setSpacing(kSpacing);
    column_->addWidget(labelled(content, profile_name_, heading(MsgCode::UI_INFO_CONNECT_NAME)));
    column_->addLayout(address);
    column_->addWidget(checkbox_keep_auth_type_);
    column_->addWidget(btn_icon_advanced_config_, 0, Qt::AlignLeft);
    column_->addWidget(advanced);
    column_->addStretch();
    scroll->setWidget(content);
    QObject::connect(scroll->verticalScrollBar(), &QScrollBar::rangeChanged, scroll,
                     [foot = foot](int, int last) {
                         // What scrolls away below the buttons does so under a line.
                         foot->setProperty("lifted", last > 0);
                         foot->style()->polish(foot);
                     });
}

void EditorForm::InsertCredentials(QWidget* section) {
    column_->insertWidget(column_->indexOf(checkbox_keep_auth_type_), section);
}

// The label in front of a field of the advanced section.
QLabel* EditorForm::addRow(QWidget* field, char const* name, QString const& text) {
    auto* label = new QLabel(text, advanced);
    label->setProperty("role", QStringLiteral("secondary"));
    label->setBuddy(field);
    field->setObjectName(QLatin1String(name));
    field->setAccessibleName(text);
    int const row = rows_->rowCount();
    rows_->addWidget(label, row, 0);
    rows_->addWidget(field, row, 1);
    return label;
}

void EditorForm::buildAdvanced(QWidget* content) {
    advanced = new QWidget(content);
    advanced->setObjectName(QStringLiteral("advanced_widget_"));
    verfy_server_cert_checkbox_ = makeCheck(advanced, "verfy_server_cert_checkbox_",
                                            GetCaption(common::MsgCode::UI_TR_VERFY_SERVER_CERT));
    optimal_channel_checkbox_ =
        makeCheck(advanced, "optimal_channel_checkbox_",
                  Translate(QT_TRANSLATE_NOOP("ui", "Select Optimal Channel")));
    comboBox_spa_mode_ = makeModes(advanced);
    lineEdit_spa_port_ = new QLineEdit(advanced);
    lineEdit_spa_port_->setPlaceholderText(GetTrMsg(MsgCode::UI_INFO_INPUT_SPA_PORT));
    restrictTo(lineEdit_spa_port_, kPortPattern);
    comboBox_comm_optim_mode = makeModes(advanced);
    gateway_detect_checkbox_ =
        makeCheck(advanced, "gateway_detect_checkbox_",
                  Translate(QT_TRANSLATE_NOOP("ui", "Detect Nearest Gateway")));
    perfer_gateway_combobox_ = new StillComboBox(advanced);
    perfer_gateway_combobox_->addItem(GetTrMsg(MsgCode::UI_INFO_OPTIONAL));
    perfer_gateway_combobox_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);

    rows_ = new QGridLayout(advanced);
    rows_->setContentsMargins(0, 0, 0, 0);
    rows_->setHorizontalSpacing(kSpacing);
    rows_->setVerticalSpacing(8);
    rows_->setColumnMinimumWidth(0, kLabelWidth);
    rows_->setColumnStretch(1, 1);
    rows_->addWidget(verfy_server_cert_checkbox_, 0, 0, 1, 2);
    rows_->addWidget(optimal_channel_checkbox_, 1, 0, 1, 2);
    addRow(comboBox_spa_mode_, "comboBox_spa_mode_",
           Translate(QT_TRANSLATE_NOOP("ui", "SPA Mode:")));
    spaPortLabel = addRow(lineEdit_spa_port_, "lineEdit_spa_port_",
                          Translate(QT_TRANSLATE_NOOP("ui", "SPA Port:")));
    addRow(comboBox_comm_optim_mode, "comboBox_comm_optim_mode",
           GetTrMsg(MsgCode::UI_INFO_COMMNICATION_STABILITY_OPTIMIZATION));
    rows_->addWidget(gateway_detect_checkbox_, rows_->rowCount(), 0, 1, 2);
    gatewayLabel = addRow(perfer_gateway_combobox_, "perfer_gateway_combobox_",
                          Translate(QT_TRANSLATE_NOOP("ui", "Preferred Gateway:")));
}

void EditorForm::buildFoot(QWidget* body) {
    auto* buttons = new DialogFoot(body, "add_connect_button_", "cannel_connect_button_");
    foot = buttons;
    foot->setObjectName(QStringLiteral("editor_foot_"));
    foot->setAttribute(Qt::WA_StyledBackground);
    cannel_connect_button_ = buttons->Cancel();
    add_connect_button_ = buttons->Ok();
    foot->layout()->setContentsMargins(kSide, 12, kSide, 16);
}

void EditorForm::SetArrow(bool open) const {
    btn_icon_advanced_config_->setIcon(
        QIcon(open ? QStringLiteral(":/assets/images/arrow_down.png")
                   : QStringLiteral(":/assets/images/arrow_right.png")));
}

int EditorForm::Height() const {
    // Layouts hear of what was shown or hidden inside them with a later event.
    QList<QWidget*> const inside = scroll->widget()->findChildren<QWidget*>();
    for (auto widget = inside.crbegin(); widget != inside.crend(); ++widget) {
        if (QLayout* const layout = (*widget)->layout()) {
            layout->invalidate();
            layout->activate();
        }
    }
    column_->invalidate();
    int const fields = column_->hasHeightForWidth()
                           ? column_->totalHeightForWidth(scroll->viewport()->width())
                           : column_->totalSizeHint().height();
    return (tabs->isHidden() ? 0 : tabs->sizeHint().height()) + fields + foot->sizeHint().height();
}

void EditorForm::SetTabOrder(QList<QWidget*> const& credentials) const {
    QList<QWidget*> const order =
        QList<QWidget*>{pushButton_tls, pushButton_gmssl, profile_name_, server_, port_} +
        credentials + QList<QWidget*>{checkbox_keep_auth_type_,    btn_icon_advanced_config_,
                                      verfy_server_cert_checkbox_, optimal_channel_checkbox_,
                                      comboBox_spa_mode_,          lineEdit_spa_port_,
                                      comboBox_comm_optim_mode,    gateway_detect_checkbox_,
                                      perfer_gateway_combobox_,    cannel_connect_button_,
                                      add_connect_button_};
    for (int i = 1; i < order.size(); ++i) {
        QWidget::setTabOrder(order[i - 1], order[i]);
    }
}

}  // namespace zorvanelink::ui
