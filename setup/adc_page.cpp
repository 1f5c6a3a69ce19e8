// SPDX-License-Identifier: MIT
#include "setup/adc_page.h"

#include "core/checked_arithmetic.h"
#include "core/number_text.h"
#include "instrument/interface_kind.h"

#include <QFormLayout>
#include <QHBoxLayout>

namespace calvorn {

namespace {

constexpr double kHighestStep = 1000.0; // mV per count

std::pair<double, double> channelRange(std::int16_t interfaceType)
{
    const InterfaceKind *kind = interfaceKind(interfaceType);
    return kind ? std::pair<double, double>(kind->lowestChannel, kind->highestChannel) : std::pair(0.0, 7.0);
}

} // namespace

AdcPage::AdcPage(const SetUpContext &context)
    : SetUpPage(context, tr("Detector"))
{
    QWidget *converters = buildConverters();
    buildEntries();
    m_law = new DetectorLawBox(context);
    m_law->setObjectName(QStringLiteral("frameLaw"));
    m_offset = named(new QLabel(this), QStringLiteral("lblOffset"),
                     tr("Set by \"SetUp/Calibrate detector\"; added to every voltage"));
    auto *form = new QFormLayout;
    form->addRow(tr("&Step - mV per count"), m_step->box());
    auto *channelRow = new QHBoxLayout;
    channelRow->addWidget(m_channel->box());
    channelRow->addWidget(m_channelMeaning, 1);
    auto *channelLabel = new QLabel(tr("C&hannel"), this);
    channelLabel->setBuddy(m_channel->box());
    form->addRow(channelLabel, channelRow);
    form->addRow(m_offset);
    auto *hint =
        wrapping(new QLabel(tr("The step is the reference voltage of the converter divided by its counts: 2.5 V are "
                               "2.441 mV per count with 10 bits, and 9.766 mV with 8 bits."),
                            this));
    auto *right = new QVBoxLayout;
    right->addLayout(form);
    right->addWidget(hint);
    right->addWidget(m_law);
    right->addStretch();
    auto *columns = new QHBoxLayout(this);
    columns->addWidget(converters, 0, Qt::AlignTop);
    columns->addLayout(right, 1);
}

QWidget *AdcPage::buildConverters()
{
    const std::array<QString, kAdcDevices.size()> captions{tr("&8 bit"), tr("1&0 bit")};
    const std::array<QString, kAdcDevices.size()> toolTips{tr("Counts from 0 to 255"), tr("Counts from 0 to 1023")};
    auto *frame = new QGroupBox(tr("Converter"), this);
    auto *column = new QVBoxLayout(frame);
    for (std::size_t i = 0; i < m_optAdc.size(); ++i) {
        m_optAdc[i] = named(new QRadioButton(captions[i], frame), QStringLiteral("optADC_%1").arg(i + 1), toolTips[i]);
        column->addWidget(m_optAdc[i]);
        boundary().connect(m_optAdc[i], &QRadioButton::clicked, this, "optADC_Click",
                           [this, i] { values().adcDevice = QString::fromLatin1(kAdcDevices[i]); });
    }
    return frame;
}

void AdcPage::buildEntries()
{
    auto *step = named(new EntryBox(this), QStringLiteral("txtADCstep"),
                       tr("Millivolts at the detector for one count of the converter"), tr("Step in mV per count"));
    m_step = new NumberEntry(
        step, NumberEntry::Kind::Real,
        {[this] { return NumberText().masked(static_cast<double>(values().adcStep) * kMillivolts, kMaskVolt); },
         [this](double millivolts) { values().adcStep = static_cast<float>(millivolts / kMillivolts); },
         [] { return std::pair(0.0, kHighestStep); }},
        messages(), boundary());
    fitToNumber(step, NumberText().masked(kHighestStep, kMaskVolt));
    auto *channel =
        named(new EntryBox(this), QStringLiteral("txtADCchannel"),
              tr("MiniVNA: 1 angle, 2 return loss, 3 device under test. The other interfaces do not use it."),
              tr("Channel of the converter"));
    m_channel =
        new NumberEntry(channel, NumberEntry::Kind::Whole,
                        {[this] { return NumberText::fromInteger(values().measuringMode); },
                         [this](double number) { values().measuringMode = roundToInteger<std::int16_t>(number); },
                         [this] { return channelRange(values().interfaceType); }},
                        messages(), boundary());
    fitToNumber(channel, QStringLiteral("0"));
    m_channelMeaning = named(new QLabel(this), QStringLiteral("lblADCchannel"), tr("Meaning of the number"));
    boundary().connect(channel, &QLineEdit::textChanged, this, "txtADCchannel_Change",
                       [this] { txtADCchannel_Change(); });
}

// Updates the description as the user types. An invalid number is corrected only when the user leaves the box.
void AdcPage::txtADCchannel_Change()
{
    static constexpr std::int16_t kAngle = 1;
    static constexpr std::int16_t kReturnLoss = 2;
    static constexpr std::int16_t kDeviceUnderTest = 3;
    const NumberText numbers;
    const QString entry = m_channel->box()->text();
    const double channel = numbers.isNumeric(entry) ? numbers.toDouble(entry) : 0.0;
    QString meaning;
    const InterfaceKind *kind = interfaceKind(values().interfaceType);
    if (!kind || !kind->channelIsMode)
        meaning = tr("not used by this interface");
    else if (channel == kAngle)
        meaning = tr("angle");
    else if (channel == kReturnLoss)
        meaning = tr("return loss");
    else if (channel == kDeviceUnderTest)
        meaning = tr("device under test");
    else
        meaning = tr("1 angle, 2 return loss, 3 device under test");
    m_channelMeaning->setText(meaning);
    m_channel->box()->setAccessibleDescription(meaning);
}

void AdcPage::fill()
{
    for (std::size_t i = 0; i < m_optAdc.size(); ++i)
        if (values().adcDevice == QLatin1String(kAdcDevices[i]))
            chooseOption(m_optAdc[i]);
    m_step->show();
    m_channel->show();
    txtADCchannel_Change();
    m_law->fill();
    m_offset->setText(tr("Offset: ") + NumberText().masked(static_cast<double>(values().adcOffset), kMaskVolt) +
                      QStringLiteral(" Volt"));
}

} // namespace calvorn
