// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace calvorn::test {

// Finds a window's controls by name and operates them as a user would.
class WidgetHands
{
public:
    virtual ~WidgetHands() = default;
    virtual QWidget *root() const = 0;

    template <typename Widget = QWidget>
    Widget *find(const char *name) const
    {
        auto *widget = root()->findChild<Widget *>(QString::fromLatin1(name));
        if (!widget)
            qFatal("there is no %s", name);
        return widget;
    }

    QString text(const char *name) const { return find(name)->property("text").toString(); }
    QString label(const char *name) const { return find<QWidget>(name)->property("text").toString(); }
    QString caption(const char *name) const { return find<QAbstractButton>(name)->text(); }
    bool isShown(const char *name) const { return find(name)->isVisible(); }
    bool isChecked(const char *name) const { return find<QAbstractButton>(name)->isChecked(); }

    void click(const char *name) const
    {
        auto *button = find<QAbstractButton>(name);
        // Click an option's indicator, because the middle of its row may be beyond its text.
        const QPoint at = button->isCheckable() ? QPoint(10, button->height() / 2) : button->rect().center();
        QTest::mouseClick(button, Qt::LeftButton, {}, at);
    }

    void type(const char *name, const QString &newText) const
    {
        auto *box = find<QLineEdit>(name);
        box->setFocus();
        box->selectAll();
        if (newText.isEmpty())
            QTest::keyClick(box, Qt::Key_Delete);
        QTest::keyClicks(box, newText);
        QTest::keyClick(box, Qt::Key_Tab);
    }
};

} // namespace calvorn::test
