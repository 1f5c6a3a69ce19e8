// SPDX-License-Identifier: MIT
#pragma once

#include "controls/generator_box.h"
#include "controls/level_box.h"
#include "platform/profile_file.h"
#include "protocol/setting_key.h"

#include <QVector>
#include <QWidget>

namespace calvorn {

// The page with the level meter and the generator. Hiding the page stops the meter and switches the generator off.
class LevelPage : public QWidget
{
    Q_OBJECT

public:
    // generator: must outlive the page, which switches it off when hidden.
    LevelPage(const Configuration &configuration, Instrument &instrument, SignalGenerator &generator,
              Messages &messages, ErrorBoundary &boundary, QWidget *parent = nullptr);

    // Load and save the choices in the settings file. save() writes only what has changed and returns false if that
    // fails.
    void restore(const QString &settingsFile);
    bool save(const QString &settingsFile);

    // Stops the meter and the generator. Ignores errors, because the hardware is closed next.
    void shutDown();

    // Called when the start frequency has been sent to the generator: restores the page's own frequency.
    void generatorParked();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    // Stops the meter while a dialog uses the hardware.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void startReading();
    // Also switches the generator off if readings were made by sweeps, because a sweep can stop at any of its
    // frequencies.
    void stopReading();
    void stopBoth();
    void showPause(LevelReader::Pause why);

    ErrorBoundary &m_boundary;
    SignalGenerator &m_generator;
    LevelReader m_reader;
    QPointer<QWidget> m_window; // the window that has the event filter
    LevelBox *m_level;
    GeneratorBox *m_source;
    QVector<ProfileEntry> m_restored; // the entries after restore() or the last save()
};

// The settings keys used by restore() and save().
QVector<SettingKey> levelKeys();

} // namespace calvorn
