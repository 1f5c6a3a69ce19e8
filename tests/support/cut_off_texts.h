// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>

namespace calvorn::test {

// Returns the text of a label, a button or a group box; empty for other widgets.
inline QString textOf(const QWidget *widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        return label->text();
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        return button->text();
    const auto *frame = qobject_cast<const QGroupBox *>(widget);
    return frame ? frame->title() : QString();
}

inline bool hasRoom(const QWidget *widget)
{
    if (const auto *frame = qobject_cast<const QGroupBox *>(widget))
        return frame->fontMetrics().size(Qt::TextShowMnemonic, frame->title()).width() + 4 <= frame->width();
    const auto *label = qobject_cast<const QLabel *>(widget);
    const int lines = label && label->wordWrap() ? label->heightForWidth(label->width()) : 0;
    const QSize needed = widget->minimumSizeHint().expandedTo({0, lines});
    return widget->width() >= needed.width() && widget->height() >= needed.height();
}

// Returns the visible texts in a window that do not fit their widgets, one per line with the widget's name. Ignores the
// axis labels, because the axis hides some on purpose.
inline QString cutOffTexts(const QWidget &window)
{
    QStringList cut;
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        const QString text = textOf(widget);
        if (!widget->isVisible() || widget->window() != &window || widget->objectName().startsWith(u"lblVolt_"))
            continue;
        const QRect place(widget->mapTo(&window, QPoint()), widget->size());
        if (!text.isEmpty() && (!hasRoom(widget) || !window.rect().contains(place)))
            cut.append(widget->objectName() + QStringLiteral(": ") + text);
        const int frame = 8;
        const auto *box = qobject_cast<const QLineEdit *>(widget);
        if (box && box->fontMetrics().horizontalAdvance(box->text()) + frame > box->width())
            cut.append(box->objectName() + QStringLiteral(": ") + box->text());
        const auto *header = qobject_cast<const QHeaderView *>(widget);
        for (int section = 0; header && section < header->count(); ++section)
            if (header->sectionSizeHint(section) > header->sectionSize(section))
                cut.append(QStringLiteral("column %1").arg(section));
        const auto *bar = qobject_cast<const QMenuBar *>(widget);
        for (const QAction *action : bar ? bar->actions() : QList<QAction *>())
            if (!bar->rect().contains(bar->actionGeometry(const_cast<QAction *>(action))))
                cut.append(QStringLiteral("menu: ") + action->text());
    }
    return cut.join(u'\n');
}

} // namespace calvorn::test
