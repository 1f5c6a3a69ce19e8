// SPDX-License-Identifier: MIT
#include "measure/limits_page.h"

#include "core/common_functions.h"
#include "core/number_text.h"
#include "core/whole_file.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <cmath>
#include <utility>

namespace calvorn {

namespace {

enum Column { FrequencyColumn, UpperColumn, LowerColumn, kColumns };

constexpr int kLimitPoints = 21; // points in limits made from the live trace

// Backgrounds for white text.
constexpr QRgb kPassed = qRgb(0x1b, 0x6e, 0x3c);
constexpr QRgb kFailed = qRgb(0xa0, 0x18, 0x18);

QString textOf(const std::optional<double> &value)
{
    return value ? NumberText().fromDouble(*value) : QString();
}

} // namespace

LimitsPage::LimitsPage(Measurement &measurement, SweepGraph &graph, Desktop &desktop, ErrorBoundary &boundary,
                       QWidget *parent)
    : QWidget(parent)
    , m_measurement(measurement)
    , m_graph(graph)
    , m_desktop(desktop)
    , m_boundary(boundary)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(5, 5, 5, 5);
    layout->addWidget(makeVerdict());
    layout->addWidget(makeEditor(boundary), 1);
    connect(&measurement, &Measurement::refreshed, this, [this] {
        if (isVisible())
            showVerdict();
    });
    connect(&measurement, &Measurement::verdictTurned, this, [this] {
        if (m_beeps->isChecked())
            m_desktop.beep();
    });
    graph.installEventFilter(this);
    showTable();
    showVerdict();
}

QWidget *LimitsPage::makeVerdict()
{
    auto *box = new QWidget(this);
    auto *grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    m_on = new QCheckBox(tr("Check ever&y sweep"), this);
    m_on->setObjectName(QStringLiteral("chkLimits"));
    m_on->setToolTip(tr("Draw the limits and show whether each sweep is within them"));
    connect(m_on, &QCheckBox::toggled, &m_measurement, &Measurement::setLimitsOn);
    // Remote commands can also change the limits.
    connect(&m_measurement, &Measurement::refreshed, this, [this] {
        const QSignalBlocker quiet(m_on);
        m_on->setChecked(m_measurement.areLimitsOn());
        if (m_measurement.limits() != m_shown)
            showTable();
    });
    m_beeps = new QCheckBox(tr("&Beep on change"), this);
    m_beeps->setObjectName(QStringLiteral("chkLimitBeep"));
    m_beeps->setToolTip(tr("Beep when the verdict changes between PASS and FAIL"));
    m_verdict = new QLabel(this);
    m_verdict->setObjectName(QStringLiteral("lblVerdict"));
    m_verdict->setAccessibleName(tr("Verdict on the last sweep"));
    m_verdict->setAlignment(Qt::AlignCenter);
    m_verdict->setMargin(4);
    m_verdict->setAutoFillBackground(true);
    QFont bold = m_verdict->font();
    bold.setBold(true);
    m_verdict->setFont(bold);
    m_worst = new QLabel(this);
    m_worst->setObjectName(QStringLiteral("lblWorst"));
    m_worst->setWordWrap(true);
    m_counts = new QLabel(this);
    m_counts->setObjectName(QStringLiteral("lblLimitCounts"));
    QPushButton *reset = makeButton("cmdResetCounts", tr("&Zero"), tr("Reset the counts"));
    connect(reset, &QPushButton::clicked, this, [this] {
        m_measurement.resetCounts();
        showVerdict();
    });
    grid->addWidget(m_on, 0, 0, 1, 2);
    grid->addWidget(m_beeps, 1, 0, 1, 2);
    grid->addWidget(m_verdict, 2, 0, 1, 2);
    grid->addWidget(m_worst, 3, 0, 1, 2);
    grid->addWidget(m_counts, 4, 0);
    grid->addWidget(reset, 4, 1, Qt::AlignRight);
    return box;
}

