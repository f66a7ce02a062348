// The row of buttons at the end of a dialog.
#pragma once

#include <QWidget>

#include "ui/widgets/push_button_ext.h"

namespace zorvanelink::ui {

// OK at the right, the default button, and Cancel before it. What they do is connected by the
// dialog.
class DialogFoot : public QWidget {
    Q_OBJECT

  public:
    // The object names of the two. Without the second there is no Cancel.
    DialogFoot(QWidget* parent, char const* okName, char const* cancelName);

    // One more, between the two.
    QPushButtonExt* AddButton(QString const& text, char const* name);

    // What stands at the left end.
    void SetLead(QWidget* lead);

    QPushButtonExt* Ok() const { return ok_; }
    QPushButtonExt* Cancel() const { return cancel_; }

  private:
    QPushButtonExt* cancel_ = nullptr;
    QPushButtonExt* ok_ = nullptr;
};

}  // namespace zorvanelink::ui
