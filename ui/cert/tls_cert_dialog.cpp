#include "ui/cert/tls_cert_dialog.h"

#include <QHBoxLayout>
#include <algorithm>

#include "components/logger/logger.h"
#include "ui/cert/cert_lines.h"
#include "ui/cert/cert_view_form.h"
#include "ui/cert/digital_cert_dialog.h"
#include "ui/text/texts.h"
#include "ui/widgets/dialog_foot.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;

// Pixels, before scaling.
constexpr int kWidth = 520;
constexpr int kBodyHeight = 312;

QString shownName(CertInfo const& cert) {
    std::string const& name = cert.certName.empty() ? cert.commonName : cert.certName;
    return CertViewForm::Readable(QString::fromStdString(name)).simplified();
}

}  // namespace

TLSCertDialog::TLSCertDialog(CertInfo& target, Config& config, Prompts& prompts, QWidget* parent)
    : ZVLDialog(parent),
      target_(target),
      config_(config),
      prompts_(prompts),
      pages_(new QStackedWidget(Body())) {
    setObjectName(QStringLiteral("tls_cert_dialog_"));
    setWindowTitle(GetTrMsg(MsgCode::UI_INFO_DIGITAL_CERTIFICATE));
    auto* kinds = buildKinds();
    auto* refresh = new QPushButtonExt(Translate(QT_TRANSLATE_NOOP("ui", "Refresh")), pages_);
    refresh->setObjectName(QStringLiteral("refresh_button_"));
    auto* manage = new QPushButtonExt(GetTrMsg(MsgCode::UI_TR_CLIENT_CERT_MANAGEMENT), pages_);
    manage->setObjectName(QStringLiteral("manage_button_"));
    pages_->addWidget(buildPage(service_, "service_cert_list_", refresh));
    pages_->addWidget(buildPage(store_, "file_cert_list_", manage));
    connect(refresh, &QPushButton::clicked, this, &TLSCertDialog::on_refresh_button__clicked);
    connect(manage, &QPushButton::clicked, this, &TLSCertDialog::manageStore);
    auto* column = new QVBoxLayout(Body());
    column->setContentsMargins(20, 16, 20, 4);
    column->setSpacing(16);
    column->addWidget(kinds);
    column->addWidget(pages_, 1);
    auto* foot = new DialogFoot(Panel(), "ok_button_", "cancel_button_");
    connect(foot->Ok(), &QPushButton::clicked, this, &TLSCertDialog::on_ok_button__clicked);
    connect(foot->Cancel(), &QPushButton::clicked, this, &QDialog::reject);
    SetFoot(foot);
    Body()->setFixedHeight(kBodyHeight);
    setFixedWidth(kWidth);
    fillFromStore();
}

QRadioButton* TLSCertDialog::addKind(QLayout& row, char const* name, QString const& text) {
    auto* button = new QRadioButton(text, Body());
    button->setObjectName(QLatin1String(name));
    button->setAccessibleName(text);
    row.addWidget(button);
    return button;
}

QWidget* TLSCertDialog::buildKinds() {
    auto* bar = new QWidget(Body());
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    sys_ = addKind(*row, "sys_cert_radioButton",
                   GetTrMsg(MsgCode::UI_INFO_USE_SYSTEM_DEFAULT_CERTIFICATE));
    usb_ =
        addKind(*row, "usb_cert_radioButton", GetTrMsg(MsgCode::UI_INFO_USE_USB_KEY_CERTIFICATE));
    soft_ =
        addKind(*row, "soft_cert_radioButton", GetTrMsg(MsgCode::UI_INFO_USE_SOFTWARE_CERTIFICATE));
    row->addStretch();
    connect(sys_, &QRadioButton::clicked, this, &TLSCertDialog::on_sys_cert_radioButton__clicked);
    connect(usb_, &QRadioButton::clicked, this, &TLSCertDialog::on_usb_cert_radioButton__clicked);
    connect(soft_, &QRadioButton::clicked, this, &TLSCertDialog::on_soft_cert_radioButton__clicked);
    return bar;
}

QWidget* TLSCertDialog::buildPage(Source& source, char const* viewName, QPushButton* action) {
    auto* page = new QWidget(pages_);
    source.view = new QListView(page);
    source.view->setObjectName(QLatin1String(viewName));
    source.view->setAccessibleName(GetTrMsg(MsgCode::UI_INFO_SELECT_CERTIFICATE));
    source.view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    source.view->setItemDelegate(new CertLinesDelegate(source.view));
    source.names = new QStandardItemModel(source.view);
    source.view->setModel(source.names);
    source.empty = new QLabel(source.view);
    source.empty->setProperty("role", QStringLiteral("hint"));
    source.empty->setAlignment(Qt::AlignCenter);
    source.empty->setWordWrap(true);
    (new QVBoxLayout(source.view))->addWidget(source.empty);
    connect(source.view, &QListView::doubleClicked, this, &TLSCertDialog::on_ok_button__clicked);
    setTabOrder(source.view, action);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(12);
    column->addWidget(source.view, 1);
    column->addWidget(action, 0, Qt::AlignLeft);
    return page;
}

