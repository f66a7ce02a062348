// The heads of a route table's columns.
#pragma once

#include <QColor>
#include <QHeaderView>

namespace zorvanelink::ui {

// One tab stop: arrow keys move between the columns, Space and Return click the one with the ring.
class RouteHead : public QHeaderView {
    Q_OBJECT
    Q_PROPERTY(QColor outer MEMBER outer_)  // of the focus ring, by the stylesheet
    Q_PROPERTY(QColor inner MEMBER inner_)

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
    QColor outer_;
    QColor inner_;
};

}  // namespace zorvanelink::ui
