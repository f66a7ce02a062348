// The list of certificates: rows that fold, one of them selected. GUI thread.
#pragma once

#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>
#include <map>
#include <vector>

#include "ui/cert/cert_view_page.h"

namespace zorvanelink::ui {

// What an empty list of imported certificates says.
QString NoCertificates();

// Up, Down, Home and End move the selection; Right unfolds a row and Left folds it.
class CertViewBox : public QScrollArea {
    Q_OBJECT

  public:
    explicit CertViewBox(QWidget* parent = nullptr);

    // Appends a row with that title; the box owns the widget from then on.
    void addWidget(QString const& title, QWidget* widget);
    // Removes the row and the widget; a selection that goes with it leaves nothing selected.
    void deleteWidget(QWidget* widget);
    // Marks the row and brings it into view, without a signal; null clears the selection.
    void SetSelectedCertWidget(QWidget* widget);
    // Brings the row into view once the layout has settled.
    void ShowCertWidget(QWidget* widget);

    QWidget* SelectedCertWidget() const { return selected_; }
    // Null for a widget without a row.
    CertViewPage* PageOf(QWidget* widget) const;
    // The row that Tab reaches: the selected one, else the first; null without rows.
    CertViewPage* TabStop() const;
    // In the order shown.
    std::vector<CertViewPage*> const& Pages() const { return order_; }

  public Q_SLOTS:
    void onSelectCert(CertViewPage* page);

  Q_SIGNALS:
    void SelectCert(QWidget* widget);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool moveSelection(CertViewPage const* from, int key);
    void updateTabStop();

    std::map<QWidget*, CertViewPage*> pages_;
    std::vector<CertViewPage*> order_;
    QWidget* selected_ = nullptr;
    QVBoxLayout* column_;
    QLabel* empty_;
};

}  // namespace zorvanelink::ui
