// The choice among the kinds of TLS certificate: the system's, a USB key's, an imported file.
// GUI thread.
#pragma once

#include <QLabel>
#include <QListView>
#include <QRadioButton>
#include <QStackedWidget>
#include <QStandardItemModel>
#include <vector>

#include "ui/config/config.h"
#include "ui/widgets/prompts.h"
#include "ui/widgets/zvl_dialog.h"

namespace zorvanelink::ui {

// Kinds of certificate, as CertInfo::certType has them.
inline constexpr std::uint16_t kCertTypeSystem = 1;
inline constexpr std::uint16_t kCertTypeUsbKey = 2;
inline constexpr std::uint16_t kCertTypeFile = 3;

// The first two kinds are listed by the service, files by the store. OK copies the chosen record
// into the target and sets its kind. Asks for the service's list when it is first shown.
class TLSCertDialog : public ZVLDialog {
    Q_OBJECT

  public:
    TLSCertDialog(CertInfo& target, Config& config, Prompts& prompts, QWidget* parent = nullptr);

    void EnumCerts() {}  // the service enumerates

  public Q_SLOTS:
    void on_sys_cert_radioButton__clicked();
    void on_usb_cert_radioButton__clicked();
    void on_soft_cert_radioButton__clicked();
    void on_refresh_button__clicked();
    void on_ok_button__clicked();
    void onRecvCertInfo(std::vector<zorvanelink::CertInfo> const& list);
    // Takes the certificate of that kind and name, as if the user had chosen it.
    void AutoSetTLSCertInfo(zorvanelink::CertInfo const& wanted);

  Q_SIGNALS:
    void SendCertRequest(bool gm);
    void AutoCertErrorExitSignal();  // no match for AutoSetTLSCertInfo

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    // One list, and the records behind it.
    struct Source {
        QListView* view = nullptr;
        QStandardItemModel* names = nullptr;
        QLabel* empty = nullptr;  // what stands in the place of no entries
        std::vector<CertInfo> certs;
    };

    QWidget* buildKinds();
    QWidget* buildPage(Source& source, char const* viewName, QPushButton* action);
    QRadioButton* addKind(QLayout& row, char const* name, QString const& text);
    void fill(Source& source, std::vector<CertInfo> certs);
    void chooseKindOfTarget();
    void fillFromStore();
    void manageStore();
    void showPage(Source const& source);
    std::uint16_t checkedKind() const;
    Source& sourceOf(std::uint16_t kind);
    void take(CertInfo const& cert, std::uint16_t kind);

    CertInfo& target_;
    Config& config_;
    Prompts& prompts_;
    QRadioButton* sys_ = nullptr;
    QRadioButton* usb_ = nullptr;
    QRadioButton* soft_ = nullptr;
    QStackedWidget* pages_;
    Source service_;
    Source store_;
    bool opened_ = false;
};

}  // namespace zorvanelink::ui
