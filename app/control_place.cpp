// SPDX-License-Identifier: MIT
#include "app/control_place.h"

#include <QAction>
#include <QEvent>
#include <QMenuBar>

namespace calvorn {

namespace {

constexpr int kLeastPanelHeight = 430; // logical pixels; at this height, the longest page scrolls a little
constexpr QMargins kMargins(2, 2, 4, 2);

} // namespace

ControlPlace::ControlPlace(QMainWindow &window, QHBoxLayout &contents, QWidget &column, QDockWidget &panel)
    : m_window(window)
    , m_contents(contents)
    , m_column(column)
    , m_panel(panel)
{
    m_window.installEventFilter(this);
    connect(&m_panel, &QDockWidget::visibilityChanged, this, &ControlPlace::placeSoon);
    connect(&m_panel, &QDockWidget::topLevelChanged, this, &ControlPlace::placeSoon);
    connect(&m_panel, &QDockWidget::dockLocationChanged, this, &ControlPlace::placeSoon);
}

bool ControlPlace::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        placeSoon();
    return QObject::eventFilter(watched, event);
}

// Deferred, because the layout that sent the event must not be changed until the event has been handled.
void ControlPlace::placeSoon()
{
    if (m_isPending || hasRoomAbove() == m_isAbovePanel)
        return;
    m_isPending = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isPending = false;
            place();
        },
        Qt::QueuedConnection);
}

bool ControlPlace::hasRoomAbove() const
{
    return !m_panel.isHidden() && !m_panel.isFloating() &&
           m_window.dockWidgetArea(&m_panel) == Qt::RightDockWidgetArea &&
           m_window.height() >= m_window.menuBar()->height() + m_column.sizeHint().height() + kLeastPanelHeight;
}

int ControlPlace::leastWidth() const
{
    return m_isAbovePanel ? m_panel.minimumSizeHint().width() - kMargins.left() - kMargins.right() : 0;
}

void ControlPlace::makeFrame()
{
    m_frame = new QDockWidget(&m_window);
    m_frame->setObjectName(QStringLiteral("dockControls"));
    m_frame->setFeatures(QDockWidget::NoDockWidgetFeatures);
    m_frame->setTitleBarWidget(new QWidget(m_frame));
    m_frame->toggleViewAction()->setVisible(false);
}

void ControlPlace::place()
{
    const bool above = hasRoomAbove();
    if (above == m_isAbovePanel)
        return;
    m_isAbovePanel = above;
    if (above) {
        if (!m_frame)
            makeFrame();
        m_column.setContentsMargins(kMargins);
        m_frame->setWidget(&m_column);
        m_window.addDockWidget(Qt::RightDockWidgetArea, m_frame);
        m_window.splitDockWidget(m_frame, &m_panel, Qt::Vertical);
        m_frame->show();
    } else {
        m_column.setContentsMargins({});
        m_contents.addWidget(&m_column);
        m_window.removeDockWidget(m_frame);
    }
    emit moved();
    if (!above)
        return;
    m_window.resizeDocks({m_frame}, {m_column.minimumSizeHint().width()}, Qt::Horizontal);
    m_window.resizeDocks({m_frame}, {m_column.sizeHint().height()}, Qt::Vertical);
}

} // namespace calvorn
