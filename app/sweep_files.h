// SPDX-License-Identifier: MIT
#pragma once

#include "controls/frequency_readouts.h"
#include "controls/range_entry.h"
#include "core/log.h"
#include "core/messages.h"
#include "data/sweep_table.h"

#include <QAction>
#include <QObject>

namespace calvorn {

// The components that an imported sweep changes.
struct SweepFilesComponents
{
    Configuration &configuration;
    SweepTable &table;
    RangeEntry &range;
    FrequencyReadouts &readouts;
};

// The "Export (.csv)" and "Import" commands of the File menu. Errors are logged and emitted by reported(), not shown in
// a box. An export replaces the file as a whole or not at all; an import that fails keeps the rows read so far.
class SweepFiles : public QObject
{
    Q_OBJECT

public:
    SweepFiles(const SweepFilesComponents &components, Messages &messages, Log &log, QObject *parent = nullptr);

    QAction *exportAction() const { return m_export; }
    QAction *importAction() const { return m_import; }

    void mnuSaveCSV_Click();
    void mnuOpenCSV_Click();

    // Execute the commands. Throw RuntimeError on failure.
    void exportSweep(const QString &path);
    void importSweep(const QString &path);

signals:
    // A message about the outcome of an export or import.
    void reported(const QString &text);

private:
    double voltsOf(int row) const;
    bool firstRowIsInVolts() const;
    void noteUnit();
    void offerAdjustment(const QString &path);
    void moveToImportedSweep();

    SweepFilesComponents m_components;
    Messages &m_messages;
    Log &m_log;
    QAction *m_export;
    QAction *m_import;
    QString m_lastFile; // suggested in the next file dialog
};

} // namespace calvorn
