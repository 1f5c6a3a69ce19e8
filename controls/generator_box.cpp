// SPDX-License-Identifier: MIT
#include "controls/generator_box.h"

#include "core/checked_arithmetic.h"
#include "core/number_text.h"
#include "widgets/named.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QScopeGuard>
#include <QVBoxLayout>

#include <algorithm>

namespace calvorn {

namespace {

constexpr double kLongestStep = 100e6; // Hz

} // namespace

GeneratorBox::GeneratorBox(const Configuration &configuration, SignalGenerator &generator, Messages &messages,
                           ErrorBoundary &boundary, QWidget *parent)
    : QGroupBox(tr("Generator"), parent)
    , m_configuration(configuration)
    , m_generator(generator)
    , m_messages(messages)
    , m_boundary(boundary)
{
    auto *column = new QVBoxLayout(this);
    buildFrequency();
    column->addWidget(m_frequency);
    buildButtons();
    buildMemories();
    m_state = named(new QLabel(this), "lblGenerator",
                    tr("State of the generator; a sweep, the meter or a setting ends its use as a signal source"));
    m_state->setWordWrap(true);
    column->addWidget(m_state);
    connect(&m_generator, &SignalGenerator::changed, this, [this] {
        showState();
        followGenerator();
    });
    restore({});
    showState();
}

void GeneratorBox::buildFrequency()
{
    m_frequency = new FrequencyBox("Generator", tr("Frequency - Hz"), tr("The frequency of the generator in Hz"),
                                   m_configuration, m_hertz, m_messages, this);
    m_boundary.connect(m_frequency->text(), &EntryBox::gotFocus, this, "txtGenerator_GotFocus",
                       [this] { m_frequency->enter(); });
    m_boundary.connect(m_frequency->text(), &EntryBox::lostFocus, this, "txtGenerator_LostFocus",
                       [this] { m_frequency->leave(); });
    m_boundary.connect(m_frequency->bars(), &DigitBars::changed, this, "VScrollGenerator_Change",
                       [this](int digit) { m_frequency->stepDigit(digit); });
    m_boundary.connect(m_frequency, &FrequencyBox::accepted, this, "txtGenerator_Change", [this] {
        m_generator.setFrequency(m_generator.withinLimits(m_hertz));
        emit frequencyChanged();
    });
}

void GeneratorBox::buildButtons()
{
    m_on = named(new QPushButton(tr("&Generator ON"), this), "cmdGenerator", tr("Switch the generator on or off"));
    m_on->setCheckable(true);
    m_boundary.connect(m_on, &QPushButton::clicked, this, "cmdGenerator_Click",
                       [this](bool on) { cmdGenerator_Click(on); });
    auto *down = named(new QPushButton(tr("&Down"), this), "cmdGeneratorDown", tr("One step down"));
    auto *up = named(new QPushButton(tr("U&p"), this), "cmdGeneratorUp", tr("One step up"));
    m_boundary.connect(down, &QPushButton::clicked, this, "cmdGeneratorDown_Click", [this] { cmdStep_Click(-1); });
    m_boundary.connect(up, &QPushButton::clicked, this, "cmdGeneratorUp_Click", [this] { cmdStep_Click(1); });
    m_stepBox = named(new EntryBox(this), "txtGeneratorStep", tr("Step of \"Up\" and \"Down\", in Hz"));
    m_boundary.connect(m_stepBox, &EntryBox::lostFocus, this, "txtGeneratorStep_LostFocus",
                       [this] { txtGeneratorStep_LostFocus(); });
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_on, 1);
    buttons->addWidget(down);
    buttons->addWidget(up);
    auto *form = new QFormLayout;
    form->addRow(tr("St&ep - Hz"), m_stepBox);
    auto *column = static_cast<QVBoxLayout *>(layout());
    column->addLayout(buttons);
    column->addLayout(form);
}

void GeneratorBox::buildMemories()
{
    m_memory = named(new QComboBox(this), "cboMemory",
                     tr("Stored frequencies: choose one to use it; to store another, type a name and press \"Keep\""));
    m_memory->setEditable(true);
    m_memory->setInsertPolicy(QComboBox::NoInsert);
    m_memory->setCompleter(nullptr);
    m_boundary.connect(m_memory, &QComboBox::activated, this, "cboMemory_Click",
                       [this](int index) { cboMemory_Click(index); });
    auto *keep = named(new QPushButton(tr("&Keep"), this), "cmdMemory",
                       tr("Store the frequency in the selected memory, with the name shown"));
    m_boundary.connect(keep, &QPushButton::clicked, this, "cmdMemory_Click", [this] { cmdMemory_Click(); });
    auto *row = new QHBoxLayout;
    row->addWidget(m_memory, 1);
    row->addWidget(keep);
    static_cast<QVBoxLayout *>(layout())->addLayout(row);
}

