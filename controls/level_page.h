// SPDX-License-Identifier: MIT
#pragma once

#include "controls/generator_box.h"
#include "controls/level_box.h"
#include "platform/profile_file.h"
#include "protocol/setting_key.h"

#include <QVector>
#include <QWidget>

namespace calvorn {

// Level meter and generator, side by side in one page. Nothing of it runs while it is not seen: the meter stops with
// the page, and the generator is switched off.
class LevelPage : public QWidget
{
    Q_OBJECT

public:
    // generator: outlives the page, which switches it off when it is closed.
    LevelPage(const Configuration &configuration, Instrument &instrument, SignalGenerator &generator,
              Messages &messages, ErrorBoundary &boundary, QWidget *parent = nullptr);

    // The choices in the settings file; nothing is written that has not changed. False when it cannot be written.
    void restore(const QString &settingsFile);
    bool save(const QString &settingsFile);

    // Ends both. A hardware that does not answer is closed next, and says nothing.
    void shutDown();

    // The start frequency was put on the generator.
    void generatorParked();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    // A dialog has the hardware for itself.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void startReading();
    // A reading in sweeps would leave the generator somewhere in its range.
    void stopReading();
    void showPause(LevelReader::Pause why);

    ErrorBoundary &m_boundary;
    SignalGenerator &m_generator;
    LevelReader m_reader;
    QPointer<QWidget> m_window; // that is watched
    LevelBox *m_level;
    GeneratorBox *m_source;
    QVector<ProfileEntry> m_restored; // what save() would have written after restore()
};

// The keys of the settings that restore() and save() use.
QVector<SettingKey> levelKeys();

} // namespace calvorn
