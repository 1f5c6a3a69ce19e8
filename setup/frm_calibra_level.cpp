// SPDX-License-Identifier: MIT
#include "setup/frm_calibra_level.h"

#include "core/detector_calibration.h"
#include "core/detector_settings.h"
#include "core/number_text.h"
#include "data/amplitude_writer.h"
#include "widgets/named.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QHeaderView>
#include <QScrollBar>
#include <QShowEvent>

#include <algorithm>
#include <cmath>
#include <set>

namespace calvorn {

namespace {

constexpr double kLowestDbm = -120.0;
constexpr double kHighestDbm = 60.0;
constexpr double kMostAttenuation = 150.0; // dB
constexpr double kSameLevel = 0.005;       // dB

RealSpinBox *levelBox(const char *name, const QString &toolTip, double lowest, double highest, QWidget *parent)
{
    auto *box = named(new RealSpinBox(parent), name, toolTip);
    box->setRange(lowest, highest);
    box->setDecimals(2);
    return box;
}

} // namespace

FrmCalibraLevel::FrmCalibraLevel(Configuration &configuration, Instrument &instrument, ErrorBoundary &boundary,
                                 QWidget *parent)
    : QDialog(parent)
    , m_configuration(configuration)
    , m_instrument(instrument)
    , m_boundary(boundary)
    , m_reader(instrument)
    , m_known(levelBox("spinKnownLevel", tr("Level of the source, in dBm into 50 ohms"), kLowestDbm, kHighestDbm, this))
    , m_attenuator(
          levelBox("spinStep", tr("Attenuation between source and detector, in dB"), 0.0, kMostAttenuation, this))
    , m_measure(named(new QPushButton(tr("&Measure"), this), "cmdMeasure",
                      tr("Read the detector %1 times at this level").arg(kReadings)))
{
    setObjectName(QStringLiteral("frmCalibraLevel"));
    setWindowTitle(tr("Level calibration"));
    auto *instructions =
        new QLabel(tr("1. Connect a source of known level to the detector, through a step attenuator.") + u'\n' +
                       tr("2. Enter its level and the attenuation, and press \"Measure\".") + u'\n' +
                       tr("3. Repeat this with the next step. A logarithmic law needs two points, a table three.") +
                       u'\n' + tr("You can use the board's generator as the source: it is set to the start frequency."),
                   this);
    instructions->setWordWrap(true);
    auto *grid = new QGridLayout(this);
    grid->addWidget(instructions, 0, 0, 1, 2);
    grid->addLayout(buildEntries(), 1, 0);
    grid->addLayout(buildPoints(), 1, 1, 2, 1);
    m_curve = new LevelCurve(this);
    m_curve->setObjectName(QStringLiteral("picLevel"));
    grid->addWidget(m_curve, 2, 0);
    m_message = named(new QLabel(this), "lblTold", tr("Result of the last measurement"));
    m_message->setWordWrap(true);
    grid->addWidget(m_message, 3, 0, 1, 2);
    grid->addLayout(buildButtons(), 4, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    m_boundary.connect(m_measure, &QPushButton::clicked, this, "cmdMeasure_Click", [this] { cmdMeasure_Click(); });
    m_boundary.connect(&m_reader, &LevelReader::taken, this, "LevelReader_Taken",
                       [this](const LevelReading &reading) { take(reading); });
    m_boundary.connect(&m_reader, &LevelReader::failed, this, "LevelReader_Failed",
                       [this](const QString &reason) { measuringEnded(reason); });
    m_boundary.connect(&m_reader, &LevelReader::paused, this, "LevelReader_Paused", [this](LevelReader::Pause why) {
        if (why == LevelReader::Pause::Sweep)
            measuringEnded(tr("A sweep is running: stop it first."));
        else if (why == LevelReader::Pause::NotConnected)
            measuringEnded(tr("The hardware is not connected."));
        else if (why == LevelReader::Pause::NoLevel)
            measuringEnded(tr("The instrument measures the phase: choose RetLoss or DUT."));
    });
}

QLayout *FrmCalibraLevel::buildEntries()
{
    auto *form = new QFormLayout;
    form->addRow(tr("&Source - dBm"), m_known);
    form->addRow(tr("A&ttenuator - dB"), m_attenuator);
    form->addRow(m_measure);
    m_measure->setAutoDefault(false);
    m_log =
        named(new QRadioButton(tr("&Logarithmic"), this), "optLog", tr("Slope and intercept that fit the points best"));
    m_table = named(new QRadioButton(tr("Ta&ble"), this), "optTable",
                    tr("The measured points, with interpolation between them"));
    for (QRadioButton *option : {m_log, m_table}) {
        form->addRow(option);
        m_boundary.connect(option, &QRadioButton::clicked, this, "optLaw_Click", [this] { showPoints(); });
    }
    return form;
}

QLayout *FrmCalibraLevel::buildPoints()
{
    auto *column = new QVBoxLayout;
    m_list = named(new QTableWidget(0, 4, this), "lstPoints",
                   tr("The measured points, and the error of the law at each of them"));
    m_list->setHorizontalHeaderLabels({tr("dBm"), tr("mV"), tr("Spread - mV"), tr("Error - dB")});
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->verticalHeader()->hide();
    QHeaderView *header = m_list->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Stretch);
    int widest = 0;
    for (int section = 0; section < header->count(); ++section)
        widest = std::max(widest, header->sectionSizeHint(section));
    m_list->setMinimumWidth(header->count() * widest + 2 * m_list->frameWidth() +
                            m_list->verticalScrollBar()->sizeHint().width());
    m_remove = named(new QPushButton(tr("&Remove"), this), "cmdRemove", tr("Remove the selected points"));
    m_remove->setAutoDefault(false);
    m_boundary.connect(m_remove, &QPushButton::clicked, this, "cmdRemove_Click", [this] { cmdRemove_Click(); });
    m_result = named(new QLabel(this), "lblResult", tr("The law calculated from the points"));
    m_result->setWordWrap(true);
    column->addWidget(m_list, 1);
    column->addWidget(m_remove);
    column->addWidget(m_result);
    return column;
}

QLayout *FrmCalibraLevel::buildButtons()
{
    m_apply = named(new QPushButton(tr("&Apply"), this), "cmdApply", tr("Use this law and save it in the settings"));
    auto *cancel = named(new QPushButton(tr("&Cancel"), this), "cmdCancel", tr("Close without changes"));
    for (QPushButton *button : {m_apply, cancel})
        button->setAutoDefault(false);
    m_boundary.connect(m_apply, &QPushButton::clicked, this, "cmdApply_Click", [this] { cmdApply_Click(); });
    m_boundary.connect(cancel, &QPushButton::clicked, this, "cmdCancel_Click", [this] { reject(); });
    auto *row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(m_apply);
    row->addWidget(cancel);
    return row;
}

void FrmCalibraLevel::showEvent(QShowEvent *event)
{
    if (!event->spontaneous())
        m_boundary.run("Form_Load", [this] { load(); });
    QDialog::showEvent(event);
}

void FrmCalibraLevel::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous())
        m_reader.stop();
    QDialog::hideEvent(event);
}

