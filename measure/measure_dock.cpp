// SPDX-License-Identifier: MIT
#include "measure/measure_dock.h"

#include "widgets/window_system.h"

#include <QHBoxLayout>
#include <QScrollArea>
#include <QStyle>
#include <QTabBar>
#include <QVBoxLayout>

#include <utility>

namespace calvorn {

namespace {

// Makes a page scrollable if it is higher than the available space.
QScrollArea *scrolled(QWidget *page)
{
    auto *area = new QScrollArea;
    area->setWidget(page);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setMinimumWidth(page->minimumSizeHint().width());
    return area;
}

} // namespace

MeasureDock::MeasureDock(const Configuration &configuration, const SweepTable &table, GraphPanel &graph,
                         MarkerPanel &markers, Desktop &desktop, ErrorBoundary &boundary, QWidget *parent)
    : QDockWidget(tr("Measure"), parent)
    , m_configuration(configuration)
    , m_measurement(configuration, table, graph.graph())
    , m_graph(graph)
    , m_markers(markers)
    , m_desktop(desktop)
    , m_boundary(boundary)
    , m_action(toggleViewAction())
{
    setObjectName(QStringLiteral("dockMeasure"));
    setAllowedAreas(Qt::RightDockWidgetArea | Qt::LeftDockWidgetArea);
    // A panel that is dragged out under Wayland cannot follow the mouse, and has no frame to move or close it.
    if (isWayland())
        setFeatures(DockWidgetClosable | DockWidgetFloatable);
    m_action->setObjectName(QStringLiteral("mnuMeasure"));
    m_action->setText(tr("M&easure"));
    m_action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_M));
    m_action->setToolTip(tr("Stored traces, results, limits, level meter and generator"));
    hide();
}

void MeasureDock::build()
{
    if (m_pages)
        return;
    auto *content = new QWidget(this);
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(makeHead());
    m_pages = new QTabWidget(content);
    m_pages->setObjectName(QStringLiteral("tabMeasure"));
    m_traces = new TracesPage(m_measurement, m_configuration, m_desktop, m_boundary);
    m_results = new ResultsPage(m_measurement, m_graph.graph().markers(), m_markers, m_desktop);
    m_limits = new LimitsPage(m_measurement, m_graph.graph(), m_desktop, m_boundary);
    m_pages->addTab(scrolled(m_traces), tr("Traces"));
    m_pages->addTab(scrolled(m_results), tr("Results"));
    m_pages->addTab(scrolled(m_limits), tr("Limits"));
    if (m_makeFurther)
        m_pages->addTab(scrolled(m_makeFurther()), m_furtherTitle);
    // The tab bar shows these buttons when the panel is too narrow for all titles.
    for (QToolButton *button : m_pages->tabBar()->findChildren<QToolButton *>())
        button->setToolTip(tr("More pages"));
    layout->addWidget(m_pages);
    setWidget(content);

    connect(&m_measurement, &Measurement::refreshed, this, &MeasureDock::showReference);
    connect(&m_measurement, &Measurement::relationChanged, &m_graph.axis(), &AmplitudeAxis::setRelative);
    restorePages();
    showReference();
}

QWidget *MeasureDock::makeHead()
{
    auto *head = new QWidget(this);
    auto *layout = new QVBoxLayout(head);
    layout->setContentsMargins(0, 0, 0, 0);
    m_normalise = new QPushButton(tr("&Normalise"), this);
    m_normalise->setObjectName(QStringLiteral("cmdNormalise"));
    m_normalise->setCheckable(true);
    m_normalise->setToolTip(tr("Use the current sweep as the reference and show the curves relative to it. The table "
                               "keeps the measured values."));
    connect(m_normalise, &QPushButton::clicked, this, &MeasureDock::cmdNormalise_Click);
    // Under Wayland, the frame of a floating panel has no Qt button for docking it.
    m_dock = new QToolButton(this);
    m_dock->setObjectName(QStringLiteral("cmdDock"));
    m_dock->setIcon(style()->standardIcon(QStyle::SP_TitleBarNormalButton));
    m_dock->setToolTip(tr("Put the panel back into the window"));
    m_dock->setAccessibleName(tr("Dock"));
    m_dock->setVisible(isFloating() && isWayland());
    connect(m_dock, &QToolButton::clicked, this, [this] { setFloating(false); });
    connect(this, &QDockWidget::topLevelChanged, m_dock,
            [this](bool floating) { m_dock->setVisible(floating && isWayland()); });
    m_reference = new QLabel(this);
    m_reference->setObjectName(QStringLiteral("lblReference"));
    m_reference->setWordWrap(true);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_normalise, 1);
    buttons->addWidget(m_dock);
    layout->addLayout(buttons);
    layout->addWidget(m_reference);
    return head;
}

void MeasureDock::cmdNormalise_Click(bool on)
{
    m_measurement.traces().normalise(on);
    m_measurement.tracesEdited();
}

void MeasureDock::showReference()
{
    const TraceSet &traces = m_measurement.traces();
    m_normalise->setChecked(traces.isNormalised());
    m_normalise->setEnabled(traces.isNormalised() || !traces.shown(TraceSet::Source::Live).isEmpty());
    const QString text = m_measurement.gapReason();
    m_reference->setText(text);
    m_reference->setVisible(!text.isEmpty());
}

// Builds the pages first, so that the panel has its final size before it is placed.
void MeasureDock::setVisible(bool visible)
{
    if (visible)
        build();
    QDockWidget::setVisible(visible);
}

void MeasureDock::showEvent(QShowEvent *event)
{
    QDockWidget::showEvent(event);
    m_measurement.setWatched(true);
}

void MeasureDock::hideEvent(QHideEvent *event)
{
    QDockWidget::hideEvent(event);
    m_measurement.setWatched(false);
}

void MeasureDock::setFurtherPage(const QString &title, std::function<QWidget *()> make)
{
    m_furtherTitle = title;
    m_makeFurther = std::move(make);
}

void MeasureDock::restorePages()
{
    m_pages->setCurrentIndex(m_choices.page);
    m_traces->restore(m_choices);
    m_results->restore(m_choices);
    m_limits->restore(m_choices);
}

void MeasureDock::restore()
{
    m_choices = readMeasureChoices(m_configuration.iniPath);
    const bool worksClosed = m_choices.maxHold || m_choices.minHold || m_choices.average || m_choices.limits ||
                             m_choices.tracksPeak || !m_choices.limitsFile.isEmpty();
    if (m_pages)
        restorePages();
    else if (m_choices.isOpen || worksClosed)
        build();
    const QStringList place = m_choices.place.split(u' ');
    setFloating(m_choices.isFloating);
    if (m_choices.isFloating && place.size() == 4)
        setGeometry(place[0].toInt(), place[1].toInt(), place[2].toInt(), place[3].toInt());
    setVisible(m_choices.isOpen && !(m_choices.isFloating && isWayland()));
}

void MeasureDock::showRestored()
{
    if (m_choices.isOpen)
        show();
}

bool MeasureDock::save() const
{
    MeasureChoices choices = m_choices;
    choices.isOpen = !isHidden();
    choices.isFloating = isFloating();
    choices.place =
        isFloating() ? QStringLiteral("%1 %2 %3 %4").arg(x()).arg(y()).arg(width()).arg(height()) : QString();
    if (m_pages) {
        choices.page = static_cast<std::int16_t>(m_pages->currentIndex());
        m_traces->save(choices);
        m_results->save(choices);
        m_limits->save(choices);
    }
    return saveMeasureChoices(choices, m_configuration.iniPath);
}

} // namespace calvorn