QPushButton *LimitsPage::makeButton(const char *name, const QString &caption, const QString &toolTip)
{
    auto *button = new QPushButton(caption, this);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(toolTip);
    button->setMinimumWidth(40);
    return button;
}

QWidget *LimitsPage::makeEditor(ErrorBoundary &boundary)
{
    auto *box = new QWidget(this);
    auto *grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    m_table = new QTableWidget(0, kColumns, this);
    m_table->setObjectName(QStringLiteral("tblLimits"));
    m_table->setAccessibleName(tr("Points of the limits"));
    m_table->setToolTip(tr("Points of the limits"));
    m_table->setHorizontalHeaderLabels({tr("Hz"), tr("Upper"), tr("Lower")});
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_table->verticalHeader()->hide();
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setMinimumHeight(70);
    connect(m_table, &QTableWidget::cellChanged, this, &LimitsPage::takeCell);
    QPushButton *add = makeButton("cmdAddPoint", tr("&Add"), tr("Add a point at M1, at the level of M3"));
    QPushButton *remove = makeButton("cmdRemovePoint", tr("&Remove"), tr("Remove the selected points"));
    m_click = makeButton("cmdClickPoint", tr("By clic&k"), tr("Each click in the graph adds a point to this limit"));
    m_click->setCheckable(true);
    m_clickSide = new QComboBox(this);
    m_clickSide->setObjectName(QStringLiteral("cboLimitSide"));
    m_clickSide->addItems({tr("upper"), tr("lower")});
    m_clickSide->setToolTip(tr("The limit to which new points are added"));
    QPushButton *live = makeButton("cmdFromLive", tr("L&ive ±"), tr("Create both limits from the current sweep"));
    m_margin = new RealSpinBox(this);
    m_margin->setObjectName(QStringLiteral("txtLimitMargin"));
    m_margin->setRange(0.1, 60.0);
    m_margin->setDecimals(1);
    m_margin->setSuffix(tr(" dB"));
    m_margin->setValue(3.0);
    m_margin->setToolTip(tr("Margin between the limits and the sweep"));
    QPushButton *load = makeButton("cmdLoadLimits", tr("&Load…"), tr("Load limits from a file"));
    QPushButton *save = makeButton("cmdSaveLimits", tr("Sav&e…"), tr("Save the limits to a file"));
    connect(add, &QPushButton::clicked, this, &LimitsPage::addRow);
    connect(remove, &QPushButton::clicked, this, &LimitsPage::removeRow);
    connect(live, &QPushButton::clicked, this, &LimitsPage::fromLive);
    boundary.connect(load, &QPushButton::clicked, this, "cmdLoadLimits_Click", [this] { loadLimits(); });
    boundary.connect(save, &QPushButton::clicked, this, "cmdSaveLimits_Click", [this] { saveLimits(); });
    grid->addWidget(m_table, 0, 0, 1, 4);
    grid->addWidget(add, 1, 0, 1, 2);
    grid->addWidget(remove, 1, 2, 1, 2);
    grid->addWidget(m_click, 2, 0, 1, 2);
    grid->addWidget(m_clickSide, 2, 2, 1, 2);
    grid->addWidget(live, 3, 0, 1, 2);
    grid->addWidget(m_margin, 3, 2, 1, 2);
    grid->addWidget(load, 4, 0, 1, 2);
    grid->addWidget(save, 4, 2, 1, 2);
    grid->setRowStretch(0, 1);
    return box;
}

// Returns the limits to edit. Limits in a unit other than the plot's cannot be extended, so editing then starts without
// points.
LimitLines LimitsPage::editable() const
{
    LimitLines limits = m_measurement.limits();
    if (const auto unit = m_measurement.shownUnit(); unit && limits.unit != *unit) {
        limits.clear();
        limits.unit = *unit;
    }
    return limits;
}