void FrmCalibraLevel::load()
{
    m_points.clear();
    (m_configuration.detectorLaw.kind == DetectorLaw::Kind::Table ? m_table : m_log)->setChecked(true);
    m_message->clear();
    m_measure->setEnabled(true);
    showPoints();
}

void FrmCalibraLevel::cmdMeasure_Click()
{
    m_measured = m_known->value() - m_attenuator->value();
    m_measure->setEnabled(false);
    m_message->setText(tr("Reading the detector ..."));
    m_reader.start(m_configuration.startFreq, kReadings);
}

void FrmCalibraLevel::measuringEnded(const QString &message)
{
    m_reader.stop();
    m_measure->setEnabled(true);
    m_message->setText(message);
}

// A new point replaces any earlier point at the same level.
void FrmCalibraLevel::take(const LevelReading &reading)
{
    const DetectorCalibration detector = detectorOf(m_configuration);
    const CalibrationPoint point{m_measured, detector.detectorVolts(reading.count),
                                 reading.spread * static_cast<double>(detector.step)};
    measuringEnded(
        tr("%1 readings: %2 mV").arg(reading.readings).arg(NumberText().masked(point.volts * kMillivolts, kMaskDb)));
    std::erase_if(m_points, [&](const CalibrationPoint &p) { return std::abs(p.dBm - point.dBm) < kSameLevel; });
    m_points.push_back(point);
    std::ranges::sort(m_points, std::greater(), &CalibrationPoint::dBm);
    showPoints();
}

