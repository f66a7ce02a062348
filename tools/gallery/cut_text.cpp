#include "tools/gallery/cut_text.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QStyleOptionButton>
#include <QStyleOptionFrame>
#include <QTextDocumentFragment>
#include <QTextEdit>
#include <QToolButton>
#include <cmath>

#include "tools/gallery/painted_text.h"

namespace zorvanelink::gallery {
namespace {

constexpr QChar kEllipsis(0x2026);
constexpr int kBlank = 2;  // pixels at the end of a text

bool shortenedOnPurpose(QString const& shown, QWidget const& widget) {
    return shown.contains(kEllipsis) && !widget.toolTip().isEmpty();
}

bool fits(QSize need, QSize room) {
    return need.width() <= room.width() && need.height() <= room.height();
}

bool labelFits(QLabel const& label) {
    if (label.text().isEmpty() || shortenedOnPurpose(label.text(), label)) {
        return true;
    }
    QRect const room = label.contentsRect();
    int const flags = label.wordWrap() ? Qt::TextWordWrap : 0;
    // The lines' own height: a label may be lower than font height plus leading.
    QString const text = Qt::mightBeRichText(label.text())
                             ? QTextDocumentFragment::fromHtml(label.text()).toPlainText()
                             : label.text();
    QRect const need =
        label.fontMetrics().boundingRect(QRect(0, 0, room.width(), 10000), flags, text);
    return fits(need.size(), room.size());
}

// The rectangle that the style gives the text of the button.
QRect textRoom(QAbstractButton const& button) {
    QStyleOptionButton option;
    option.initFrom(&button);
    option.text = button.text();
    option.icon = button.icon();
    option.iconSize = button.iconSize();
    QStyle const& style = *button.style();
    if (button.inherits("QCheckBox")) {
        return style.subElementRect(QStyle::SE_CheckBoxContents, &option, &button);
    }
    if (button.inherits("QRadioButton")) {
        return style.subElementRect(QStyle::SE_RadioButtonContents, &option, &button);
    }
    return style.subElementRect(QStyle::SE_PushButtonContents, &option, &button);
}

bool buttonFits(QAbstractButton const& button) {
    QString const text = button.text();
    if (text.isEmpty() || shortenedOnPurpose(text, button) || button.inherits("QToolButton")) {
        return true;
    }
    int const icon = button.icon().isNull() || !button.inherits("QPushButton")
                         ? 0
                         : button.iconSize().width() + 4;
    QSize const need = button.fontMetrics().size(Qt::TextShowMnemonic, text);
    return fits(need + QSize(icon, 0), textRoom(button).size());
}

bool placeholderFits(QLineEdit const& edit) {
    QStyleOptionFrame option;
    option.initFrom(&edit);
    QRect const room = edit.style()->subElementRect(QStyle::SE_LineEditContents, &option, &edit);
    constexpr int kOwnMargin = 2;  // that a line edit keeps at either side
    return edit.fontMetrics().horizontalAdvance(edit.placeholderText()) <=
           room.width() - 2 * kOwnMargin;
}

bool documentFits(QTextEdit const& edit) {
    bool const scrolls =
        edit.verticalScrollBar()->maximum() == 0 || edit.verticalScrollBar()->isVisibleTo(&edit);
    return scrolls && std::floor(edit.document()->idealWidth()) <= edit.viewport()->width();
}

bool textFits(QWidget const& widget) {
    if (auto const* label = qobject_cast<QLabel const*>(&widget)) {
        return labelFits(*label);
    }
    if (auto const* button = qobject_cast<QAbstractButton const*>(&widget)) {
        return buttonFits(*button);
    }
    if (auto const* edit = qobject_cast<QLineEdit const*>(&widget)) {
        return placeholderFits(*edit);
    }
    auto const* document = qobject_cast<QTextEdit const*>(&widget);
    return document == nullptr || documentFits(*document);
}

std::string describe(QWidget const& widget) {
    QString const text = widget.property("text").toString() +
                         widget.property("placeholderText").toString() +
                         widget.property("plainText").toString();
    return QStringLiteral("%1 %2 (%3 x %4): %5")
        .arg(QString::fromLatin1(widget.metaObject()->className()), widget.objectName())
        .arg(widget.width())
        .arg(widget.height())
        .arg(text)
        .toStdString();
}

}  // namespace

std::vector<std::string> CutTexts(QWidget& root) {
    std::vector<std::string> cut;
    for (QWidget const* widget : root.findChildren<QWidget*>()) {
        if (widget->isVisible() && !textFits(*widget)) {
            cut.push_back(describe(*widget));
        }
    }
    for (PaintedText const& text : PaintedTexts(root)) {
        if (text.clipped > kBlank && qobject_cast<QLineEdit*>(text.widget) == nullptr) {
            cut.push_back(describe(*text.widget) + text.text.toStdString());
        }
    }
    return cut;
}

}  // namespace zorvanelink::gallery
