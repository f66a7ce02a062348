#include "ui/cert/digital_cert_dialog.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QPointer>
#include <QThread>
#include <memory>

#include "components/cert/pkcs12.h"
#include "components/logger/logger.h"
#include "ui/cert/cert_view_form.h"
#include "ui/text/texts.h"
#include "ui/widgets/dialog_foot.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;
namespace utils = components::utils;

// Pixels, before scaling.
constexpr int kWidth = 520;
constexpr int kBodyHeight = 372;

QString deletionQuestion(CertInfo const& cert) {
    return GetTrMsg(MsgCode::UI_TR_SURE_TO_DELETE_CERT) + QLatin1String("#@@#") +
           LinesOf(cert).Whole();
}

}  // namespace

DigitalCertDialog::DigitalCertDialog(CertInfo* target, Config& config, Prompts& prompts,
                                     QWidget* parent)
    : ZVLDialog(parent),
      target_(target),
      config_(config),
      prompts_(prompts),
      certBox_(new CertViewBox(Body())) {
    setObjectName(QStringLiteral("digital_cert_dialog_"));
    setWindowTitle(GetTrMsg(target != nullptr ? MsgCode::UI_INFO_DIGITAL_CERTIFICATE
                                              : MsgCode::UI_TR_CLIENT_CERT_MANAGEMENT));
    certBox_->setAccessibleName(windowTitle());
    auto* column = new QVBoxLayout(Body());
    column->setContentsMargins(20, 16, 20, 4);
    column->setSpacing(16);
    column->addWidget(buildHead());
    column->addWidget(certBox_, 1);
    SetFoot(buildFoot());
    Body()->setFixedHeight(kBodyHeight);
    setFixedWidth(kWidth);
    connect(certBox_, &CertViewBox::SelectCert, this, &DigitalCertDialog::OnSelectCert);
    InitCertView();
}

QWidget* DigitalCertDialog::buildHead() {
    auto* bar = new QWidget(Body());
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    import_ = new QPushButtonExt(GetTrMsg(MsgCode::UI_TR_IMPORT), bar);
    import_->setObjectName(QStringLiteral("btn_import_"));
    import_->setProperty("outline", true);
    delete_ = new QPushButtonExt(GetTrMsg(MsgCode::UI_TR_DELETE), bar);
    delete_->setObjectName(QStringLiteral("btn_delete_"));
    delete_->setEnabled(false);
    row->addWidget(import_);
    busy_ = new QLabel(Translate(QT_TRANSLATE_NOOP("ui", "Opening the certificate...")), bar);
    busy_->setObjectName(QStringLiteral("busy_label_"));
    busy_->setProperty("role", QStringLiteral("hint"));
    busy_->hide();
    row->addWidget(delete_);
    row->addStretch();
    row->addWidget(busy_);
    connect(import_, &QPushButton::clicked, this, &DigitalCertDialog::OnBtnImportClicked);
    connect(delete_, &QPushButton::clicked, this, &DigitalCertDialog::OnBtnDeleteClicked);
    return bar;
}

QWidget* DigitalCertDialog::buildFoot() {
    auto* foot = new DialogFoot(Panel(), "btn_ok_", target_ != nullptr ? "btn_cancel_" : nullptr);
    connect(foot->Ok(), &QPushButton::clicked, this, &DigitalCertDialog::OnBtnOkClicked);
    if (foot->Cancel() != nullptr) {
        connect(foot->Cancel(), &QPushButton::clicked, this, &QDialog::reject);
    }
    ok_ = foot->Ok();
    return foot;
}

void DigitalCertDialog::InitCertView() {
    for (auto const& [fingerprint, cert] : config_.clientCerts) {
        QWidget* const view = AddCertView(cert);
        if (target_ != nullptr && fingerprint == target_->fingerprint) {
            certBox_->SetSelectedCertWidget(view);
            OnSelectCert(view);
        }
    }
    CertViewPage* const stop = certBox_->TabStop();
    QPushButton* const first = stop != nullptr ? stop->SelectButton() : import_;
    first->setFocus();
}

