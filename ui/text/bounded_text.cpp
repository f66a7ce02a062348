#include "ui/text/bounded_text.h"

namespace zorvanelink::ui {
namespace {

constexpr char16_t kBreak = u'\u200B';
constexpr char16_t kEllipsis = u'…';

}  // namespace

QString BoundedText(QString const& text, int run, int length) {
    QString bounded;
    int unbroken = 0;
    for (QChar const sign : text) {
        // Two halves of one sign stay together.
        bool const whole = bounded.isEmpty() || !bounded.at(bounded.size() - 1).isHighSurrogate();
        if (whole && bounded.size() >= length) {
            return bounded + QChar(kEllipsis);
        }
        unbroken = sign.isSpace() ? 0 : unbroken + 1;
        if (whole && unbroken > run) {
            bounded += QChar(kBreak);
            unbroken = 1;
        }
        bounded += sign;
    }
    return bounded;
}

}  // namespace zorvanelink::ui