void FrmCalibraLevel::cmdRemove_Click()
{
    std::set<int, std::greater<>> rows;
    for (const QModelIndex &index : m_list->selectionModel()->selectedRows())
        rows.insert(index.row());
    for (const int row : rows)
        m_points.erase(m_points.begin() + row);
    showPoints();
}

std::optional<DetectorLaw> FrmCalibraLevel::law() const
{
    return m_log->isChecked() ? logLawOf(m_points) : tableLawOf(m_points);
}

QString FrmCalibraLevel::lawText(const std::optional<DetectorLaw> &law) const
{
    const std::size_t needed = m_log->isChecked() ? kFewestLogPoints : kFewestTablePoints;
    if (m_points.size() < needed)
        return tr("Points still needed: %1").arg(needed - m_points.size());
    if (m_points.size() > DetectorLaw::kMostPoints && !m_log->isChecked())
        return tr("A table has at most %1 points.").arg(DetectorLaw::kMostPoints);
    if (!law && m_log->isChecked())
        return tr("The best-fit line has a slope outside 1 to 1000 mV per dB, or an intercept beyond ±200 dBm: no law "
                  "can be calculated.");
    if (!law)
        return tr("The voltage does not rise or fall steadily with the level: no law can be calculated.");
    if (law->kind == DetectorLaw::Kind::Table)
        return tr("%1 points").arg(law->points().size());
    double worst = 0.0;
    for (const CalibrationPoint &point : m_points)
        worst = std::max(worst, std::abs(residualOf(*law, point)));
    const NumberText numbers;
    const QString error = tr("largest error %1 dB").arg(numbers.masked(worst, kMaskFixed));
    return tr("%1 mV per dB, intercept %2 dBm, %3")
        .arg(numbers.masked(law->slope, kMaskVolt), numbers.masked(law->intercept, kMaskVolt), error);
}

void FrmCalibraLevel::showPoints()
{
    const std::optional<DetectorLaw> law = this->law();
    const NumberText numbers;
    m_list->setRowCount(static_cast<int>(m_points.size()));
    for (int row = 0; row < m_list->rowCount(); ++row) {
        const CalibrationPoint &point = m_points[static_cast<std::size_t>(row)];
        const QStringList cells{numbers.masked(point.dBm, kMaskFixed),
                                numbers.masked(point.volts * kMillivolts, kMaskDb),
                                numbers.masked(point.spread * kMillivolts, kMaskFixed),
                                law ? numbers.masked(residualOf(*law, point), kMaskFixed) : QStringLiteral("–")};
        for (int column = 0; column < cells.size(); ++column) {
            auto *cell = new QTableWidgetItem(cells[column]);
            cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            m_list->setItem(row, column, cell);
        }
    }
    m_result->setText(lawText(law));
    m_curve->show(m_points, law);
    m_apply->setEnabled(law.has_value());
    m_remove->setEnabled(!m_points.empty());
}

void FrmCalibraLevel::cmdApply_Click()
{
    const std::optional<DetectorLaw> made = law();
    if (!made)
        return;
    DetectorLaw wanted = m_configuration.detectorLaw;
    wanted.kind = made->kind;
    if (made->kind == DetectorLaw::Kind::Log) {
        wanted.slope = made->slope;
        wanted.intercept = made->intercept;
    } else {
        wanted.setPoints(made->points());
    }
    writeDetectorLaw(wanted, m_configuration.iniPath);
    m_configuration.detectorLaw = wanted;
    rewriteAmplitudes(m_configuration, m_instrument.table());
    accept();
}

} // namespace calvorn