// The rows come between the buttons above and below them, in the order shown.
void DigitalCertDialog::orderTabs() {
    QWidget* last = delete_;
    for (CertViewPage const* page : certBox_->Pages()) {
        setTabOrder(last, page->SelectButton());
        setTabOrder(page->SelectButton(), page->FoldButton());
        last = page->FoldButton();
    }
}

QWidget* DigitalCertDialog::AddCertView(CertInfo const& cert) {
    auto* form = new CertViewForm(QString::fromStdString(cert.commonName),
                                  QString::fromStdString(cert.issuer), LocalTime(cert.validFrom),
                                  LocalTime(cert.validTo));
    certBox_->addWidget(form->Name(), form);
    certBox_->PageOf(form)->SetLines(LinesOf(cert));
    certs_[form] = &cert;
    delete_->setEnabled(true);
    orderTabs();
    return form;
}

void DigitalCertDialog::OnSelectCert(QWidget* widget) {
    selected_ = widget;
}

void DigitalCertDialog::OnBtnImportClicked() {
    if (config_.clientCerts.size() >= Config::kMaxClientCertNum) {
        prompts_.Error(this, GetTrMsg(MsgCode::UI_TR_CERT_FILE_NUM_LIMIT));
        return;
    }
    FileRequest request;
    request.parent = this;
    request.title = GetTrMsg(MsgCode::UI_INFO_SELECT_PERSONAL_CERTIFICATE);
    request.startPath = QDir::homePath();
    request.filter = GetTrMsg(MsgCode::UI_TR_PERSONAL_CERT_FILE_SUFFIX);
    std::optional<QString> const path = prompts_.ChooseFile(request);
    if (!path) {
        return;
    }
    CertInfo cert;
    std::optional<int> const result = openContainer(cert, *path);
    if (!result) {
        return;
    }
    if (std::optional<QString> const refusal = refusalOf(*result, cert, *path)) {
        bool const costly = *result == utils::kPkcs12TooCostly;
        prompts_.Critical(this, GetTrMsg(costly ? MsgCode::UI_TR_IMPORT : MsgCode::UI_ERROR),
                          *refusal, GetTrMsg(MsgCode::UI_INFO_OK));
        return;
    }
    store(cert);
}

std::optional<int> DigitalCertDialog::openContainer(CertInfo& cert, QString const& path) {
    QPointer<DigitalCertDialog> const self(this);
    bool closed = false;
    QObject life;  // of the connection below
    connect(this, &QDialog::finished, &life, [&closed] { closed = true; });
    auto const gone = [&] { return !self || closed; };
    int result = utils::kPkcs12WrongPin;
    while (result == utils::kPkcs12WrongPin) {
        std::optional<std::string> const pin = InputPincode(path);
        if (gone()) {
            return std::nullopt;
        }
        if (!pin) {
            Log().error("Input pincode error");
            return std::nullopt;
        }
        cert = CertInfo();
        cert.filePath = path.toStdString();
        cert.pin = *pin;
        result = parse(cert);
        if (result == utils::kPkcs12WrongPin && !gone()) {
            prompts_.Error(this, GetTrMsg(MsgCode::UI_TR_WRONG_CERT_PWD));
        }
        if (gone()) {
            return std::nullopt;
        }
    }
    return result;
}

int DigitalCertDialog::parse(CertInfo& cert) {
    QPointer<DigitalCertDialog> const self(this);
    showBusy(true);
    int result = utils::kPkcs12Bad;
    std::unique_ptr<QThread> const worker(
        QThread::create([&] { result = utils::ParsePkcs12Cert(cert, false); }));
    QEventLoop waiting;
    connect(worker.get(), &QThread::finished, &waiting, &QEventLoop::quit);
    worker->start();
    waiting.exec();
    worker->wait();  // the end of the program ends the loop earlier
    if (self) {
        showBusy(false);
    }
    return result;
}

void DigitalCertDialog::showBusy(bool busy) {
    QWidget* const focused = focusWidget();
    busy_->setVisible(busy);
    for (QPushButton* const button : {import_, delete_, ok_}) {
        button->setDisabled(busy);
    }
    delete_->setDisabled(busy || certs_.empty());
    if (!busy && focused != nullptr) {
        import_->setFocus();
    }
}

