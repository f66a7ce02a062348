#include "ui/widgets/focus_ring.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QRadioButton>

namespace zorvanelink::ui {
namespace {

// Pixels, before scaling.
constexpr int kOuter = 2;
constexpr int kInner = 1;
constexpr int kRadius = 6;
constexpr int kBoxRoom = 3;

bool isField(QWidget const* widget) {
    return qobject_cast<QLineEdit const*>(widget) != nullptr;
}

bool isRinged(QWidget const* widget) {
    bool const scrolls = qobject_cast<QAbstractScrollArea const*>(widget) != nullptr &&
                         qobject_cast<QListWidget const*>(widget) == nullptr &&
                         qobject_cast<QHeaderView const*>(widget) == nullptr;
    return scrolls || isField(widget) || qobject_cast<QAbstractButton const*>(widget) != nullptr ||
           qobject_cast<QComboBox const*>(widget) != nullptr ||
           qobject_cast<QLabel const*>(widget) != nullptr;  // one with a link
}

bool isViewport(QWidget const* widget) {
    auto const* const area = qobject_cast<QAbstractScrollArea const*>(widget->parentWidget());
    return area != nullptr && area->viewport() == widget;
}

// What the ring is drawn in: the window, or what scrolls inside it and takes the ring along.
QWidget* groundOf(QWidget const& control) {
    QWidget* ground = control.parentWidget();
    while (ground != nullptr && !ground->isWindow() && !isViewport(ground) &&
           !isViewport(ground->parentWidget())) {
        ground = ground->parentWidget();
    }
    return ground;
}

}  // namespace

FocusRing::FocusRing(QWidget& control) : QWidget(groundOf(control)), control_(&control) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    for (QWidget* moved = &control; moved != nullptr && moved != parentWidget();
         moved = moved->parentWidget()) {
        moved->installEventFilter(this);
    }
    place();
}

void FocusRing::Install() {
    static QPointer<QObject> installed;  // goes with the application
    if (installed != nullptr) {
        return;
    }
    installed = new QObject(qApp);
    connect(qApp, &QApplication::focusChanged, installed,
            [ring = QPointer<FocusRing>()](QWidget* /*left*/, QWidget* reached) mutable {
                delete ring;
                bool const by_mouse = QGuiApplication::mouseButtons() != Qt::NoButton;
                if (reached != nullptr && !reached->isWindow() && isRinged(reached) &&
                    (!by_mouse || isField(reached))) {
                    ring = new FocusRing(*reached);
                }
            });
}

bool FocusRing::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Move:
        case QEvent::Resize:
        case QEvent::Show:
        case QEvent::Hide:
            place();
            break;
        default:
            break;
    }
    return QWidget::eventFilter(watched, event);
}

void FocusRing::place() {
    if (control_ == nullptr) {
        return;
    }
    // Nothing stands between a box and the edge of its widget.
    bool const box = qobject_cast<QCheckBox*>(control_.data()) != nullptr ||
                     qobject_cast<QRadioButton*>(control_.data()) != nullptr;
    int const left = kOuter + (box ? kBoxRoom : 0);
    QRect const around = QRect(control_->mapTo(parentWidget(), QPoint()), control_->size())
                             .adjusted(-left, -kOuter, kOuter, kOuter);
    setGeometry(around.intersected(parentWidget()->rect()));
    setVisible(control_->isVisibleTo(parentWidget()));
    raise();
}

void FocusRing::paintEvent(QPaintEvent*) {
    if (outer_.isValid()) {
        QPainter painter(this);
        Paint(painter, rect(), outer_, inner_);
    }
}

void FocusRing::Paint(QPainter& painter, QRectF const& around, QColor const& outer,
                      QColor const& inner) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    auto const draw = [&](QColor const& color, int width, qreal inset) {
        inset += width / 2.0;
        painter.setPen(QPen(color, width));
        painter.drawRoundedRect(around.adjusted(inset, inset, -inset, -inset), kRadius - inset,
                                kRadius - inset);
    };
    draw(outer, kOuter, 0);
    draw(inner, kInner, kOuter);
}

}  // namespace zorvanelink::ui
