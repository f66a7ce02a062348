#include "ui/settings/settings_dialog.h"

#include <QHBoxLayout>
#include <QLabel>

#include "app/environment/app_ctrl.h"
#include "ui/cert/client_certs.h"
#include "ui/settings/autostart.h"
#include "ui/text/texts.h"
#include "ui/widgets/dialog_foot.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

constexpr int kBodyWidth = 440;  // pixels

struct Row {
    QString (*heading)();  // of the group that begins here; null inside a group
    char const* name;
    char const* text;
    bool Config::*member;
};

constexpr Row kRows[] = {
    {[] { return Translate(QT_TRANSLATE_NOOP("ui", "Start")); }, "auto_run_",
     QT_TRANSLATE_NOOP("ui", "Start when you log in"), &Config::autoRun},
    {nullptr, "auto_login_", QT_TRANSLATE_NOOP("ui", "Connect automatically at start"),
     &Config::autoLogin},
    {[] { return Translate(QT_TRANSLATE_NOOP("ui", "Connection")); }, "auto_reconnect_",
     QT_TRANSLATE_NOOP("ui", "Reconnect automatically after an interruption"),
     &Config::autoReconnect},
    {nullptr, "auto_minimize_", QT_TRANSLATE_NOOP("ui", "Minimize the window once connected"),
     &Config::autoMinimize},
    {nullptr, "status_notify_", QT_TRANSLATE_NOOP("ui", "Show notifications about the connection"),
     &Config::statusNotify},
    {[] { return GetTrMsg(MsgCode::UI_INFO_UPDATE); }, "auto_update_",
     QT_TRANSLATE_NOOP("ui", "Update automatically"), &Config::autoUpdate},
};

QLabel* heading(QString const& text, QWidget* parent) {
    auto* const label = new QLabel(text, parent);
    label->setProperty("role", QStringLiteral("heading"));
    return label;
}

}  // namespace

SettingsDialog::SettingsDialog(Config& config, Prompts& prompts, QWidget* parent)
    : ZVLDialog(parent), config_(config), prompts_(prompts) {
    setObjectName(QStringLiteral("settings_dialog_"));
    setWindowTitle(GetTrMsg(MsgCode::UI_INFO_SETTING));
    auto* const column = new QVBoxLayout(Body());
    column->setContentsMargins(20, 20, 20, 12);
    column->setSpacing(8);
    addSwitches(column);
    column->addSpacing(12);
    column->addWidget(buildCertificates());
    auto* const foot = new DialogFoot(Panel(), "btn_ok_", "btn_cancel_");
    connect(foot->Ok(), &QPushButton::clicked, this, &QDialog::accept);
    connect(foot->Cancel(), &QPushButton::clicked, this, &QDialog::reject);
    SetFoot(foot);
    Body()->setMinimumWidth(kBodyWidth);
    switches_.front().box->setFocus();
}

void SettingsDialog::addSwitches(QVBoxLayout* column) {
    for (Row const& row : kRows) {
        // What a package manager installed is updated by it.
        bool const offered = row.member != &Config::autoUpdate || !AppCtrl::Instance().msiVersion;
        if (row.heading != nullptr && offered) {
            column->addSpacing(switches_.empty() ? 0 : 12);
            column->addWidget(heading(row.heading(), Body()));
        }
        auto* const box = new QCheckBox(Translate(row.text), Body());
        box->setObjectName(QLatin1String(row.name));
        box->setAccessibleName(box->text());
        box->setChecked(row.member == &Config::autoRun ? HasAutostart() : config_.*row.member);
        box->setHidden(!offered);
        column->addWidget(box, 0, Qt::AlignLeft);
        switches_.push_back({box, row.member});
    }
}

QWidget* SettingsDialog::buildCertificates() {
    auto* const group = new QWidget(Body());
    auto* const column = new QVBoxLayout(group);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(heading(Translate(QT_TRANSLATE_NOOP("ui", "Certificates")), group));
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    auto const add = [&](MsgCode text, char const* name) {
        auto* const button = new QPushButtonExt(GetTrMsg(text), group);
        button->setObjectName(QLatin1String(name));
        buttons->addWidget(button);
        return button;
    };
    connect(add(MsgCode::UI_TR_CLIENT_CERT_MANAGEMENT, "btn_client_certs_"), &QPushButton::clicked,
            this, [this] { ManageClientCerts(config_, prompts_, this); });
    connect(add(MsgCode::UI_TR_IMPORT_TRUSTED_CERT, "btn_trusted_certs_"), &QPushButton::clicked,
            this, [this] { ManageTrustedCerts(prompts_, this); });
    buttons->addStretch();
    column->addLayout(buttons);
    return group;
}

void SettingsDialog::accept() {
    if (!applyAutostart()) {
        return;
    }
    for (Switch const& one : switches_) {
        config_.*one.member = one.box->isChecked();
    }
    config_.Save();
    ZVLDialog::accept();
}

bool SettingsDialog::applyAutostart() {
    bool const wanted = switches_.front().box->isChecked();
    if (wanted == HasAutostart() || SetAutostart(wanted)) {
        return true;
    }
    prompts_.Critical(
        this, windowTitle(),
        Translate(QT_TRANSLATE_NOOP("ui", "Starting at login could not be changed.#@@#%1"))
            .arg(GetAutostartFilePath()),
        GetTrMsg(MsgCode::UI_INFO_OK));
    return false;
}

}  // namespace zorvanelink::ui
