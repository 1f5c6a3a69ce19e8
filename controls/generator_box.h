// SPDX-License-Identifier: MIT
#pragma once

#include "controls/frequency_box.h"
#include "core/error_boundary.h"
#include "instrument/signal_generator.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include <array>

namespace calvorn {

// Controls the generator as a signal source: frequency, on and off, steps up and down, and ten named memories.
class GeneratorBox : public QGroupBox
{
    Q_OBJECT

public:
    static constexpr int kMemories = 10;

    struct Memory
    {
        QString name; // empty if the memory is unused
        std::int32_t hertz = 0;

        bool operator==(const Memory &) const = default;
    };

    // The state that is saved between runs.
    struct Choices
    {
        std::int32_t hertz = SignalGenerator::kUsualFrequency;
        std::int32_t step = 1000; // Hz
        std::array<Memory, kMemories> memories;

        bool operator==(const Choices &) const = default;
    };

    GeneratorBox(const Configuration &configuration, SignalGenerator &generator, Messages &messages,
                 ErrorBoundary &boundary, QWidget *parent = nullptr);

    Choices choices() const;
    void restore(const Choices &choices);

    std::int32_t frequency() const { return m_hertz; } // Hz

    // Applies the configured limits again, because they may have changed.
    void followLimits();

signals:
    void frequencyChanged();

private:
    void buildFrequency();
    void buildButtons();
    void buildMemories();
    void txtGeneratorStep_LostFocus();
    void cmdGenerator_Click(bool on);
    void cmdStep_Click(int direction);
    void cboMemory_Click(int index);
    void cmdMemory_Click();
    void showState();
    void followGenerator();
    void showMemories();

    const Configuration &m_configuration;
    SignalGenerator &m_generator;
    Messages &m_messages;
    ErrorBoundary &m_boundary;
    std::int32_t m_hertz = 0;
    std::int32_t m_step = 0;
    std::array<Memory, kMemories> m_memories;
    FrequencyBox *m_frequency = nullptr;
    EntryBox *m_stepBox = nullptr;
    QPushButton *m_on = nullptr;
    QComboBox *m_memory = nullptr;
    QLabel *m_state = nullptr;
};

} // namespace calvorn