GeneratorBox::Choices GeneratorBox::choices() const
{
    return {m_hertz, m_step, m_memories};
}

void GeneratorBox::restore(const Choices &choices)
{
    m_memories = choices.memories;
    m_step = choices.step;
    m_stepBox->setText(NumberText().masked(m_step, kMaskHertz));
    showMemories();
    m_hertz = m_generator.withinLimits(choices.hertz);
    m_frequency->showFrequency();
    m_generator.setFrequency(m_hertz);
}

void GeneratorBox::followLimits()
{
    const std::int32_t limited = m_generator.withinLimits(m_hertz);
    if (limited != m_hertz)
        m_frequency->setFrequency(limited);
}

void GeneratorBox::txtGeneratorStep_LostFocus()
{
    const NumberText numbers;
    const bool isStep = numbers.isNumeric(m_stepBox->text());
    const double entered = isStep ? numbers.toDouble(m_stepBox->text()) : m_step;
    const double taken = std::clamp(entered, 1.0, kLongestStep);
    if (!isStep || taken != entered)
        m_messages.desktop().beep();
    m_step = roundToInteger<std::int32_t>(taken);
    m_stepBox->setText(numbers.masked(m_step, kMaskHertz));
}

void GeneratorBox::cmdGenerator_Click(bool on)
{
    const auto show = qScopeGuard([this] { showState(); }); // the click has already toggled the button
    on ? m_generator.switchOn() : m_generator.switchOff();
}

void GeneratorBox::cmdStep_Click(int direction)
{
    const double wanted = static_cast<double>(m_hertz) + direction * static_cast<double>(m_step);
    const std::int32_t hertz = m_generator.withinLimits(wanted);
    if (hertz != wanted)
        m_messages.desktop().beep();
    m_frequency->setFrequency(hertz);
}

void GeneratorBox::cboMemory_Click(int index)
{
    const Memory &memory = m_memories[static_cast<std::size_t>(index)];
    if (!memory.name.isEmpty())
        m_frequency->setFrequency(m_generator.withinLimits(memory.hertz));
}

void GeneratorBox::cmdMemory_Click()
{
    const int index = m_memory->currentIndex();
    if (index < 0)
        return;
    const QString typed = m_memory->currentText().simplified().remove(u';');
    const bool keepsName = typed.isEmpty() || typed == m_memory->itemText(index);
    Memory &memory = m_memories[static_cast<std::size_t>(index)];
    if (!keepsName)
        memory.name = typed;
    else if (memory.name.isEmpty())
        memory.name = NumberText().masked(m_hertz, kMaskHertz) + QStringLiteral(" Hz");
    memory.hertz = m_hertz;
    showMemories();
    m_memory->setCurrentIndex(index);
}

// Shows the generator's frequency, which a remote client may have changed.
void GeneratorBox::followGenerator()
{
    if (m_hertz == m_generator.frequency())
        return;
    m_hertz = m_generator.frequency();
    m_frequency->showFrequency();
}

void GeneratorBox::showMemories()
{
    const int index = std::max(m_memory->currentIndex(), 0);
    m_memory->clear();
    for (std::size_t i = 0; i < m_memories.size(); ++i)
        m_memory->addItem(m_memories[i].name.isEmpty() ? tr("Memory %1").arg(i + 1) : m_memories[i].name);
    m_memory->setCurrentIndex(index);
}

void GeneratorBox::showState()
{
    m_on->setChecked(m_generator.isOn());
    m_on->setText(m_generator.isOn() ? tr("&Generator OFF") : tr("&Generator ON"));
    if (!m_generator.fault().isEmpty()) {
        m_state->setText(m_generator.fault());
        return;
    }
    switch (m_generator.state()) {
    case SignalGenerator::State::On:
        m_state->setText(tr("The generator is on."));
        break;
    case SignalGenerator::State::Off:
        m_state->setText(tr("The generator is off."));
        break;
    case SignalGenerator::State::Elsewhere:
        m_state->setText(tr("The generator is not in use as a signal source."));
        break;
    }
}

} // namespace calvorn
