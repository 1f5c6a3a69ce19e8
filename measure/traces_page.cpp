// SPDX-License-Identifier: MIT
#include "measure/traces_page.h"

#include "analysis/trace_file.h"
#include "core/whole_file.h"
#include "display/plot/trace_styles.h"
#include "widgets/button_key.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QMenu>
#include <QPainter>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace calvorn {

namespace {

// Returns a sample of the line, for display beside the trace's name.
QIcon sampleOf(const TraceStyle &style)
{
    QPixmap picture(26, 14);
    picture.fill(QColor::fromRgb(kGraphBackground));
    QPainter painter(&picture);
    painter.setPen(QPen(QColor::fromRgb(style.colour), 2.0, style.line));
    painter.drawLine(0, 7, 26, 7);
    return QIcon(picture);
}

} // namespace

TracesPage::TracesPage(Measurement &measurement, const Configuration &configuration, Desktop &desktop,
                       ErrorBoundary &boundary, QWidget *parent)
    : QWidget(parent)
    , m_measurement(measurement)
    , m_configuration(configuration)
    , m_desktop(desktop)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(5, 5, 5, 5);
    layout->addWidget(makeStored(boundary));
    layout->addWidget(makeMoving());
    m_legend = new QCheckBox(tr("&Legend in the graph"), this);
    m_legend->setObjectName(QStringLiteral("chkLegend"));
    m_legend->setToolTip(tr("Label the curves if more than one is shown"));
    m_legend->setChecked(true);
    connect(m_legend, &QCheckBox::toggled, &measurement, &Measurement::setLegendShown);
    layout->addWidget(m_legend);
    layout->addStretch();
    connect(&measurement, &Measurement::refreshed, this, &TracesPage::showTraces);
    showTraces();
}

QWidget *TracesPage::makeStored(ErrorBoundary &boundary)
{
    auto *box = new QGroupBox(tr("Stored traces"), this);
    auto *grid = new QGridLayout(box);
    grid->setColumnStretch(1, 1);
    for (int slot = 0; slot < TraceSet::kStored; ++slot)
        makeRow(slot, grid, boundary);
    return box;
}

void TracesPage::makeRow(int slot, QGridLayout *grid, ErrorBoundary &boundary)
{
    Row &row = m_rows[static_cast<std::size_t>(slot)];
    const auto named = [slot](const char *name) { return QString::fromLatin1(name) + QString::number(slot); };
    row.shown = new QCheckBox(this);
    row.shown->setObjectName(named("chkShow_"));
    row.shown->setIcon(sampleOf(kStoredStyles[static_cast<std::size_t>(slot)]));
    row.shown->setIconSize({26, 14});
    row.shown->setToolTip(tr("Show this trace in the graph"));
    row.shown->setAccessibleName(tr("Show trace %1").arg(slot + 1));
    connect(row.shown, &QCheckBox::toggled, this, [this, slot](bool shown) {
        m_measurement.traces().show(slot, shown);
        m_measurement.tracesEdited();
    });
    row.name = new QLineEdit(this);
    row.name->setObjectName(named("txtTrace_"));
    row.name->setMaxLength(40);
    row.name->setMinimumWidth(70);
    row.name->setToolTip(tr("Name of the trace in the legend"));
    row.name->setAccessibleName(tr("Name of trace %1").arg(slot + 1));
    connect(row.name, &QLineEdit::editingFinished, this, [this, slot] {
        m_measurement.traces().rename(slot, m_rows[static_cast<std::size_t>(slot)].name->text());
        m_measurement.tracesEdited();
    });
    row.store = new QPushButton(tr("Store %1").arg(slot + 1), this);
    row.store->setObjectName(named("cmdStore_"));
    row.store->setToolTip(tr("Store the current sweep as trace %1").arg(slot + 1));
    giveKey(*row.store, QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + slot)));
    connect(row.store, &QPushButton::clicked, this, [this, slot] { cmdStore_Click(slot); });

    auto *more = new QToolButton(this);
    more->setObjectName(named("cmdTrace_"));
    more->setText(QStringLiteral("…"));
    more->setToolTip(tr("Load, save or remove trace %1").arg(slot + 1));
    more->setAccessibleName(more->toolTip());
    more->setFocusPolicy(Qt::StrongFocus);
    more->setPopupMode(QToolButton::InstantPopup);
    auto *menu = new QMenu(more);
    row.load = menu->addAction(tr("&Load…"));
    row.load->setObjectName(named("mnuLoadTrace_"));
    boundary.connect(row.load, &QAction::triggered, this, "mnuLoadTrace_Click", [this, slot] { loadTrace(slot); });
    row.save = menu->addAction(tr("&Save…"));
    row.save->setObjectName(named("mnuSaveTrace_"));
    boundary.connect(row.save, &QAction::triggered, this, "mnuSaveTrace_Click", [this, slot] { saveTrace(slot); });
    row.clear = menu->addAction(tr("&Remove"));
    row.clear->setObjectName(named("mnuClearTrace_"));
    connect(row.clear, &QAction::triggered, this, [this, slot] {
        m_measurement.traces().clear(slot);
        m_measurement.tracesEdited();
    });
    more->setMenu(menu);
    grid->addWidget(row.shown, slot, 0);
    grid->addWidget(row.name, slot, 1);
    grid->addWidget(row.store, slot, 2);
    grid->addWidget(more, slot, 3);
}

