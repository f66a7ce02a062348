// Whoever cannot see or cannot point reaches every control: each has a name, and Tab comes by.
#include <gmock/gmock.h>

#include <QAccessible>
#include <QtTest/QTest>
#include <set>

#include "tests/ui/windows/all_windows.h"
#include "ui/widgets/style.h"

namespace zorvanelink {
namespace {

using testing::IsEmpty;

std::string describe(QWidget const& widget) {
    return std::string(widget.metaObject()->className()) + " " + widget.objectName().toStdString();
}

// Texts that can be selected are no controls.
bool isControl(QWidget const& widget) {
    auto const* const text = qobject_cast<QTextEdit const*>(&widget);
    return widget.focusPolicy() != Qt::NoFocus && widget.isVisible() && widget.isEnabled() &&
           qobject_cast<QLabel const*>(&widget) == nullptr &&
           (text == nullptr || !text->isReadOnly());
}

std::set<QWidget const*> reachedByTab(QWidget& window) {
    std::set<QWidget const*> reached;
    for (int presses = 0; presses < 200; ++presses) {
        QWidget* const focus = window.focusWidget() != nullptr ? window.focusWidget() : &window;
        if (focus != &window && !reached.insert(focus).second && presses > 100) {
            break;
        }
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    return reached;
}

// Of a row of equals one takes Tab, and the arrow keys lead to the others.
bool isReachedByArrows(QWidget const& widget, std::set<QWidget const*> const& reached) {
    auto const* const button = qobject_cast<QAbstractButton const*>(&widget);
    bool const one_of_many = button != nullptr && button->isCheckable() &&
                             (button->autoExclusive() || button->group() != nullptr);
    return std::any_of(reached.begin(), reached.end(), [&](QWidget const* other) {
        bool const same_name =
            other->objectName() == widget.objectName() && !widget.objectName().isEmpty();
        return other->metaObject() == widget.metaObject() && (one_of_many || same_name);
    });
}

TEST(Keyboard, EveryControlHasANameAndAPlaceInTheTabOrder) {
    ui::InitAssets();
    for (test::WindowRow const& row : test::AllWindows()) {
        SCOPED_TRACE(row.name);
        test::WindowWorld world;
        auto const window = row.make(world);
        test::Settle(*window);
        auto const reached = reachedByTab(*window);
        std::vector<std::string> nameless;
        std::vector<std::string> unreached;
        int controls = 0;
        for (QWidget* const widget : window->findChildren<QWidget*>()) {
            if (!isControl(*widget)) {
                continue;
            }
            ++controls;
            QAccessibleInterface* const read = QAccessible::queryAccessibleInterface(widget);
            if (read == nullptr || read->text(QAccessible::Name).isEmpty()) {
                nameless.push_back(describe(*widget));
            }
            if (!reached.contains(widget) && !isReachedByArrows(*widget, reached)) {
                unreached.push_back(describe(*widget));
            }
        }
        EXPECT_GT(controls, 0);
        EXPECT_THAT(nameless, IsEmpty());
        EXPECT_THAT(unreached, IsEmpty());
    }
}

}  // namespace
}  // namespace zorvanelink
