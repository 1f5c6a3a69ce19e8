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

// The rooms that an imported sweep moves.
struct SweepFilesRooms
{
    Configuration &configuration;
    SweepTable &table;
    RangeEntry &range;
    FrequencyReadouts &readouts;
};

// The commands "Export (.csv)" and "Import" of the File menu. Neither shows a box on an error: the log and reported()
// tell.
// An export replaces the file whole or not at all; an import that fails half-way leaves the rows read so far.
class SweepFiles : public QObject
{
    Q_OBJECT

public:
    SweepFiles(const SweepFilesRooms &rooms, Messages &messages, Log &log, QObject *parent = nullptr);

    QAction *exportAction() const { return m_export; }
    QAction *importAction() const { return m_import; }

    void mnuSaveCSV_Click();
    void mnuOpenCSV_Click();

    // What the commands do with the file. RuntimeError where it cannot be done.
    void exportSweep(const QString &path);
    void importSweep(const QString &path);

signals:
    // What has become of an export or an import, in words.
    void reported(const QString &text);

private:
    double voltsOf(int row) const;
    bool firstRowIsInVolts() const;
    void noteUnit();
    void offerAdjustment(const QString &path);
    void moveToImportedSweep();

    SweepFilesRooms m_rooms;
    Messages &m_messages;
    Log &m_log;
    QAction *m_export;
    QAction *m_import;
    QString m_lastFile; // offered again
};

} // namespace calvorn
