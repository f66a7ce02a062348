#include "ui/cert/cert_view_box.h"

#include <QKeyEvent>
#include <algorithm>

#include "ui/text/texts.h"

namespace zorvanelink::ui {

QString NoCertificates() {
    return Translate(QT_TRANSLATE_NOOP(
        "ui", "No certificates. Import the .p12 or .pfx file that your administrator gave you."));
}

CertViewBox::CertViewBox(QWidget* parent) : QScrollArea(parent), column_(nullptr), empty_(nullptr) {
    setObjectName(QStringLiteral("cert_view_box_"));
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    auto* content = new QWidget(this);
    content->setObjectName(QStringLiteral("cert_view_content_"));
    column_ = new QVBoxLayout(content);
    column_->setContentsMargins(0, 0, 0, 0);
    column_->setSpacing(0);
    empty_ = new QLabel(NoCertificates(), content);
    empty_->setWordWrap(true);
    empty_->setObjectName(QStringLiteral("empty_label_"));
    empty_->setProperty("role", QStringLiteral("hint"));
    empty_->setAlignment(Qt::AlignCenter);
    column_->addWidget(empty_, 1);
    column_->addStretch();
    setWidget(content);
}

void CertViewBox::addWidget(QString const& title, QWidget* widget) {
    auto* page = new CertViewPage(this->widget());
    page->addWidget(title, widget);
    page->SelectButton()->installEventFilter(this);
    connect(page, &CertViewPage::selected, this, &CertViewBox::onSelectCert);
    column_->insertWidget(static_cast<int>(order_.size()), page);
    page->show();
    pages_[widget] = page;
    order_.push_back(page);
    empty_->hide();
    updateTabStop();
}

void CertViewBox::deleteWidget(QWidget* widget) {
    auto const found = pages_.find(widget);
    if (found == pages_.end()) {
        return;
    }
    CertViewPage* const page = found->second;
    pages_.erase(found);
    order_.erase(std::find(order_.begin(), order_.end(), page));
    if (selected_ == widget) {
        selected_ = nullptr;
    }
    column_->removeWidget(page);
    page->hide();
    page->deleteLater();
    empty_->setVisible(order_.empty());
    updateTabStop();
}

CertViewPage* CertViewBox::PageOf(QWidget* widget) const {
    auto const found = pages_.find(widget);
    return found == pages_.end() ? nullptr : found->second;
}

void CertViewBox::SetSelectedCertWidget(QWidget* widget) {
    if (CertViewPage* const former = PageOf(selected_)) {
        former->SetUnselected();
    }
    CertViewPage* const page = PageOf(widget);
    selected_ = page != nullptr ? widget : nullptr;
    updateTabStop();
    if (page != nullptr) {
        page->SetSelected();
        ensureWidgetVisible(page, 0, 0);
    }
}

void CertViewBox::ShowCertWidget(QWidget* widget) {
    if (CertViewPage* const page = PageOf(widget)) {
        QMetaObject::invokeMethod(
            page, [this, page] { ensureWidgetVisible(page, 0, 0); }, Qt::QueuedConnection);
    }
}

void CertViewBox::onSelectCert(CertViewPage* page) {
    SetSelectedCertWidget(page->Body());
    Q_EMIT SelectCert(page->Body());
}

CertViewPage* CertViewBox::TabStop() const {
    CertViewPage* const selected = PageOf(selected_);
    return selected != nullptr || order_.empty() ? selected : order_.front();
}

void CertViewBox::updateTabStop() {
    CertViewPage const* const stop = TabStop();
    for (CertViewPage* page : order_) {
        page->SetTabStop(page == stop);
    }
}

bool CertViewBox::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto const page = std::find_if(order_.begin(), order_.end(), [watched](auto const* p) {
            return p->SelectButton() == watched;
        });
        int const key = static_cast<QKeyEvent*>(event)->key();
        if (page != order_.end() && moveSelection(*page, key)) {
            return true;
        }
    }
    return QScrollArea::eventFilter(watched, event);
}

bool CertViewBox::moveSelection(CertViewPage const* from, int key) {
    auto const last = static_cast<int>(order_.size()) - 1;
    auto const at =
        static_cast<int>(std::find(order_.begin(), order_.end(), from) - order_.begin());
    int target = at;
    switch (key) {
        case Qt::Key_Up:
            target = qMax(0, at - 1);
            break;
        case Qt::Key_Down:
            target = qMin(last, at + 1);
            break;
        case Qt::Key_Home:
            target = 0;
            break;
        case Qt::Key_End:
            target = last;
            break;
        case Qt::Key_Right:
            order_[static_cast<std::size_t>(at)]->expand();
            return true;
        case Qt::Key_Left:
            order_[static_cast<std::size_t>(at)]->collapse();
            return true;
        default:
            return false;
    }
    CertViewPage* const chosen = order_[static_cast<std::size_t>(target)];
    onSelectCert(chosen);
    chosen->SelectButton()->setFocus(Qt::TabFocusReason);
    return true;
}

}  // namespace zorvanelink::ui
