// SPDX-License-Identifier: MIT
#include "display/height_handle.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

#include <algorithm>

namespace calvorn {

HeightHandle::HeightHandle(QWidget &upper, QWidget &lower)
    : QWidget(lower.parentWidget())
    , m_upper(upper)
    , m_lower(lower)
{
    setObjectName(QStringLiteral("splitView"));
    setAccessibleName(tr("Height of the view"));
    setToolTip(tr("Drag to resize the view; double-click to restore its default height"));
    setCursor(Qt::SplitVCursor);
    m_upper.installEventFilter(this);
    m_lower.installEventFilter(this);
    follow();
}

void HeightHandle::follow()
{
    const int top = m_upper.geometry().bottom() + 1;
    setGeometry(m_lower.x(), top, m_lower.width(), std::max(0, m_lower.y() - top));
    raise();
}

bool HeightHandle::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize)
        follow();
    return QWidget::eventFilter(watched, event);
}

void HeightHandle::enterEvent(QEnterEvent *event)
{
    QWidget::enterEvent(event);
    update();
}

void HeightHandle::leaveEvent(QEvent *event)
{
    QWidget::leaveEvent(event);
    update();
}

void HeightHandle::mousePressEvent(QMouseEvent *event)
{
    m_grip = m_lower.y() - mapToParent(event->position().toPoint()).y();
}

void HeightHandle::mouseMoveEvent(QMouseEvent *event)
{
    if (!event->buttons().testFlag(Qt::LeftButton))
        return;
    const int top = mapToParent(event->position().toPoint()).y() + m_grip;
    const int bottom = m_lower.geometry().bottom() + 1;
    const int most = m_lower.height() + m_upper.height() - m_upper.minimumSizeHint().height();
    emit heightWanted(std::clamp(bottom - top, 1, std::max(1, most)));
}

void HeightHandle::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        emit heightWanted(0);
}

void HeightHandle::paintEvent(QPaintEvent *)
{
    if (!underMouse())
        return;
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawControl(QStyle::CE_Splitter, &option, &painter, this);
}

} // namespace calvorn