QCheckBox *TracesPage::makeSwitch(const char *name, const QString &caption, const QString &toolTip,
                                  TraceSet::Source source)
{
    auto *box = new QCheckBox(caption, this);
    box->setObjectName(QString::fromLatin1(name));
    box->setToolTip(toolTip);
    connect(box, &QCheckBox::toggled, this, [this, source](bool on) {
        m_measurement.traces().switchOn(source, on);
        m_measurement.tracesEdited();
    });
    return box;
}

QWidget *TracesPage::makeMoving()
{
    auto *box = new QGroupBox(tr("Following sweeps"), this);
    auto *grid = new QGridLayout(box);
    m_maxHold = makeSwitch("chkMaxHold", tr("Ma&x hold"), tr("Keep the highest amplitude at each frequency"),
                           TraceSet::Source::MaxHold);
    m_minHold = makeSwitch("chkMinHold", tr("M&in hold"), tr("Keep the lowest amplitude at each frequency"),
                           TraceSet::Source::MinHold);
    m_average =
        makeSwitch("chkAverage", tr("&Average over"),
                   tr("The mean of this many sweeps, then an exponential running mean"), TraceSet::Source::Average);
    m_maxHold->setIcon(sampleOf(kMaxHoldStyle));
    m_minHold->setIcon(sampleOf(kMinHoldStyle));
    m_average->setIcon(sampleOf(kAverageStyle));
    for (QCheckBox *each : {m_maxHold, m_minHold, m_average})
        each->setIconSize({26, 14});
    m_averageOver = new QSpinBox(this);
    m_averageOver->setObjectName(QStringLiteral("txtAverageOver"));
    m_averageOver->setRange(TraceSet::kFewestAveraged, TraceSet::kMostAveraged);
    m_averageOver->setValue(m_measurement.traces().averageOver());
    m_averageOver->setToolTip(tr("Sweeps in the average"));
    m_averageOver->setAccessibleName(m_averageOver->toolTip());
    connect(m_averageOver, &QSpinBox::valueChanged, this, [this](int sweeps) {
        m_measurement.traces().setAverageOver(sweeps);
        m_measurement.tracesEdited();
    });
    m_averaged = new QLabel(this);
    m_averaged->setObjectName(QStringLiteral("lblAveraged"));
    m_averaged->setToolTip(tr("Sweeps averaged so far"));
    auto *restart = new QPushButton(tr("&Restart"), this);
    restart->setObjectName(QStringLiteral("cmdStartAnew"));
    restart->setToolTip(tr("Restart holds and average with the next sweep, as a new range does"));
    connect(restart, &QPushButton::clicked, this, [this] {
        m_measurement.traces().restart();
        m_measurement.tracesEdited();
    });
    grid->addWidget(m_maxHold, 0, 0);
    grid->addWidget(m_minHold, 1, 0);
    grid->addWidget(m_average, 2, 0);
    grid->addWidget(m_averageOver, 2, 1);
    grid->addWidget(m_averaged, 2, 2);
    grid->addWidget(restart, 0, 1, 2, 2, Qt::AlignVCenter);
    grid->setColumnStretch(2, 1);
    return box;
}