void LimitsPage::edit(const LimitLines &limits)
{
    m_measurement.setLimits(limits);
    if (!m_on->isChecked())
        m_on->setChecked(true);
    showTable();
    showVerdict();
}

void LimitsPage::addRow()
{
    const MarkerSet &markers = m_graph.model().markers;
    const double level = markers[GraphItem::M3].position;
    LimitLines limits = editable();
    LimitPoint point{m_graph.model().axis.frequencyAt(markers.row(GraphItem::M1)), {}, {}};
    (m_clickSide->currentIndex() == 0 ? point.upper : point.lower) = level;
    limits.add(point);
    edit(limits);
}

void LimitsPage::removeRow()
{
    LimitLines limits = m_measurement.limits();
    for (int row = m_table->rowCount() - 1; row >= 0; --row)
        if (m_table->item(row, FrequencyColumn)->isSelected())
            limits.remove(static_cast<std::size_t>(row));
    edit(limits);
}

void LimitsPage::addClick(QPointF user)
{
    LimitLines limits = editable();
    LimitPoint point{std::nearbyint(m_graph.model().axis.frequencyAt(user.x())), {}, {}};
    const double level = std::nearbyint(m_graph.coordinates().amplitudeOfY(user.y()) * 1000.0) / 1000.0;
    (m_clickSide->currentIndex() == 0 ? point.upper : point.lower) = level;
    limits.add(point);
    edit(limits);
}

bool LimitsPage::eventFilter(QObject *watched, QEvent *event)
{
    const bool isButton = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease;
    if (!isButton || !m_click->isChecked() || !isVisible())
        return QWidget::eventFilter(watched, event);
    const auto *mouse = static_cast<QMouseEvent *>(event);
    if (mouse->button() != Qt::LeftButton)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::MouseButtonRelease)
        addClick(m_graph.userPosition(mouse->position()));
    return true;
}

// Samples the curve at about as many points as a user would set: enough to follow it, few enough to edit.
void LimitsPage::fromLive()
{
    const PlotTrace sweep = m_measurement.shownSweep();
    const auto unit = m_measurement.shownUnit();
    if (sweep.amplitudes.empty() || !unit)
        return m_desktop.beep();
    LimitLines limits;
    limits.unit = *unit;
    const double factor = std::pow(10.0, m_margin->value() / 20.0);
    const double last = static_cast<double>(sweep.amplitudes.size() - 1);
    for (int i = 0; i < kLimitPoints; ++i) {
        const double index = std::nearbyint(last * i / (kLimitPoints - 1));
        const double amplitude = sweep.amplitudes[static_cast<std::size_t>(index)];
        if (std::isnan(amplitude))
            continue;
        const bool linear = unit == LimitUnit::Volt;
        const auto rounded = [](double value) { return std::nearbyint(value * 1000.0) / 1000.0; };
        const double upper = linear ? amplitude * factor : amplitude + m_margin->value();
        const double lower = linear ? amplitude / factor : amplitude - m_margin->value();
        limits.add({std::nearbyint(sweep.axis.start + index * sweep.axis.step), rounded(upper), rounded(lower)});
    }
    edit(limits);
}

// Restores the previous value if the text is not a valid number.
void LimitsPage::takeCell(int row, int column)
{
    LimitLines limits = m_measurement.limits();
    const auto index = static_cast<std::size_t>(row);
    if (index >= limits.points().size())
        return;
    LimitPoint point = limits.points()[index];
    const QString text = m_table->item(row, column)->text().trimmed();
    const std::optional<double> value = text.isEmpty() ? std::nullopt : enteredReal(text);
    const bool isUsable = column == FrequencyColumn ? value && *value >= 0.0 : value || text.isEmpty();
    if (!isUsable) {
        m_desktop.beep();
        return showTable();
    }
    if (column == FrequencyColumn)
        point.frequency = *value;
    else
        (column == UpperColumn ? point.upper : point.lower) = value;
    limits.replace(index, point);
    edit(limits);
}

