// A certificate in two lines, wherever certificates are listed. GUI thread.
#pragma once

#include <QPushButton>
#include <QStandardItemModel>
#include <QStyledItemDelegate>

#include "components/cert/cert_info.h"

namespace zorvanelink::ui {

struct CertLines {
    QString name;    // with the marks of one that cannot be used everywhere
    QString detail;  // issuer and end date, as far as they are known

    QString Whole() const;  // for tool tips and questions
};

CertLines LinesOf(CertInfo const& cert);

inline constexpr int kCertLinesHeight = 52;  // pixels, before scaling

// An entry of a list; draws what ItemOf made.
class CertLinesDelegate : public QStyledItemDelegate {
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    static QStandardItem* ItemOf(CertLines const& lines);

    void paint(QPainter* painter, QStyleOptionViewItem const& option,
               QModelIndex const& index) const override;
    QSize sizeHint(QStyleOptionViewItem const& option, QModelIndex const& index) const override;
};

// The same as a button, its icon ahead of them.
class CertLinesButton : public QPushButton {
    Q_OBJECT

  public:
    using QPushButton::QPushButton;

    void SetLines(CertLines const& lines);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    CertLines lines_;
};

}  // namespace zorvanelink::ui
