#include "tools/gallery/contrast.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QHash>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QTextDocumentFragment>
#include <cmath>

namespace zorvanelink::gallery {
namespace {

constexpr int kScale = 3;  // of the picture: letters get pixels of their full colour
constexpr double kTextContrast = 4.5;
constexpr double kBorderContrast = 3.0;

double linear(int channel) {
    double const value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(QRgb color) {
    return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) +
           0.0722 * linear(qBlue(color));
}

// Of what stands out most in that part of the picture against its commonest colour.
double contrastIn(QImage const& picture, QRect const& part) {
    QRect const area = QRect(part.topLeft() * kScale, part.size() * kScale) & picture.rect();
    QHash<QRgb, int> counts;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            ++counts[picture.pixel(x, y)];
        }
    }
    QRgb ground = 0;
    for (auto color = counts.cbegin(); color != counts.cend(); ++color) {
        ground = color.value() > counts.value(ground) ? color.key() : ground;
    }
    double const below = luminance(ground) + 0.05;
    double highest = 1;
    for (auto color = counts.cbegin(); color != counts.cend(); ++color) {
        double const above = luminance(color.key()) + 0.05;
        highest = qMax(highest, qMax(above, below) / qMin(above, below));
    }
    return highest;
}

QRect indicatorOf(QAbstractButton const& button) {
    QStyleOptionButton option;
    option.initFrom(&button);
    bool const radio = qobject_cast<QRadioButton const*>(&button) != nullptr;
    return button.style()->subElementRect(
        radio ? QStyle::SE_RadioButtonIndicator : QStyle::SE_CheckBoxIndicator, &option, &button);
}

bool isBox(QWidget const& widget) {
    return qobject_cast<QCheckBox const*>(&widget) != nullptr ||
           qobject_cast<QRadioButton const*>(&widget) != nullptr;
}

// Where the text of a widget stands; empty for one without a text to be read.
QRect textPart(QWidget const& widget) {
    constexpr int kEdge = 4;
    if (auto const* label = qobject_cast<QLabel const*>(&widget)) {
        bool const text = !QTextDocumentFragment::fromHtml(label->text()).toPlainText().isEmpty();
        return text ? label->contentsRect() : QRect();
    }
    if (auto const* edit = qobject_cast<QLineEdit const*>(&widget)) {
        bool const text = !edit->text().isEmpty() || !edit->placeholderText().isEmpty();
        return text ? edit->rect().adjusted(kEdge, kEdge, -kEdge, -kEdge) : QRect();
    }
    auto const* const button = qobject_cast<QAbstractButton const*>(&widget);
    if (button == nullptr || !button->isEnabled() || button->text().isEmpty()) {
        return {};
    }
    QRect part = button->rect().adjusted(kEdge, kEdge, -kEdge, -kEdge);
    if (isBox(widget)) {
        part.setLeft(indicatorOf(*button).right() + kEdge);
    }
    return part;
}

// A strip across the left border of a field or of a box without a mark.
QRect borderPart(QWidget const& widget) {
    constexpr int kLength = 4;  // less than the padding, so that no text stands in it
    if (!widget.isEnabled() || widget.hasFocus()) {
        return {};  // the ring is looked at by its own test
    }
    if (qobject_cast<QLineEdit const*>(&widget) != nullptr) {
        return {0, widget.height() / 2, kLength, 2};
    }
    auto const* const button = qobject_cast<QAbstractButton const*>(&widget);
    if (button == nullptr || !isBox(widget) || button->isChecked()) {
        return {};
    }
    QRect const indicator = indicatorOf(*button);
    return {indicator.left(), indicator.center().y(), kLength, 2};
}

bool isCovered(QWidget& root, QPoint at, QWidget const& widget) {
    QWidget const* const top = root.childAt(at);
    return top != nullptr && top != &widget && !widget.isAncestorOf(top) &&
           !top->isAncestorOf(&widget);
}

}  // namespace

std::vector<std::string> FaintThings(QWidget& root) {
    QImage picture(root.size() * kScale, QImage::Format_RGB32);
    picture.setDevicePixelRatio(kScale);
    picture.fill(Qt::white);
    root.render(&picture);
    std::vector<std::string> faint;
    for (QWidget const* widget : root.findChildren<QWidget*>()) {
        if (!widget->isVisible()) {
            continue;
        }
        auto const measure = [&](QRect const& part, double least, char const* what) {
            bool const scrolled_away = !widget->visibleRegion().boundingRect().contains(part);
            QRect const there(widget->mapTo(&root, part.topLeft()), part.size());
            if (part.isEmpty() || scrolled_away || isCovered(root, there.center(), *widget)) {
                return;
            }
            double const contrast = contrastIn(picture, there);
            if (contrast < least) {
                faint.push_back(QStringLiteral("%1 of %2 %3: %4 \"%5\"")
                                    .arg(QLatin1String(what),
                                         QLatin1String(widget->metaObject()->className()),
                                         widget->objectName())
                                    .arg(contrast)
                                    .arg(widget->property("text").toString())
                                    .toStdString());
            }
        };
        measure(textPart(*widget), kTextContrast, "text");
        measure(borderPart(*widget), kBorderContrast, "border");
    }
    return faint;
}

}  // namespace zorvanelink::gallery
