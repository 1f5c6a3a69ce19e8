// SPDX-License-Identifier: MIT
#include "platform/read_out.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>

namespace calvorn {

namespace {

constexpr int kMargin = 5; // logical pixels between the text and the frame

} // namespace

ReadOut::ReadOut(QWidget *parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    measure();
}

void ReadOut::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    // What a screen reader says after the name.
    setAccessibleDescription(text);
    update();
}

void ReadOut::measure()
{
    QLineEdit box;
    box.setFont(font());
    m_sizeHint = {fontMetrics().horizontalAdvance(QStringLiteral("-88.888")) + 2 * kMargin, box.sizeHint().height()};
}

void ReadOut::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect().adjusted(kMargin, 0, -kMargin, 0), Qt::AlignRight | Qt::AlignVCenter, m_text);
}

void ReadOut::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu menu(this);
    const QAction *copy = menu.addAction(tr("&Copy"));
    if (menu.exec(event->globalPos()) == copy)
        QGuiApplication::clipboard()->setText(m_text);
}

void ReadOut::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange)
        return;
    measure();
    updateGeometry();
}

} // namespace calvorn
