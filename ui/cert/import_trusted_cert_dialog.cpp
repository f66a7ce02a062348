#include "ui/cert/import_trusted_cert_dialog.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QPointer>
#include <algorithm>

#include "components/logger/logger.h"
#include "ui/cert/cert_lines.h"
#include "ui/cert/trust_question.h"
#include "ui/text/texts.h"
#include "ui/widgets/automation_hooks.h"
#include "ui/widgets/dialog_foot.h"
#include "ui/widgets/elide.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;
using components::utils::ServerCertResult;

// Pixels, before scaling.
constexpr int kWidth = 520;
constexpr int kBodyHeight = 372;

QString wholeOf(components::utils::ServerCert const& cert) {
    return LinesOf(cert.details).Whole() + QStringLiteral("\nSHA-256 ") +
           QString::fromStdString(cert.sha256);
}

}  // namespace

ImportTrustedCertDialog::ImportTrustedCertDialog(Prompts& prompts, QWidget* parent)
    : ZVLDialog(parent),
      prompts_(prompts),
      list_(new QListView(Body())),
      names_(new QStandardItemModel(list_)) {
    setObjectName(QStringLiteral("import_trusted_cert_dialog_"));
    setWindowTitle(GetTrMsg(MsgCode::UI_TR_IMPORT_TRUSTED_CERT));
    auto* const column = new QVBoxLayout(Body());
    column->setContentsMargins(20, 16, 20, 4);
    column->setSpacing(12);
    auto* const heading = new QLabel(GetCaption(MsgCode::UI_TR_TRUSTED_CERT_LIST), Body());
    heading->setProperty("role", QStringLiteral("label"));
    column->addWidget(buildHead());
    column->addWidget(heading);
    column->addWidget(buildList(), 1);
    list_->setAccessibleName(heading->text());
    auto* const foot = new DialogFoot(Panel(), "ok_button_", nullptr);
    connect(foot->Ok(), &QPushButton::clicked, this, &QDialog::accept);
    SetFoot(foot);
    Body()->setFixedHeight(kBodyHeight);
    setFixedWidth(kWidth);
    RefreshCertListView();
    QWidget* const first = held_.empty() ? static_cast<QWidget*>(import_) : list_;
    first->setFocus();
}

QWidget* ImportTrustedCertDialog::buildHead() {
    auto* const bar = new QWidget(Body());
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    import_ = new QPushButtonExt(GetTrMsg(MsgCode::UI_TR_IMPORT), bar);
    import_->setObjectName(QStringLiteral("import_button_"));
    import_->setProperty("outline", true);
    delete_ = new QPushButtonExt(GetTrMsg(MsgCode::UI_TR_DELETE), bar);
    delete_->setObjectName(QStringLiteral("delete_button_"));
    row->addWidget(import_);
    row->addWidget(delete_);
    row->addStretch();
    connect(import_, &QPushButton::clicked, this,
            &ImportTrustedCertDialog::on_import_button__clicked);
    connect(delete_, &QPushButton::clicked, this,
            &ImportTrustedCertDialog::on_delete_button__clicked);
    return bar;
}

QWidget* ImportTrustedCertDialog::buildList() {
    list_->setObjectName(QStringLiteral("trusted_cert_list_"));
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setItemDelegate(new CertLinesDelegate(list_));
    list_->setModel(names_);
    empty_ = new QLabel(
        Translate(QT_TRANSLATE_NOOP("ui",
                                    "No trusted certificates. Import the CA certificate that your "
                                    "administrator gave you.")),
        list_);
    empty_->setProperty("role", QStringLiteral("hint"));
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setWordWrap(true);
    (new QVBoxLayout(list_))->addWidget(empty_);
    return list_;
}

void ImportTrustedCertDialog::RefreshCertListView() {
    held_ = TrustedCerts::List();
    Log().info("Try to refresh cert list, now count {}", held_.size());
    names_->clear();
    for (Held const& one : held_) {
        QStandardItem* const item = CertLinesDelegate::ItemOf(LinesOf(one.cert.details));
        item->setToolTip(PlainToolTip(wholeOf(one.cert)));
        names_->appendRow(item);
    }
    empty_->setVisible(held_.empty());
    delete_->setDisabled(held_.empty());
}