void TracesPage::cmdStore_Click(int slot)
{
    TraceSet &traces = m_measurement.traces();
    if (traces.stored(slot).trace.name.isEmpty())
        traces.rename(slot, tr("Trace %1").arg(slot + 1));
    if (!traces.store(slot))
        m_desktop.beep();
    traces.show(slot, true);
    m_measurement.tracesEdited();
}

void TracesPage::loadTrace(int slot)
{
    const QString path = m_desktop.chooseFileToOpen(tr("Sweep files (*.csv)"), m_lastFile);
    if (path.isEmpty())
        return;
    m_lastFile = path;
    m_measurement.traces().load(slot, readTraceFile(path, m_configuration));
    m_measurement.traces().show(slot, true);
    m_measurement.tracesEdited();
}

void TracesPage::saveTrace(int slot)
{
    const QString folder = m_lastFile.isEmpty() ? QString() : QFileInfo(m_lastFile).path();
    const QString path = m_desktop.chooseFileToSave(tr("Sweep files (*.csv);;All files (*)"), folder);
    if (path.isEmpty())
        return;
    writeWholeFile(path, traceAsCsv(m_measurement.traces().stored(slot).trace, m_configuration));
    m_lastFile = path;
}

void TracesPage::showTraces()
{
    const TraceSet &traces = m_measurement.traces();
    const bool hasSweep = !traces.shown(TraceSet::Source::Live).isEmpty();
    for (int slot = 0; slot < TraceSet::kStored; ++slot) {
        const Row &row = m_rows[static_cast<std::size_t>(slot)];
        const StoredTrace &stored = traces.stored(slot);
        const bool isThere = !stored.trace.isEmpty();
        const QSignalBlocker quiet(row.shown);
        row.shown->setChecked(isThere && stored.isShown);
        row.shown->setEnabled(isThere);
        if (!row.name->hasFocus() && row.name->text() != stored.trace.name)
            row.name->setText(stored.trace.name);
        row.store->setEnabled(hasSweep);
        row.save->setEnabled(isThere);
        row.clear->setEnabled(isThere);
    }
    const std::int64_t averaged =
        m_average->isChecked() ? std::min<std::int64_t>(traces.averaged(), traces.averageOver()) : kNotAveraged;
    if (std::exchange(m_shownAveraged, averaged) != averaged)
        m_averaged->setText(averaged == kNotAveraged ? QString() : tr("%1 so far").arg(averaged));
}

void TracesPage::restore(const MeasureChoices &choices)
{
    m_averageOver->setValue(choices.averageOver);
    m_maxHold->setChecked(choices.maxHold);
    m_minHold->setChecked(choices.minHold);
    m_average->setChecked(choices.average);
    m_legend->setChecked(choices.legend);
}

void TracesPage::save(MeasureChoices &choices) const
{
    choices.averageOver = static_cast<std::int16_t>(m_averageOver->value());
    choices.maxHold = m_maxHold->isChecked();
    choices.minHold = m_minHold->isChecked();
    choices.average = m_average->isChecked();
    choices.legend = m_legend->isChecked();
}

} // namespace calvorn
