#include "ui/cert/cert_lines.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

#include "ui/cert/cert_view_form.h"
#include "ui/text/texts.h"
#include "ui/widgets/elide.h"

namespace zorvanelink::ui {
namespace {

// Pixels, before scaling.
constexpr int kSide = 12;
constexpr int kSmall = 12;  // of the second line
constexpr int kDetailRole = Qt::UserRole;

// "Issuing Authority" of "CN=Issuing Authority,O=Example"; the whole where there is no such part.
QString commonNameOf(QString const& issuer) {
    for (QString const& part : issuer.split(QLatin1Char(','))) {
        if (part.trimmed().startsWith(QLatin1String("CN="))) {
            return part.trimmed().mid(3);
        }
    }
    return issuer;
}

// The ground of what is chosen is too dark for the colour of hints.
void draw(QPainter& painter, QRect const& room, CertLines const& lines, QWidget const* widget,
          bool chosen) {
    QFont small = widget->font();
    small.setPixelSize(kSmall);
    QFontMetrics const name_metrics(widget->font());
    QFontMetrics const detail_metrics(small);
    int const detail_height = lines.detail.isEmpty() ? 0 : detail_metrics.height();
    int const top = room.center().y() - (name_metrics.height() + detail_height) / 2;
    QRect const first(room.left(), top, room.width(), name_metrics.height());
    painter.setFont(widget->font());
    painter.setPen(widget->palette().color(QPalette::WindowText));
    painter.drawText(first, Qt::AlignVCenter,
                     name_metrics.elidedText(lines.name, Qt::ElideRight, room.width()));
    painter.setFont(small);
    if (!chosen) {
        painter.setPen(QApplication::palette().color(QPalette::PlaceholderText));
    }
    painter.drawText(QRect(room.left(), first.bottom() + 1, room.width(), detail_height),
                     Qt::AlignVCenter,
                     detail_metrics.elidedText(lines.detail, Qt::ElideMiddle, room.width()));
}

}  // namespace

QString CertLines::Whole() const {
    return (name + QLatin1Char('\n') + detail).trimmed();
}

CertLines LinesOf(CertInfo const& cert) {
    std::string const& name = cert.certName.empty() ? cert.commonName : cert.certName;
    QStringList detail{
        commonNameOf(CertViewForm::Readable(QString::fromStdString(cert.issuer))).simplified()};
    if (!cert.validTo.empty()) {
        detail.append(Translate(QT_TRANSLATE_NOOP("ui", "Valid until %1"))
                          .arg(LocalTime(cert.validTo).section(QLatin1Char(' '), 0, 0)));
    }
    detail.removeAll(QString());
    return {ValidityMark(cert) + (cert.isTls ? QString() : QStringLiteral("[GMSSL] ")) +
                CertViewForm::Readable(QString::fromStdString(name)).simplified(),
            detail.join(QStringLiteral(" \u00B7 "))};
}

QStandardItem* CertLinesDelegate::ItemOf(CertLines const& lines) {
    auto* item = new QStandardItem(lines.name);
    item->setEditable(false);
    item->setData(lines.detail, kDetailRole);
    item->setAccessibleDescription(lines.detail);
    item->setToolTip(PlainToolTip(lines.Whole()));
    return item;
}

void CertLinesDelegate::paint(QPainter* painter, QStyleOptionViewItem const& option,
                              QModelIndex const& index) const {
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    ground.text.clear();
    option.widget->style()->drawControl(QStyle::CE_ItemViewItem, &ground, painter, option.widget);
    painter->save();
    draw(*painter, option.rect.adjusted(kSide, 0, -kSide, 0),
         {index.data().toString(), index.data(kDetailRole).toString()}, option.widget,
         option.state.testFlag(QStyle::State_Selected));
    painter->restore();
}

QSize CertLinesDelegate::sizeHint(QStyleOptionViewItem const&, QModelIndex const&) const {
    return {0, kCertLinesHeight};
}

void CertLinesButton::SetLines(CertLines const& lines) {
    lines_ = lines;
    setAccessibleName(lines.name);
    setAccessibleDescription(lines.detail);
    setToolTip(PlainToolTip(lines.Whole()));
    update();
}

void CertLinesButton::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);
    QRect const icon(QPoint(kSide, (height() - iconSize().height()) / 2), iconSize());
    this->icon().paint(&painter, icon);
    draw(painter, rect().adjusted(icon.right() + kSide, 0, 0, 0), lines_, this, isChecked());
}

}  // namespace zorvanelink::ui