std::optional<std::string> DigitalCertDialog::InputPincode(QString const& path) {
    SecretRequest request;
    request.parent = this;
    request.title = GetTrMsg(MsgCode::UI_TR_IMPORT);
    request.label = GetTrMsg(MsgCode::UI_TR_PLEASE_INPUT_CERT_PWD);
    request.label2 = QFileInfo(path).fileName();
    request.okButton = GetTrMsg(MsgCode::UI_INFO_OK);
    request.cancelButton = GetTrMsg(MsgCode::UI_INFO_CANCEL);
    request.maxUtf8Length = kMaxPinBytes;
    request.tooLongMessage = GetTrMsg(MsgCode::UI_TR_ERR_PIN_CODE_LENGTH);
    std::optional<SecretAnswer> const answer = prompts_.InputSecret(request);
    return answer ? std::optional(answer->value) : std::nullopt;
}

std::optional<QString> DigitalCertDialog::refusalOf(int result, CertInfo const& cert,
                                                    QString const& path) const {
    if (result != utils::kPkcs12Ok) {
        Log().error("Failed to import cert file {} when reading cert", cert.filePath);
    }
    if (result == utils::kPkcs12TooCostly) {
        return Translate(QT_TRANSLATE_NOOP(
            "ui",
            "This file would take too long to open. Export the certificate again with fewer "
            "than 2,000,000 iterations."));
    }
    if (result != utils::kPkcs12Ok) {
        return GetTrMsg(MsgCode::UI_TR_IMPORT_CERT_FAILED);
    }
    if (cert.isTls && !cert.isRsa) {
        return GetTrMsg(MsgCode::UI_TR_UNSUPPORTED_CERT_TYPE);
    }
    if (target_ != nullptr && cert.isTls != target_->isTls) {
        return GetTrMsg(MsgCode::UI_TR_WRONG_CERT_SSL_TYPE);
    }
    if (config_.IsClientCertExist(cert)) {
        return GetTrMsg(MsgCode::UI_TR_CERT_ALREADY_IMPORT).arg(path);
    }
    return std::nullopt;
}

void DigitalCertDialog::store(CertInfo const& cert) {
    if (!config_.AddClientCert(cert)) {
        prompts_.Error(this, GetTrMsg(MsgCode::UI_TR_FILE_NOT_WRITABLE));
        return;
    }
    QWidget* const view = AddCertView(*config_.GetClientCert(cert.fingerprint));
    config_.Save();
    certBox_->ShowCertWidget(view);
    if (target_ != nullptr && selected_ == nullptr) {
        certBox_->SetSelectedCertWidget(view);
        OnSelectCert(view);
    }
}

void DigitalCertDialog::OnBtnDeleteClicked() {
    auto const chosen = certs_.find(selected_);
    if (chosen == certs_.end()) {
        prompts_.Error(this, GetTrMsg(MsgCode::UI_INFO_PLEASE_SELECT_CERTIFICATE));
        return;
    }
    if (!prompts_.Question(this, GetTrMsg(MsgCode::UI_WARNING), deletionQuestion(*chosen->second),
                           GetTrMsg(MsgCode::UI_INFO_YES), GetTrMsg(MsgCode::UI_INFO_NO),
                           Prompts::Default::kNo)) {
        return;
    }
    Log().info("Delete cert: [{}]", chosen->second->commonName);
    if (!config_.DeleteClientCert(*chosen->second)) {
        prompts_.Error(this, GetTrMsg(MsgCode::SDK_ERR_FAILED_DELETE_FILE));
        return;
    }
    certBox_->deleteWidget(chosen->first);
    certs_.erase(chosen);
    selected_ = nullptr;
    if (certs_.empty()) {
        delete_->setEnabled(false);
        import_->setFocus();
    }
    config_.Save();
}

void DigitalCertDialog::OnBtnOkClicked() {
    if (target_ != nullptr) {
        auto const chosen = certs_.find(selected_);
        *target_ = chosen != certs_.end() ? *chosen->second : CertInfo();
    }
    accept();
}

}  // namespace zorvanelink::ui