void LimitsPage::showTable()
{
    const QSignalBlocker quiet(m_table);
    m_shown = m_measurement.limits();
    const std::vector<LimitPoint> &points = m_shown.points();
    m_table->setRowCount(static_cast<int>(points.size()));
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const LimitPoint &point = points[static_cast<std::size_t>(row)];
        const std::array<QString, kColumns> texts{NumberText().fromDouble(point.frequency), textOf(point.upper),
                                                  textOf(point.lower)};
        for (int column = 0; column < kColumns; ++column) {
            auto *item = new QTableWidgetItem(texts[static_cast<std::size_t>(column)]);
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            m_table->setItem(row, column, item);
        }
    }
}

void LimitsPage::showEvent(QShowEvent *event)
{
    showVerdict();
    QWidget::showEvent(event);
}

void LimitsPage::showVerdict(const QString &text, QColor colour)
{
    if (m_verdict->text() == text)
        return;
    m_verdict->setText(text);
    QPalette palette = m_verdict->palette();
    palette.setColor(QPalette::Window, colour);
    palette.setColor(QPalette::WindowText, Qt::white);
    m_verdict->setPalette(palette);
}

// Shows the verdict by colour and as text.
void LimitsPage::showVerdict()
{
    const LimitVerdict &verdict = m_measurement.verdict();
    const QString problem = m_measurement.limitProblem();
    const NumberText numbers;
    const bool isJudged = m_on->isChecked() && problem.isEmpty();
    m_verdict->setVisible(isJudged);
    if (isJudged) {
        showVerdict(verdict.hasPassed() ? tr("PASS") : tr("FAIL"), verdict.hasPassed() ? kPassed : kFailed);
        const QString margin = numbers.masked(std::abs(verdict.margin), kMaskFixed);
        const QString unit = m_measurement.limits().unit == LimitUnit::Volt ? tr("V") : tr("dB");
        const QString place = numbers.masked(verdict.frequency, kMaskHertz);
        m_worst->setText(!std::isfinite(verdict.margin) ? tr("Below the detector's floor at %1 Hz").arg(place)
                         : verdict.hasPassed()          ? tr("Nearest: %1 %2 inside, at %3 Hz").arg(margin, unit, place)
                                               : tr("Worst: %1 %2 outside, at %3 Hz").arg(margin, unit, place));
    } else {
        m_worst->setText(m_on->isChecked() ? problem : QString());
    }
    m_counts->setText(tr("%1 passed, %2 failed").arg(m_measurement.passed()).arg(m_measurement.failed()));
}

void LimitsPage::loadLimits()
{
    const QString path = m_desktop.chooseFileToOpen(tr("Limits (*.csv)"), m_file);
    if (!path.isEmpty())
        takeFile(path);
}

void LimitsPage::takeFile(const QString &path)
{
    const LimitLines limits = readLimitFile(path);
    m_file = path;
    edit(limits);
}

void LimitsPage::saveLimits()
{
    const QString path = m_desktop.chooseFileToSave(tr("Limits (*.csv);;All files (*)"), m_file);
    if (path.isEmpty())
        return;
    writeWholeFile(path, limitLinesAsCsv(m_measurement.limits()));
    m_file = path;
}

void LimitsPage::restore(const MeasureChoices &choices)
{
    m_beeps->setChecked(choices.beeps);
    m_margin->setValue(choices.limitMargin);
    if (!choices.limitsFile.isEmpty())
        m_boundary.run("loadLimits", [&] { takeFile(choices.limitsFile); });
    m_on->setChecked(choices.limits);
}

void LimitsPage::save(MeasureChoices &choices) const
{
    choices.limits = m_on->isChecked();
    choices.beeps = m_beeps->isChecked();
    choices.limitMargin = m_margin->value();
    choices.limitsFile = m_file;
}

} // namespace calvorn
