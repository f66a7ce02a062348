// One row of the list of certificates: a head to select by and a body that folds. GUI thread.
#pragma once

#include <QFrame>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/cert/cert_lines.h"

namespace zorvanelink::ui {

class CertViewPage : public QFrame {
    Q_OBJECT

  public:
    explicit CertViewPage(QWidget* parent = nullptr);

    // Gives the page its head and, folded, its body; the page owns the widget from then on.
    void addWidget(QString const& title, QWidget* widget);
    // What the head shows instead of the title alone.
    void SetLines(CertLines const& lines);
    QWidget* Body() const { return body_; }
    QPushButton* SelectButton() const { return pushButtonSelect; }
    QToolButton* FoldButton() const { return btnFold_; }

    void expand();
    void collapse();
    bool IsExpanded() const { return expanded_; }
    bool IsSelected() const { return pushButtonSelect->isChecked(); }
    // Of all rows only one is in the order of Tab.
    void SetTabStop(bool stop);

  public Q_SLOTS:
    void SetSelected();
    void SetUnselected();
    void onClickBtnFold();
    void on_pushButtonSelect_clicked();

  Q_SIGNALS:
    void selected(CertViewPage* page);

  protected:
    void mousePressEvent(QMouseEvent* event) override;

  private:
    void setExpanded(bool expanded);
    void mark(bool chosen);

    QVBoxLayout* column_;
    CertLinesButton* pushButtonSelect;
    QToolButton* btnFold_;
    QWidget* body_ = nullptr;
    bool expanded_ = false;
};

}  // namespace zorvanelink::ui