void ImportTrustedCertDialog::on_import_button__clicked() {
    FileRequest request;
    request.mode = FileRequest::Mode::kOpenMany;
    request.parent = this;
    request.title = GetTrMsg(MsgCode::UI_INFO_SELECT_CERTIFICATE);
    request.startPath = QDir::currentPath();
    request.filter = GetTrMsg(MsgCode::UI_TR_CERT_FILE_SUFFIX);
    std::vector<QString> const paths = prompts_.ChooseFiles(request);
    if (paths.empty()) {
        return;
    }
    if (paths.size() + TrustedCerts::Count() > TrustedCerts::kMaxCertNum) {
        Log().error("over max number {}", TrustedCerts::kMaxCertNum);
        prompts_.Error(this, GetTrMsg(MsgCode::UI_TR_CERT_FILE_NUM_LIMIT));
        return;
    }
    QPointer<ImportTrustedCertDialog> const self(this);
    RefreshCertListView();
    std::vector<Held> chosen;
    for (QString const& path : paths) {
        Held read;
        if (std::optional<QString> const refusal = readCert(path, chosen, read)) {
            prompts_.Critical(this, windowTitle(), *refusal, GetTrMsg(MsgCode::UI_INFO_OK));
        } else {
            chosen.push_back(std::move(read));
        }
        if (!self) {
            return;
        }
    }
    bool const asked = !automationHooks().setResult;  // a machine is not asked
    if (!chosen.empty() && (!asked || TrustQuestion(chosen, this).exec() == QDialog::Accepted) &&
        self) {
        bool stored = true;
        for (Held const& one : chosen) {
            stored &= TrustedCerts::Store(one);
        }
        RefreshCertListView();
        if (!stored) {
            prompts_.Error(this, GetTrMsg(MsgCode::UI_TR_FILE_NOT_WRITABLE));
        }
    }
}

std::optional<QString> ImportTrustedCertDialog::readCert(QString const& path,
                                                         std::vector<Held> const& chosen,
                                                         Held& read) const {
    ServerCertResult const result = TrustedCerts::ReadCertFile(path, read);
    if (result != ServerCertResult::kOk) {
        Log().error("Failed to read subject from {} and skip it", path.toStdString());
    }
    switch (result) {
        case ServerCertResult::kNotOpened:
            Log().debug("Failed to open {}", path.toStdString());
            return GetTrMsg(MsgCode::UI_TR_FILE_NOT_READABLE);
        case ServerCertResult::kPrivateKey:
            return Translate(
                       QT_TRANSLATE_NOOP("ui",
                                         "%1 holds a private key and was not imported. Ask your "
                                         "administrator for the certificate alone."))
                .arg(QFileInfo(path).fileName());
        case ServerCertResult::kBad:
            return GetTrMsg(MsgCode::UI_TR_IMPORT_CERT_FAILED);
        case ServerCertResult::kOk:
            break;
    }
    auto const same = [&](Held const& one) { return one.cert.subject == read.cert.subject; };
    bool const known = std::any_of(held_.begin(), held_.end(), same) ||
                       std::any_of(chosen.begin(), chosen.end(), same);
    return known ? std::optional(GetTrMsg(MsgCode::UI_TR_CERT_ALREADY_IMPORT).arg(path))
                 : std::nullopt;
}

void ImportTrustedCertDialog::on_delete_button__clicked() {
    int const row = list_->currentIndex().row();
    if (row < 0) {
        prompts_.Error(this, GetTrMsg(MsgCode::UI_INFO_PLEASE_SELECT_CERTIFICATE));
        return;
    }
    QPointer<ImportTrustedCertDialog> const self(this);
    components::utils::ServerCert const chosen = held_[static_cast<std::size_t>(row)].cert;
    bool const sure = prompts_.Question(
        this, windowTitle(),
        GetTrMsg(MsgCode::UI_TR_SURE_TO_DELETE_CERT) + QLatin1String("#@@#") + wholeOf(chosen),
        GetTrMsg(MsgCode::UI_INFO_YES), GetTrMsg(MsgCode::UI_INFO_NO), Prompts::Default::kNo);
    if (!sure || !self) {
        return;
    }
    if (!TrustedCerts::Remove(chosen)) {
        prompts_.Error(this, GetTrMsg(MsgCode::SDK_ERR_FAILED_DELETE_FILE));
    }
    if (self) {
        RefreshCertListView();
    }
}

}  // namespace zorvanelink::ui
