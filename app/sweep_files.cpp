// SPDX-License-Identifier: MIT
#include "app/sweep_files.h"

#include "core/checked_arithmetic.h"
#include "core/common_functions.h"
#include "core/number_text.h"
#include "core/scale_type.h"
#include "core/whole_file.h"
#include "data/amplitude_writer.h"
#include "data/sweep_csv.h"
#include "widgets/entry_box.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace calvorn {

SweepFiles::SweepFiles(const SweepFilesComponents &components, Messages &messages, Log &log, QObject *parent)
    : QObject(parent)
    , m_components(components)
    , m_messages(messages)
    , m_log(log)
    , m_export(new QAction(tr("&Export (.csv)"), this))
    , m_import(new QAction(tr("&Import"), this))
{
    m_export->setObjectName(QStringLiteral("mnuSaveCSV"));
    m_export->setShortcut(QKeySequence::Save);
    m_export->setToolTip(tr("Export the sweep to a file"));
    m_import->setObjectName(QStringLiteral("mnuOpenCSV"));
    m_import->setShortcut(QKeySequence::Open);
    m_import->setToolTip(tr("Import a sweep from a file"));
    connect(m_export, &QAction::triggered, this, &SweepFiles::mnuSaveCSV_Click);
    connect(m_import, &QAction::triggered, this, &SweepFiles::mnuOpenCSV_Click);
}

void SweepFiles::mnuSaveCSV_Click()
{
    // Suggest the last folder, but not the last name.
    const QString folder = QFileInfo(m_lastFile).path();
    const QString path =
        m_messages.desktop().chooseFileToSave(tr("Sweep files (*.csv)"), m_lastFile.isEmpty() ? QString() : folder);
    if (path.isEmpty())
        return;
    const QString name = QFileInfo(path).fileName();
    try {
        exportSweep(path);
        emit reported(tr("%1 rows written to %2").arg(NumberText::fromInteger(kSweepPoints), name));
    } catch (const RuntimeError &error) {
        m_log.writeLog(tr("Export: ") + error.message());
        emit reported(tr("%1 not exported: %2").arg(name, error.message()));
    }
}

void SweepFiles::exportSweep(const QString &path)
{
    writeWholeFile(path, sweepAsCsv(m_components.table));
    m_lastFile = path;
}

void SweepFiles::mnuOpenCSV_Click()
{
    // With a global menu bar, no click in the window commits a pending entry first.
    EntryBox::commitPending();
    const QString path = m_messages.desktop().chooseFileToOpen(tr("Sweep files (*.csv)"), m_lastFile);
    if (path.isEmpty())
        return;
    m_lastFile = path;
    const QString name = QFileInfo(path).fileName();
    try {
        importSweep(path);
        emit reported(tr("%1 rows imported from %2").arg(NumberText::fromInteger(kSweepPoints), name));
    } catch (const RuntimeError &error) {
        // Keep and show the rows read before the error.
        m_components.table.cellsWritten();
        m_log.writeLog(tr("Import: ") + error.message());
        emit reported(tr("%1 not imported: %2").arg(name, error.message()));
    }
}

void SweepFiles::importSweep(const QString &path)
{
    // Opening a pipe would block until its other end is opened.
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile())
        throw RuntimeError(RuntimeError::Kind::File, path + tr(": it is not a file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw RuntimeError(RuntimeError::Kind::File, path + QStringLiteral(": ") + file.errorString());
    readSweepCsv(file, m_components.table);
    file.close();
    offerAdjustment(path);
    noteUnit();
    moveToImportedSweep();
}

double SweepFiles::voltsOf(int row) const
{
    const double count = m_components.table.number(row, SweepTable::SampleColumn);
    const Configuration &c = m_components.configuration;
    const double volts = roundToDecimals(count * static_cast<double>(c.adcStep) + static_cast<double>(c.adcOffset), 3);
    const DetectorLaw &law = lawInForce(c);
    return law.kind == DetectorLaw::Kind::Linear ? volts : roundToDecimals(law.inputVolts(volts), 3);
}

bool SweepFiles::firstRowIsInVolts() const
{
    return voltsOf(1) == m_components.table.number(1, SweepTable::AmplitudeColumn);
}

// The file does not state its scale, and an import does not change the current scale.
void SweepFiles::noteUnit()
{
    if (!isLinearScale(m_components.configuration.scaleType) && firstRowIsInVolts())
        m_log.writeLog(tr("Import: ") + tr("the amplitudes are in volts, but the scale is in dB"));
}

// Uses row 1 to check whether the file was made with the current detector calibration.
void SweepFiles::offerAdjustment(const QString &path)
{
    const NumberText numbers;
    SweepTable &table = m_components.table;
    if (firstRowIsInVolts())
        return;
    const QString text = tr("This file was created with a different ADC step or offset.") + u'\r' +
                         tr("Press OK to adjust amplitude to the current configuration,") + u'\r' +
                         tr("CANCEL to keep the original values.");
    if (m_messages.show(BoxIcon::Warning, BoxButtons::OkCancel, text, path) != kBoxOk)
        return;
    for (int row = 1; row <= kSweepPoints; ++row) {
        const auto volts = static_cast<float>(voltsOf(row));
        table.setText(row, SweepTable::AmplitudeColumn, numbers.masked(static_cast<double>(volts), kMaskVolt));
    }
}

// Plans the range from the first to the last row of the imported sweep, without changing the table. Restores the
// previous range if planning fails.
void SweepFiles::moveToImportedSweep()
{
    const NumberText numbers;
    Configuration &c = m_components.configuration;
    SweepTable &table = m_components.table;
    const std::int32_t start = table.frequency(1);
    const std::int32_t stop = table.frequency(kSweepPoints);
    const std::int32_t formerStart = std::exchange(c.startFreq, start);
    const std::int32_t formerStop = std::exchange(c.stopFreq, stop);
    try {
        m_components.range.planWithoutTable();
    } catch (const RuntimeError &) {
        c.startFreq = formerStart;
        c.stopFreq = formerStop;
        throw;
    }
    const double centre = roundHalfEven(checkedSubtract(c.stopFreq, c.startFreq) / 2.0 + c.startFreq);
    m_components.readouts.show(numbers.masked(c.startFreq, kMaskHertz), numbers.masked(centre, kMaskHertz),
                               numbers.masked(c.stopFreq, kMaskHertz));
    // Do this last, so that receivers of the table's signal see the new plan.
    const bool follows = amplitudesFollowFromCounts(table, c);
    table.sweepWritten(SweepOrigin::Imported, follows ? std::optional(detectorOf(c)) : std::nullopt);
}

} // namespace calvorn
