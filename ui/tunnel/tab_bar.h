// A row of text tabs, the active one in the brand colour; arrow keys move between them.
#pragma once

#include <QButtonGroup>
#include <QFrame>
#include <QHBoxLayout>

namespace zorvanelink::ui {

class TabBar : public QFrame {
    Q_OBJECT

  public:
    enum class Kind { kUnderlined, kPlain };

    // `gap` pixels stand between two tabs.
    TabBar(Kind kind, int gap, QWidget* parent = nullptr);

    int AddTab(QString const& text, char const* objectName);
    void SetTabVisible(int index, bool visible);
    bool IsTabVisible(int index) const;
    void SetCurrent(int index);
    int Current() const;

  Q_SIGNALS:
    void CurrentChanged(int index);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QHBoxLayout* row_;
    QButtonGroup* group_;
};

}  // namespace zorvanelink::ui
