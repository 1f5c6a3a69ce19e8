// SPDX-License-Identifier: MIT
#include "controls/level_page.h"

#include "core/number_text.h"
#include "core/runtime_error.h"
#include "core/setting_reader.h"
#include "core/settings_table.h"

#include <QHideEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace calvorn {

namespace {

constexpr SettingKey kAttenuator{"Level", "Attenuator", "0"};         // dB
constexpr SettingKey kFrequency{"Generator", "Frequency", "7000000"}; // Hz
constexpr SettingKey kStep{"Generator", "Step", "1000"};              // Hz
// "name;Hz"
constexpr std::array<const char *, GeneratorBox::kMemories> kMemoryKeys{"Memory 1", "Memory 2", "Memory 3", "Memory 4",
                                                                        "Memory 5", "Memory 6", "Memory 7", "Memory 8",
                                                                        "Memory 9", "Memory 10"};

struct LevelChoices
{
    double attenuator = 0.0;
    GeneratorBox::Choices generator;
};

LevelChoices readChoices(const QString &settingsFile)
{
    SettingReader reader(settingsFile, SettingReader::Defaults::KeepOut);
    LevelChoices choices;
    reader.read(choices.attenuator, kAttenuator);
    reader.read(choices.generator.hertz, kFrequency);
    reader.read(choices.generator.step, kStep);
    choices.generator.step = std::max(choices.generator.step, 1);
    for (std::size_t i = 0; i < kMemoryKeys.size(); ++i) {
        const QString both = reader.text({"Generator", kMemoryKeys[i], ""});
        bool isNumber = false;
        const std::int32_t hertz = both.section(u';', 1).toInt(&isNumber);
        if (isNumber)
            choices.generator.memories[i] = {both.section(u';', 0, 0), hertz};
    }
    return choices;
}

QVector<ProfileEntry> entriesOf(const LevelChoices &choices)
{
    const NumberText numbers;
    const auto entry = [](const SettingKey &key, const QString &value) {
        return ProfileEntry{QString::fromLatin1(key.section), QString::fromLatin1(key.name), value};
    };
    QVector<ProfileEntry> entries{entry(kAttenuator, settingText(numbers, choices.attenuator)),
                                  entry(kFrequency, settingText(numbers, choices.generator.hertz)),
                                  entry(kStep, settingText(numbers, choices.generator.step))};
    for (std::size_t i = 0; i < kMemoryKeys.size(); ++i) {
        const GeneratorBox::Memory &memory = choices.generator.memories[i];
        if (!memory.name.isEmpty())
            entries.append(
                entry({"Generator", kMemoryKeys[i], ""}, memory.name + u';' + QString::number(memory.hertz)));
    }
    return entries;
}

} // namespace

QVector<SettingKey> levelKeys()
{
    QVector<SettingKey> keys{kAttenuator, kFrequency, kStep};
    for (const char *name : kMemoryKeys)
        keys.push_back({"Generator", name, ""});
    return keys;
}

LevelPage::LevelPage(const Configuration &configuration, Instrument &instrument, SignalGenerator &generator,
                     Messages &messages, ErrorBoundary &boundary, QWidget *parent)
    : QWidget(parent)
    , m_boundary(boundary)
    , m_generator(generator)
    , m_reader(instrument, &m_generator, this)
    , m_level(new LevelBox(configuration, this))
    , m_source(new GeneratorBox(configuration, m_generator, messages, boundary, this))
{
    setObjectName(QStringLiteral("pageLevel"));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(2, 2, 2, 2);
    column->addWidget(m_level);
    column->addWidget(m_source);
    column->addStretch();
    connect(&m_reader, &LevelReader::taken, m_level, &LevelBox::show);
    connect(&m_reader, &LevelReader::paused, this, &LevelPage::showPause);
    connect(&m_reader, &LevelReader::failed, m_level, &LevelBox::showPause);
    connect(m_source, &GeneratorBox::frequencyChanged, this, [this] {
        if (m_reader.isRunning())
            startReading();
    });
    m_boundary.connect(m_level, &LevelBox::held, this, "cmdHold_Click",
                       [this](bool on) { on ? stopReading() : startReading(); });
}

void LevelPage::restore(const QString &settingsFile)
{
    const LevelChoices choices = readChoices(settingsFile);
    m_level->setAttenuator(choices.attenuator);
    m_source->restore(choices.generator);
    m_restored = entriesOf({m_level->attenuator(), m_source->choices()});
}

// Values changed by rounding in the boxes or by the limits are not the user's choice and are not saved.
bool LevelPage::save(const QString &settingsFile)
{
    const QVector<ProfileEntry> entries = entriesOf({m_level->attenuator(), m_source->choices()});
    QVector<ProfileEntry> changed;
    std::ranges::copy_if(entries, std::back_inserter(changed),
                         [this](const ProfileEntry &entry) { return !m_restored.contains(entry); });
    if (!changed.isEmpty() && !writeProfileStrings(settingsFile, changed))
        return false;
    m_restored = entries;
    return true;
}

void LevelPage::showPause(LevelReader::Pause why)
{
    switch (why) {
    case LevelReader::Pause::None:
        m_level->showPause({});
        break;
    case LevelReader::Pause::Sweep:
        m_level->showPause(tr("A sweep is running: the meter continues afterwards."));
        break;
    case LevelReader::Pause::NotConnected:
        m_level->showPause(tr("The hardware is not connected."));
        break;
    case LevelReader::Pause::NoLevel:
        m_level->showPause(tr("The instrument measures the phase: choose RetLoss or DUT."));
        break;
    case LevelReader::Pause::Generator:
        m_level->showPause(tr("The generator is on: this interface reads the detector only during sweeps."));
        break;
    }
}

void LevelPage::startReading()
{
    if (!m_level->isHeld())
        m_reader.start(m_generator.frequency());
}

void LevelPage::stopReading()
{
    const bool isSweeping = m_reader.isSweeping();
    m_reader.stop();
    if (isSweeping)
        m_generator.switchOff();
}

void LevelPage::stopBoth()
{
    stopReading();
    if (m_generator.isOn())
        m_generator.switchOff();
}

void LevelPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (event->spontaneous())
        return;
    if (m_window)
        m_window->removeEventFilter(this);
    m_window = window();
    m_window->installEventFilter(this);
    startReading();
}

bool LevelPage::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::WindowBlocked)
        m_reader.stop();
    else if (event->type() == QEvent::WindowUnblocked)
        m_boundary.run("Level_Unblocked", [this] {
            m_source->followLimits();
            if (isVisible())
                startReading();
        });
    return QWidget::eventFilter(watched, event);
}

void LevelPage::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous())
        m_boundary.run("Level_Hide", [this] { stopBoth(); });
}

void LevelPage::shutDown()
{
    try {
        stopBoth();
    } catch (const RuntimeError &) {
        // The hardware is closed next, so ignore the error.
    }
}

void LevelPage::generatorParked()
{
    m_boundary.run("Level_Resume", [this] { m_generator.resume(); });
}

} // namespace calvorn
