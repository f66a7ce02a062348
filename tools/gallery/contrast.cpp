#include "tools/gallery/contrast.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QHash>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QToolButton>
#include <cmath>

#include "tools/gallery/painted_text.h"

namespace zorvanelink::gallery {
namespace {

constexpr double kTextContrast = 4.5;
constexpr double kShapeContrast = 3.0;

double linear(int channel) {
    double const value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(QRgb color) {
    return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) +
           0.0722 * linear(qBlue(color));
}

double contrast(QRgb one, QRgb other) {
    if (one == other) {
        return 1;
    }
    auto const [low, high] = std::minmax({luminance(one), luminance(other)});
    return (high + 0.05) / (low + 0.05);
}

// `scale` above 1: lines get pixels of their full colour.
QImage pictureOf(QWidget& window, QRect const& part, int scale = 1) {
    QImage picture(part.size() * scale, QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::white);
    window.render(&picture, {}, QRegion(part));
    return picture;
}

QHash<QRgb, int> colorsIn(QImage const& picture, QRegion const& part) {
    QHash<QRgb, int> counts;
    for (QRect const& area : part& picture.rect()) {
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x) {
                ++counts[picture.pixel(x, y)];
            }
        }
    }
    return counts;
}

// The commonest colour: letters cover less of their lines than what they stand on.
QRgb groundIn(QImage const& picture, QRegion const& part) {
    QHash<QRgb, int> const counts = colorsIn(picture, part);
    QRgb ground = 0;
    int most = 0;
    for (auto color = counts.cbegin(); color != counts.cend(); ++color) {
        if (color.value() > most) {
            most = color.value();
            ground = color.key();
        }
    }
    return ground;
}

QRgb blended(QColor const& color, QRgb ground) {
    auto const mix = [&](int over, int under) {
        return static_cast<int>(std::lround(under + (over - under) * color.alphaF()));
    };
    return qRgb(mix(color.red(), qRed(ground)), mix(color.green(), qGreen(ground)),
                mix(color.blue(), qBlue(ground)));
}

bool isBox(QWidget const& widget) {
    return qobject_cast<QCheckBox const*>(&widget) != nullptr ||
           qobject_cast<QRadioButton const*>(&widget) != nullptr;
}

// What nobody can use need not be read.
bool isInactive(PaintedText const& text, QWidget const& window) {
    if (auto const* const menu = qobject_cast<QMenu const*>(text.widget)) {
        QAction const* const entry =
            menu->actionAt(menu->mapFrom(&window, text.where.boundingRect().center()));
        return entry != nullptr && !entry->isEnabled();
    }
    return !text.widget->isEnabled() && !isBox(*text.widget) &&
           qobject_cast<QAbstractButton const*>(text.widget) != nullptr;
}

QRect indicatorOf(QAbstractButton const& button) {
    QStyleOptionButton option;
    option.initFrom(&button);
    bool const radio = qobject_cast<QRadioButton const*>(&button) != nullptr;
    return button.style()->subElementRect(
        radio ? QStyle::SE_RadioButtonIndicator : QStyle::SE_CheckBoxIndicator, &option, &button);
}

// A strip across the left border of a field or of a box without a mark.
QRect borderPart(QWidget const& widget) {
    constexpr int kLength = 4;  // less than the padding, so that no text stands in it
    if (!widget.isEnabled() || widget.hasFocus()) {
        return {};
    }
    if (qobject_cast<QLineEdit const*>(&widget) != nullptr ||
        qobject_cast<QComboBox const*>(&widget) != nullptr) {
        return {0, widget.height() / 2, kLength, 2};
    }
    auto const* const button = qobject_cast<QAbstractButton const*>(&widget);
    if (button == nullptr || !isBox(widget) || button->isChecked()) {
        return {};
    }
    QRect const indicator = indicatorOf(*button);
    return {indicator.left(), indicator.center().y(), kLength, 2};
}

bool isCovered(QWidget const& window, QPoint at, QWidget const& widget) {
    QWidget const* const top = window.childAt(at);
    return top != nullptr && top != &widget && !widget.isAncestorOf(top) &&
           !top->isAncestorOf(&widget);
}

std::string complaint(char const* what, QWidget const& widget, double found, QString const& text) {
    return QStringLiteral("%1 of %2 %3: %4 \"%5\"")
        .arg(QLatin1String(what), QLatin1String(widget.metaObject()->className()),
             widget.objectName())
        .arg(found)
        .arg(text)
        .toStdString();
}

double borderContrast(QWidget& window, QRect const& part) {
    constexpr int kScale = 3;
    QImage const picture = pictureOf(window, part, kScale);
    QRgb const ground = groundIn(picture, picture.rect());
    double highest = 1;
    for (QRgb const color : colorsIn(picture, picture.rect()).keys()) {
        highest = qMax(highest, contrast(color, ground));
    }
    return highest;
}

}  // namespace

std::vector<std::string> FaintThings(QWidget& window) {
    std::vector<std::string> faint;
    QImage const picture = pictureOf(window, window.rect());
    for (PaintedText const& text : PaintedTexts(window)) {
        if (isCovered(window, text.where.boundingRect().center(), *text.widget) ||
            isInactive(text, window)) {
            continue;
        }
        QRgb const ground = groundIn(picture, text.where);
        double const found = contrast(blended(text.color, ground), ground);
        if (found < kTextContrast) {
            faint.push_back(complaint("text", *text.widget, found, text.text));
        }
    }
    for (QWidget const* const widget : window.findChildren<QWidget*>()) {
        QRect const part = widget->isVisible() ? borderPart(*widget) : QRect();
        QRect const there(widget->mapTo(&window, part.topLeft()), part.size());
        if (part.isEmpty() || !widget->visibleRegion().boundingRect().contains(part) ||
            isCovered(window, there.center(), *widget)) {
            continue;
        }
        double const found = borderContrast(window, there);
        if (found < kShapeContrast) {
            faint.push_back(complaint("border", *widget, found, {}));
        }
    }
    return faint;
}

bool ShowsFocus(QWidget& window, QWidget& control) {
    constexpr int kAround = 6;   // pixels that a ring may take
    constexpr int kLeast = 100;  // pixels: more than the cursor of a field
    QRect const part = QRect(control.mapTo(&window, QPoint()), control.size())
                           .adjusted(-kAround, -kAround, kAround, kAround) &
                       window.rect();
    QImage const with = pictureOf(window, part);
    control.clearFocus();
    QImage const without = pictureOf(window, part);
    control.setFocus(Qt::TabFocusReason);
    int different = 0;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            different += contrast(with.pixel(x, y), without.pixel(x, y)) >= kShapeContrast ? 1 : 0;
        }
    }
    return different >= kLeast;
}

bool HasEdge(QWidget& window) {
    constexpr double kLeast = 1.5;  // of a line that only divides
    QImage const picture = pictureOf(window, window.rect());
    QPoint const middle = picture.rect().center();
    QPoint const sides[] = {{0, middle.y()},
                            {picture.width() - 1, middle.y()},
                            {middle.x(), 0},
                            {middle.x(), picture.height() - 1}};
    return std::all_of(std::begin(sides), std::end(sides), [&](QPoint side) {
        return contrast(picture.pixel(side), qRgb(255, 255, 255)) >= kLeast;
    });
}

}  // namespace zorvanelink::gallery
