// The user's imported certificates: import, delete, and the choice of one. GUI thread.
#pragma once

#include <QLabel>
#include <map>
#include <optional>

#include "ui/cert/cert_view_box.h"
#include "ui/config/config.h"
#include "ui/widgets/prompts.h"
#include "ui/widgets/zvl_dialog.h"

namespace zorvanelink::ui {

// With a target, OK copies the selected certificate into it; without one the dialog only manages
// the store. Import and delete save the configuration.
class DigitalCertDialog : public ZVLDialog {
    Q_OBJECT

  public:
    DigitalCertDialog(CertInfo* target, Config& config, Prompts& prompts,
                      QWidget* parent = nullptr);

  public Q_SLOTS:
    void OnBtnImportClicked();
    void OnBtnDeleteClicked();
    void OnBtnOkClicked();
    void OnSelectCert(QWidget* widget);

  private:
    QWidget* buildHead();
    QWidget* buildFoot();
    void InitCertView();
    QWidget* AddCertView(CertInfo const& cert);
    // The password as a sensitive value; none when the user cancels.
    std::optional<std::string> InputPincode(QString const& path);
    // Asks for the password until it fits; none when the user cancels, here or by closing.
    std::optional<int> openContainer(CertInfo& cert, QString const& path);
    // Opens the container on a thread of its own, while the dialog says so; its key may take long.
    int parse(CertInfo& cert);
    void showBusy(bool busy);
    // None for a readable certificate that may be imported, else what the user is told.
    std::optional<QString> refusalOf(int result, CertInfo const& cert, QString const& path) const;
    void store(CertInfo const& cert);
    void orderTabs();

    CertInfo* const target_;
    Config& config_;
    Prompts& prompts_;
    CertViewBox* certBox_;
    QPushButton* import_ = nullptr;
    QPushButton* delete_ = nullptr;
    QPushButton* ok_ = nullptr;
    QLabel* busy_ = nullptr;
    std::map<QWidget*, CertInfo const*> certs_;  // records of the store, by their view
    QWidget* selected_ = nullptr;
};

}  // namespace zorvanelink::ui
