// The heads of a route table's columns.
#pragma once

#include <QColor>
#include <QHeaderView>

namespace zorvanelink::ui {

// One tab stop: arrow keys move between the columns, Space and Return click the one with the ring.
class RouteHead : public QHeaderView {
    Q_OBJECT
    Q_PROPERTY(QColor ring MEMBER ring_)  // set by the stylesheet: "qproperty-ring: ..."

  public:
    explicit RouteHead(QWidget* parent);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintSection(QPainter* painter, QRect const& rect, int logicalIndex) const override;

  private:
    void moveTo(int column);

    int column_ = 0;
    QColor ring_;
};

}  // namespace zorvanelink::ui
