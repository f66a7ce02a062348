// The certificates that gateways are trusted by: list, import, delete. GUI thread.
#pragma once

#include <QListView>
#include <QStandardItemModel>
#include <optional>

#include "ui/cert/trusted_certs.h"
#include "ui/widgets/prompts.h"
#include "ui/widgets/zvl_dialog.h"

namespace zorvanelink::ui {

// What it does takes effect at once; its button only closes.
class ImportTrustedCertDialog : public ZVLDialog {
    Q_OBJECT

  public:
    explicit ImportTrustedCertDialog(Prompts& prompts, QWidget* parent = nullptr);

  public Q_SLOTS:
    void on_import_button__clicked();
    void on_delete_button__clicked();

  private:
    using Held = TrustedCerts::Held;

    QWidget* buildHead();
    QWidget* buildList();
    void RefreshCertListView();
    // Why the file is not taken beside those already chosen; none when it is.
    std::optional<QString> readCert(QString const& path, std::vector<Held> const& chosen,
                                    Held& read) const;

    Prompts& prompts_;
    QListView* list_;
    QStandardItemModel* names_;
    QLabel* empty_ = nullptr;
    QPushButton* import_ = nullptr;
    QPushButton* delete_ = nullptr;
    std::vector<Held> held_;  // as the list shows them
};

}  // namespace zorvanelink::ui