void TLSCertDialog::showEvent(QShowEvent* event) {
    ZVLDialog::showEvent(event);
    if (!opened_) {
        opened_ = true;
        chooseKindOfTarget();
        for (QRadioButton* kind : {sys_, usb_, soft_}) {
            if (kind->isChecked()) {
                kind->setFocus();
            }
        }
    }
}

void TLSCertDialog::chooseKindOfTarget() {
    switch (target_.certType) {
        case kCertTypeUsbKey:
            usb_->setChecked(true);
            on_usb_cert_radioButton__clicked();
            break;
        case kCertTypeFile:
            soft_->setChecked(true);
            on_soft_cert_radioButton__clicked();
            return;
        default:
            sys_->setChecked(true);
            on_sys_cert_radioButton__clicked();
    }
    on_refresh_button__clicked();
}

void TLSCertDialog::on_sys_cert_radioButton__clicked() {
    showPage(service_);
}

void TLSCertDialog::on_usb_cert_radioButton__clicked() {
    showPage(service_);
}

void TLSCertDialog::on_soft_cert_radioButton__clicked() {
    showPage(store_);
}

void TLSCertDialog::showPage(Source const& source) {
    pages_->setCurrentWidget(source.view->parentWidget());
}

void TLSCertDialog::on_refresh_button__clicked() {
    service_.empty->setText(Translate(QT_TRANSLATE_NOOP("ui", "Asking for the certificates...")));
    Q_EMIT SendCertRequest(false);
}

void TLSCertDialog::onRecvCertInfo(std::vector<zorvanelink::CertInfo> const& list) {
    Log().info("on recv cert info");
    service_.empty->setText(Translate(
        QT_TRANSLATE_NOOP("ui", "No certificates. Insert the USB key and press Refresh.")));
    fill(service_, list);
}

void TLSCertDialog::fill(Source& source, std::vector<CertInfo> certs) {
    // What the user has chosen already outlives a list that comes late.
    QModelIndex const at = source.view->currentIndex();
    std::string const wanted = at.isValid()
                                   ? source.certs[static_cast<std::size_t>(at.row())].fingerprint
                                   : target_.fingerprint;
    source.certs = std::move(certs);
    source.names->clear();
    int preset = -1;
    for (CertInfo const& cert : source.certs) {
        if (!wanted.empty() && cert.fingerprint == wanted) {
            preset = source.names->rowCount();
        }
        source.names->appendRow(CertLinesDelegate::ItemOf(LinesOf(cert)));
    }
    source.empty->setVisible(source.certs.empty());
    source.view->setCurrentIndex(source.names->index(preset, 0));
}

void TLSCertDialog::fillFromStore() {
    std::vector<CertInfo> certs;
    for (auto const& [fingerprint, cert] : config_.clientCerts) {
        if (cert.isTls) {
            certs.push_back(cert);
        }
    }
    store_.empty->setText(NoCertificates());
    fill(store_, std::move(certs));
}

void TLSCertDialog::manageStore() {
    std::vector<CertInfo> const before = store_.certs;
    DigitalCertDialog(nullptr, config_, prompts_, this).exec();
    fillFromStore();
    if (store_.view->currentIndex().isValid()) {
        return;
    }
    // What has just been imported is meant.
    for (std::size_t row = 0; row < store_.certs.size(); ++row) {
        auto const same = [&](CertInfo const& cert) {
            return cert.fingerprint == store_.certs[row].fingerprint;
        };
        if (std::none_of(before.begin(), before.end(), same)) {
            store_.view->setCurrentIndex(store_.names->index(static_cast<int>(row), 0));
        }
    }
}

std::uint16_t TLSCertDialog::checkedKind() const {
    if (soft_->isChecked()) {
        return kCertTypeFile;
    }
    return usb_->isChecked() ? kCertTypeUsbKey : kCertTypeSystem;
}

TLSCertDialog::Source& TLSCertDialog::sourceOf(std::uint16_t kind) {
    return kind == kCertTypeFile ? store_ : service_;
}

void TLSCertDialog::on_ok_button__clicked() {
    Log().info("TLS certificate dialog: OK clicked");
    std::uint16_t const kind = checkedKind();
    Source const& source = sourceOf(kind);
    QModelIndex const index = source.view->currentIndex();
    if (!index.isValid()) {
        prompts_.Error(this, GetTrMsg(MsgCode::UI_INFO_PLEASE_SELECT_CERTIFICATE));
        return;
    }
    take(source.certs[static_cast<std::size_t>(index.row())], kind);
}

void TLSCertDialog::take(CertInfo const& cert, std::uint16_t kind) {
    target_ = cert;
    target_.certType = kind;
    accept();
}

void TLSCertDialog::AutoSetTLSCertInfo(zorvanelink::CertInfo const& wanted) {
    Source const& source = sourceOf(wanted.certType);
    auto const match = std::find_if(
        source.certs.begin(), source.certs.end(),
        [&wanted](CertInfo const& cert) { return shownName(cert) == shownName(wanted); });
    if (match == source.certs.end()) {
        Q_EMIT AutoCertErrorExitSignal();
        return;
    }
    take(*match, wanted.certType);
}

}  // namespace zorvanelink::ui
