// SPDX-License-Identifier: MIT
#include "setup/dds_page.h"

#include "core/checked_arithmetic.h"
#include "core/number_text.h"
#include "setup/chip_limits.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QSignalBlocker>

#include <limits>

namespace calvorn {

namespace {

constexpr double kLowestClock = 1e6;  // Hz, of the reference clock
constexpr double kHighestClock = 1e9; // Hz
constexpr int kLowestMultiplier = factsOf(DdsChip::Ad9951).multiplierLow;
constexpr int kHighestMultiplier = factsOf(DdsChip::Ad9951).multiplierHigh;
constexpr std::int16_t kTimesSix = factsOf(DdsChip::Ad9851).multiplierLow;
constexpr int kTextMargin = 5; // logical pixels, around the text in a box
constexpr DisplayMask kMaskOffset{"##0.000"};

// The widest number in the boxes of this page.
QString widestNumber()
{
    return NumberText().masked(std::numeric_limits<std::int32_t>::max(), kMaskMegahertz);
}

enum Chip { Ad9850, Ad9851, Ad9951 };

} // namespace

DdsPage::DdsPage(const SetUpContext &context)
    : SetUpPage(context, tr("Synthesiser"))
{
    auto *left = new QVBoxLayout;
    left->addWidget(buildChips());
    left->addStretch();
    auto *right = new QVBoxLayout;
    right->addWidget(buildChipFrames());
    right->addWidget(buildLimits());
    right->addStretch();
    auto *columns = new QHBoxLayout(this);
    columns->addLayout(left);
    columns->addLayout(right, 1);
}

QWidget *DdsPage::buildChips()
{
    const std::array<QString, kDdsDevices.size()> captions{tr("AD985&0"), tr("AD985&1"), tr("AD99&51")};
    const std::array<QString, kDdsDevices.size()> toolTips{
        tr("System clock up to 125 MHz, useful up to 40 MHz"),
        tr("System clock up to 180 MHz with its six-fold multiplier, useful up to 70 MHz"),
        tr("System clock up to 400 MHz with its multiplier of 4 to 20, useful up to 160 MHz")};
    auto *frame = new QGroupBox(tr("DDS chip"), this);
    auto *column = new QVBoxLayout(frame);
    for (std::size_t chip = 0; chip < m_optChip.size(); ++chip) {
        m_optChip[chip] = named(new QRadioButton(captions[chip], frame),
                                QStringLiteral("optDDSselect_%1").arg(chip + 1), toolTips[chip]);
        column->addWidget(m_optChip[chip]);
        boundary().connect(m_optChip[chip], &QRadioButton::clicked, this, "optDDSselect_Click",
                           [this, chip] { optDDSselect_Click(chip); });
    }
    return frame;
}

QWidget *DdsPage::buildChipFrames()
{
    auto *place = new QWidget(this);
    auto *grid = new QGridLayout(place);
    grid->setContentsMargins(0, 0, 0, 0);
    for (std::size_t chip = 0; chip < m_chipFrames.size(); ++chip) {
        m_chipFrames[chip] = makeChipFrame(chip);
        grid->addWidget(m_chipFrames[chip], 0, 0);
    }
    m_timesSix = named(new QCheckBox(tr("Reference clock multiplier × &6"), m_chipFrames[Ad9851]),
                       QStringLiteral("optDDSx6"), tr("The chip multiplies the reference clock by 6"));
    m_chipFrames[Ad9851]->layout()->addWidget(m_timesSix);
    m_chipFrames[Ad9951]->layout()->addWidget(buildMultiplier9951());
    for (QGroupBox *frame : m_chipFrames)
        static_cast<QVBoxLayout *>(frame->layout())->addStretch();
    boundary().connect(m_timesSix, &QCheckBox::clicked, this, "optDDSx6_Click", [this] { multiplierChosen(); });
    return place;
}

QGroupBox *DdsPage::makeChipFrame(std::size_t chip)
{
    const QString name = QString::fromLatin1(kDdsDevices[chip]);
    auto *frame = new QGroupBox(name, this);
    frame->setObjectName(QStringLiteral("frm") + name);
    QSizePolicy policy = frame->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    frame->setSizePolicy(policy);
    new QVBoxLayout(frame);
    addClock(chip, frame);
    return frame;
}

void DdsPage::addClock(std::size_t chip, QGroupBox *frame)
{
    const QString number = QString::fromLatin1(kDdsDevices[chip]).mid(2);
    auto *box = named(new EntryBox(frame), QStringLiteral("txtClk") + number,
                      tr("Frequency of the crystal oscillator on the board, in Hz"), tr("Reference clock in Hz"));
    auto *label = new QLabel(tr("&Reference clock - Hz"), frame);
    label->setObjectName(chip == Ad9850 ? QStringLiteral("Xtal_label") : QStringLiteral("Xtal_label") + number);
    label->setBuddy(box);
    auto *row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(box);
    row->addStretch();
    fitToNumber(box, widestNumber());
    static_cast<QVBoxLayout *>(frame->layout())->addLayout(row);
    m_clocks[chip] = new NumberEntry(box, NumberEntry::Kind::Whole,
                                     {[this] { return NumberText().masked(values().ddsXtalFreq, kMaskMegahertz); },
                                      [this](double hertz) {
                                          values().ddsXtalFreq = roundToInteger<std::int32_t>(hertz);
                                          showClock();
                                      },
                                      [] { return std::pair(kLowestClock, kHighestClock); }},
                                     messages(), boundary());
}

QWidget *DdsPage::buildMultiplier9951()
{
    auto *place = new QWidget(this);
    auto *grid = new QGridLayout(place);
    grid->setContentsMargins(0, 0, 0, 0);
    m_optMultiplier[0] = named(new QRadioButton(tr("&No multiplier"), place), QStringLiteral("optMultiplier_0"),
                               tr("The reference clock is the system clock"));
    m_optMultiplier[1] = named(new QRadioButton(tr("M&ultiplier"), place), QStringLiteral("optMultiplier_1"),
                               tr("The chip multiplies the reference clock by 4 to 20"));
    m_multiplier = named(new QScrollBar(Qt::Horizontal, place), QStringLiteral("HScroll1"),
                         tr("Factor of the multiplier, 4 to 20"), tr("Factor of the multiplier"));
    m_multiplier->setRange(kLowestMultiplier, kHighestMultiplier);
    m_multiplier->setPageStep(4);
    // The right arrow key must increase the factor, like the right arrow of the bar.
    m_multiplier->setInvertedControls(false);
    m_multiplier->setFocusPolicy(Qt::StrongFocus);
    m_multiplierText = named(new QLabel(place), QStringLiteral("lblMultiplier"), tr("Factor of the multiplier"));
    m_multiplierText->setMinimumWidth(m_multiplierText->fontMetrics().horizontalAdvance(QStringLiteral("× 20 ")));
    grid->addWidget(m_optMultiplier[0], 0, 0);
    grid->addWidget(m_optMultiplier[1], 1, 0);
    grid->addWidget(m_multiplier, 1, 1);
    grid->addWidget(m_multiplierText, 1, 2);
    grid->setColumnStretch(1, 1);
    for (QRadioButton *option : m_optMultiplier)
        boundary().connect(option, &QRadioButton::clicked, this, "optMultiplier_Click", [this] { multiplierChosen(); });
    boundary().connect(m_multiplier, &QScrollBar::valueChanged, this, "HScroll1_Change", [this] { HScroll1_Change(); });
    return place;
}

NumberEntry *DdsPage::addLimit(const char *name, const QString &toolTip, const QString &accessibleName,
                               const NumberEntry::Binding &binding)
{
    auto *box = named(new EntryBox(this), QString::fromLatin1(name), toolTip, accessibleName);
    fitToNumber(box, widestNumber());
    return new NumberEntry(box, NumberEntry::Kind::Whole, binding, messages(), boundary());
}

// The limits always leave room for a sweep between them.
QWidget *DdsPage::buildLimits()
{
    m_maximum =
        addLimit("txtMaxFreq", tr("The highest frequency that can be entered, in Hz"), tr("Maximum frequency in Hz"),
                 {[this] { return NumberText().masked(values().ddsMaxFreq, kMaskMegahertz); },
                  [this](double hertz) {
                      values().ddsMaxFreq = roundToInteger<std::int32_t>(hertz);
                      showClock();
                  },
                  [this] {
                      return std::pair(static_cast<double>(values().ddsMinFreq) + kMinSweepRange,
                                       static_cast<double>(std::numeric_limits<std::int32_t>::max()));
                  }});
    m_minimum =
        addLimit("txtMinFreq", tr("The lowest frequency that can be entered, in Hz"), tr("Minimum frequency in Hz"),
                 {[this] { return NumberText().masked(values().ddsMinFreq, kMaskHertz); },
                  [this](double hertz) { values().ddsMinFreq = roundToInteger<std::int32_t>(hertz); },
                  [this] { return std::pair(1.0, static_cast<double>(values().ddsMaxFreq) - kMinSweepRange); }});
    m_systemClock =
        named(new QLabel(this), QStringLiteral("Label4"), tr("Reference clock × multiplier"), tr("System clock in Hz"));
    m_verdict = named(new QLabel(this), QStringLiteral("Label10"), tr("Specified limits of the chip"),
                      tr("Limits of the chip"));
    wrapping(m_verdict);
    m_verdict->setMinimumHeight(m_verdict->fontMetrics().lineSpacing() * 3);
    m_verdict->setAlignment(Qt::AlignTop);
    m_offset = named(new QLabel(this), QStringLiteral("lblOffsetDDS"),
                     tr("Set by \"SetUp/Calibrate generator\"; added to every frequency"));
    auto *place = new QGroupBox(tr("Clock and limits"), this);
    auto *form = new QFormLayout(place);
    form->addRow(tr("System clock - Hz"), m_systemClock);
    form->addRow(tr("Ma&ximum frequency - Hz"), m_maximum->box());
    form->addRow(tr("Minimum frequenc&y - Hz"), m_minimum->box());
    form->addRow(m_offset);
    form->addRow(m_verdict);
    // Align the digits with those in the boxes below.
    m_systemClock->setAlignment(Qt::AlignRight);
    m_systemClock->setFixedWidth(m_maximum->box()->width());
    m_systemClock->setIndent(kTextMargin);
    return place;
}

void DdsPage::fill()
{
    for (std::size_t chip = 0; chip < m_optChip.size(); ++chip)
        if (values().ddsDevice == QLatin1String(kDdsDevices[chip]))
            chooseOption(m_optChip[chip]);
    const std::int16_t multiplier = values().ddsMultiplier;
    const bool timesSix = m_optChip[Ad9851]->isChecked() && multiplier == kTimesSix;
    const bool multiplies = m_optChip[Ad9951]->isChecked() && multiplier != 1;
    m_timesSix->setChecked(timesSix);
    chooseOption(m_optMultiplier[multiplies ? 1 : 0]);
    {
        const QSignalBlocker quiet(m_multiplier);
        m_multiplier->setValue(multiplies ? multiplier : kLowestMultiplier);
    }
    for (const NumberEntry *clock : m_clocks)
        clock->show();
    m_maximum->show();
    m_minimum->show();
    m_offset->setText(tr("Frequency offset: ") + NumberText().masked(values().ddsOffset, kMaskOffset) +
                      QStringLiteral(" Hz"));
    showChipFrame();
    showMultiplier();
    showClock();
}

void DdsPage::optDDSselect_Click(std::size_t chip)
{
    values().ddsDevice = QString::fromLatin1(kDdsDevices[chip]);
    m_clocks[chip]->show();
    showChipFrame();
    multiplierChosen();
}

void DdsPage::HScroll1_Change()
{
    m_optMultiplier[1]->setChecked(true);
    multiplierChosen();
}

void DdsPage::multiplierChosen()
{
    values().ddsMultiplier = chosenMultiplier();
    showMultiplier();
    showClock();
}

// Returns the current multiplier; always 1 for the AD9850, which has none.
std::int16_t DdsPage::chosenMultiplier() const
{
    if (m_optChip[Ad9851]->isChecked() && m_timesSix->isChecked())
        return kTimesSix;
    if (m_optChip[Ad9951]->isChecked() && m_optMultiplier[1]->isChecked())
        return static_cast<std::int16_t>(m_multiplier->value());
    return 1;
}

void DdsPage::showChipFrame()
{
    for (std::size_t chip = 0; chip < m_chipFrames.size(); ++chip)
        m_chipFrames[chip]->setVisible(m_optChip[chip]->isChecked());
}

// Shows the configured factor, which can be outside the bar's range if it was read from a settings file.
void DdsPage::showMultiplier()
{
    const bool multiplies = m_optChip[Ad9951]->isChecked() && m_optMultiplier[1]->isChecked();
    m_multiplierText->setText(QStringLiteral("× %1").arg(multiplies ? values().ddsMultiplier : m_multiplier->value()));
}

void DdsPage::showClock()
{
    m_verdict->setText(chipVerdict(values()));
    try {
        const std::int32_t clock =
            checkedMultiply(values().ddsXtalFreq, static_cast<std::int32_t>(values().ddsMultiplier));
        m_systemClock->setText(NumberText().masked(clock, kMaskMegahertz));
    } catch (const RuntimeError &error) {
        // Show the error here: a message box for each step of the scroll bar would be a nuisance.
        m_systemClock->setText(error.message());
    }
}

} // namespace calvorn
