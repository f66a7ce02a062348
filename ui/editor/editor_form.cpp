#include "ui/editor/editor_form.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QRegularExpressionValidator>
#include <QStyledItemDelegate>
#include <QWheelEvent>

#include "ui/text/texts.h"
#include "ui/widgets/dialog_foot.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

// Pixels, before scaling.
constexpr int kSide = 20;
constexpr int kSpacing = 12;
constexpr int kLabelSpacing = 5;
constexpr int kPortWidth = 168;
constexpr int kIndicatorRoom = 24;  // of a check box: what belongs to it starts with its text
constexpr int kRingRoom = 3;        // of the focus ring around a check box

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
QString withoutColon(QString text) {
    while (text.endsWith(QLatin1Char(':')) || text.endsWith(QChar(0xFF1A))) {
        text.chop(1);
    }
    return text;
}

QString heading(MsgCode code) {
    return withoutColon(GetTrMsg(code));
}

// The line that says what a setting does.
QLabel* makeHint(QWidget* parent, QWidget* field, QString const& text) {
    auto* line = new QLabel(text, parent);
    line->setProperty("role", QStringLiteral("hint"));
    line->setWordWrap(true);
    field->setAccessibleDescription(text);
    return line;
}

QWidget* labelled(QWidget* parent, QWidget* edit, QString const& text) {
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

EditorForm::EditorForm(ZVLDialog& dialog) {
    buildTabs(&dialog);
    buildFields(dialog.Body());
    buildFoot(&dialog);
    dialog.SetHead(tabs);
    dialog.SetFoot(foot);
    for (QComboBox* combo : dialog.Body()->findChildren<QComboBox*>()) {
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

void EditorForm::buildTabs(QWidget* dialog) {
    tabs = new QWidget(dialog);
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

void EditorForm::buildFields(QWidget* content) {
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
}

void EditorForm::InsertCredentials(QWidget* section) {
    column_->insertWidget(column_->indexOf(checkbox_keep_auth_type_), section);
}

// A field of the advanced section, its label above and what it does below.
QWidget* EditorForm::cell(QWidget* field, char const* name, QString const& text, char const* hint) {
    field->setObjectName(QLatin1String(name));
    auto* cell = labelled(advanced, field, withoutColon(text));
    auto* column = static_cast<QVBoxLayout*>(cell->layout());
    column->addWidget(makeHint(cell, field, Translate(hint)));
    column->addStretch();
    return cell;
}

QCheckBox* EditorForm::addSwitch(char const* name, QString const& text, char const* hint) {
    QCheckBox* const box = makeCheck(advanced, name, text);
    auto* line = makeHint(advanced, box, Translate(hint));
    line->setIndent(kIndicatorRoom);
    auto* pair = new QVBoxLayout;
    pair->setSpacing(kRingRoom);
    pair->addWidget(box, 0, Qt::AlignLeft);
    pair->addWidget(line);
    rows_->addLayout(pair, rows_->rowCount(), 0, 1, 2);
    return box;
}

void EditorForm::buildAdvanced(QWidget* content) {
    advanced = new QWidget(content);
    advanced->setObjectName(QStringLiteral("advanced_widget_"));
    rows_ = new QGridLayout(advanced);
    rows_->setContentsMargins(0, 0, 0, 0);
    rows_->setHorizontalSpacing(kSpacing);
    rows_->setVerticalSpacing(kSpacing);
    rows_->setColumnStretch(0, 1);
    rows_->setColumnStretch(1, 1);
    verfy_server_cert_checkbox_ =
        addSwitch("verfy_server_cert_checkbox_", GetCaption(MsgCode::UI_TR_VERFY_SERVER_CERT),
                  QT_TRANSLATE_NOOP("ui", "Connects only to servers whose certificate you trust."));
    buildTrustWarning();
    optimal_channel_checkbox_ = addSwitch(
        "optimal_channel_checkbox_", Translate(QT_TRANSLATE_NOOP("ui", "Select Optimal Channel")),
        QT_TRANSLATE_NOOP("ui", "Uses the fastest of the server's addresses."));
    gateway_detect_checkbox_ = addSwitch(
        "gateway_detect_checkbox_", Translate(QT_TRANSLATE_NOOP("ui", "Detect Nearest Gateway")),
        QT_TRANSLATE_NOOP("ui", "Looks for the gateway that answers first."));
    perfer_gateway_combobox_ = new StillComboBox(advanced);
    perfer_gateway_combobox_->addItem(GetTrMsg(MsgCode::UI_INFO_OPTIONAL));
    perfer_gateway_combobox_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    gatewayCell = cell(perfer_gateway_combobox_, "perfer_gateway_combobox_",
                       Translate(QT_TRANSLATE_NOOP("ui", "Preferred Gateway:")),
                       QT_TRANSLATE_NOOP("ui", "Taken as long as it answers."));
    rows_->addWidget(gatewayCell, rows_->rowCount(), 0, 1, 2);
    buildModes();
}

void EditorForm::buildModes() {
    comboBox_spa_mode_ = makeModes(advanced);
    lineEdit_spa_port_ = new QLineEdit(advanced);
    lineEdit_spa_port_->setPlaceholderText(GetTrMsg(MsgCode::UI_INFO_INPUT_SPA_PORT));
    restrictTo(lineEdit_spa_port_, kPortPattern);
    comboBox_comm_optim_mode = makeModes(advanced);
    int const row = rows_->rowCount();
    rows_->addWidget(cell(comboBox_spa_mode_, "comboBox_spa_mode_",
                          Translate(QT_TRANSLATE_NOOP("ui", "SPA Mode:")),
                          QT_TRANSLATE_NOOP("ui", "Knocks before it connects.")),
                     row, 0);
    spaPortCell = cell(lineEdit_spa_port_, "lineEdit_spa_port_",
                       Translate(QT_TRANSLATE_NOOP("ui", "SPA Port:")),
                       QT_TRANSLATE_NOOP("ui", "Where the server waits for the knock."));
    rows_->addWidget(spaPortCell, row, 1);
    rows_->addWidget(cell(comboBox_comm_optim_mode, "comboBox_comm_optim_mode",
                          GetTrMsg(MsgCode::UI_INFO_COMMNICATION_STABILITY_OPTIMIZATION),
                          QT_TRANSLATE_NOOP("ui", "Steadier, but slower, on bad lines.")),
                     row + 1, 0);
}

void EditorForm::buildTrustWarning() {
    trustWarning = new QLabel(advanced);
    trustWarning->setObjectName(QStringLiteral("trust_warning_"));
    trustWarning->setProperty("role", QStringLiteral("warning"));
    trustWarning->setWordWrap(true);
    trustWarning->setIndent(kIndicatorRoom);
    trustWarning->setText(QStringLiteral("%1 <a href=\"folder\">%2</a>")
                              .arg(Translate(QT_TRANSLATE_NOOP(
                                       "ui", "No trusted certificate has been imported yet.")),
                                   Translate(QT_TRANSLATE_NOOP("ui", "Import one"))));
    trustWarning->setTextInteractionFlags(Qt::LinksAccessibleByMouse |
                                          Qt::LinksAccessibleByKeyboard);
    trustWarning->hide();
    rows_->addWidget(trustWarning, rows_->rowCount(), 0, 1, 2);
}

void EditorForm::buildFoot(QWidget* dialog) {
    auto* buttons = new DialogFoot(dialog, "add_connect_button_", "cannel_connect_button_");
    foot = buttons;
    cannel_connect_button_ = buttons->Cancel();
    add_connect_button_ = buttons->Ok();
    save_button_ = buttons->AddButton(Translate(QT_TRANSLATE_NOOP("ui", "Save")), "save_button_");
}

void EditorForm::SetArrow(bool open) const {
    btn_icon_advanced_config_->setIcon(
        LoadImage(open ? QStringLiteral(":/assets/images/arrow_down.png")
                       : QStringLiteral(":/assets/images/arrow_right.png")));
}

void EditorForm::SetTabOrder(QList<QWidget*> const& credentials) const {
    QList<QWidget*> const order =
        QList<QWidget*>{pushButton_tls, pushButton_gmssl, profile_name_, server_, port_} +
        credentials + QList<QWidget*>{checkbox_keep_auth_type_,    btn_icon_advanced_config_,
                                      verfy_server_cert_checkbox_, trustWarning,
                                      optimal_channel_checkbox_,   gateway_detect_checkbox_,
                                      perfer_gateway_combobox_,    comboBox_spa_mode_,
                                      lineEdit_spa_port_,          comboBox_comm_optim_mode,
                                      cannel_connect_button_,      save_button_,
                                      add_connect_button_};
    for (int i = 1; i < order.size(); ++i) {
        QWidget::setTabOrder(order[i - 1], order[i]);
    }
}

}  // namespace zorvanelink::ui
