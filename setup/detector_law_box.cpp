// SPDX-License-Identifier: MIT
#include "setup/detector_law_box.h"

#include "core/number_text.h"

#include <QFormLayout>

#include <algorithm>
#include <iterator>
#include <limits>

namespace calvorn {

DetectorLawBox::DetectorLawBox(const SetUpContext &context)
    : SetUpPage(context, tr("Law"))
{
    m_law =
        named(new QComboBox(this), QStringLiteral("cboLaw"), tr("Relation between input level and detector voltage"));
    m_law->addItems({tr("Linear"), tr("Logarithmic"), tr("Table")});
    m_preset = named(new QComboBox(this), QStringLiteral("cboPreset"),
                     tr("Slope and intercept from the data sheet of a detector"));
    for (const DetectorPreset &preset : kDetectorPresets)
        m_preset->addItem(QString::fromLatin1(preset.name));
    m_preset->addItem(tr("Another"));
    buildEntries();
    m_meaning = named(wrapping(new QLabel(this)), QStringLiteral("lblLaw"), tr("About the chosen law"));
    auto *form = new QFormLayout(this);
    form->addRow(tr("La&w"), m_law);
    form->addRow(tr("Detecto&r"), m_preset);
    form->addRow(tr("Slope - &mV per dB"), m_slope->box());
    form->addRow(tr("I&ntercept - dBm"), m_intercept->box());
    form->addRow(m_meaning);
    boundary().connect(m_law, &QComboBox::activated, this, "cboLaw_Click", [this](int index) { cboLaw_Click(index); });
    boundary().connect(m_preset, &QComboBox::activated, this, "cboPreset_Click",
                       [this](int index) { cboPreset_Click(index); });
}

void DetectorLawBox::buildEntries()
{
    auto *slope = named(new EntryBox(this), QStringLiteral("txtSlope"),
                        tr("Millivolts per dB, 1 to 1000; negative if the voltage falls as the level rises"),
                        tr("Slope in mV per dB"));
    m_slope = new NumberEntry(
        slope, NumberEntry::Kind::Real,
        {[this] { return NumberText().masked(values().detectorLaw.slope, kMaskVolt); },
         [this](double millivolts) {
             if (DetectorLaw::isSlope(millivolts))
                 takeTyped(values().detectorLaw.slope, millivolts);
             else
                 messages().desktop().beep();
         },
         [] { return std::pair(std::numeric_limits<double>::lowest(), std::numeric_limits<double>::max()); }},
        messages(), boundary());
    auto *intercept = named(new EntryBox(this), QStringLiteral("txtIntercept"),
                            tr("Level at which the detector's line reaches 0 V"), tr("Intercept in dBm"));
    m_intercept = new NumberEntry(intercept, NumberEntry::Kind::Real,
                                  {[this] { return NumberText().masked(values().detectorLaw.intercept, kMaskVolt); },
                                   [this](double dBm) { takeTyped(values().detectorLaw.intercept, dBm); },
                                   [] { return std::pair(-DetectorLaw::kFarthestDbm, DetectorLaw::kFarthestDbm); }},
                                  messages(), boundary());
    for (EntryBox *box : {slope, intercept})
        fitToNumber(box, NumberText().masked(-DetectorLaw::kMostSlope, kMaskVolt));
}

// Keeps the number if the box is unchanged, because the box may show fewer decimals than the number has.
void DetectorLawBox::takeTyped(double &number, double typed)
{
    const NumberText numbers;
    if (typed != numbers.toDouble(numbers.masked(number, kMaskVolt))) {
        number = typed;
        values().isLawChosen = true;
    }
    showPreset();
}

void DetectorLawBox::cboLaw_Click(int index)
{
    DetectorLaw wanted = values().detectorLaw;
    wanted.kind = static_cast<DetectorLaw::Kind>(index);
    if (wanted.isUsable()) {
        values().detectorLaw = wanted;
        values().isLawChosen = true;
    }
    showLaw();
    if (!wanted.isUsable())
        m_meaning->setText(tr("There is no table yet: create one with \"SetUp/Calibrate level\"."));
}

void DetectorLawBox::cboPreset_Click(int index)
{
    if (index < static_cast<int>(std::size(kDetectorPresets))) {
        const DetectorPreset &preset = kDetectorPresets[index];
        values().detectorLaw.slope = preset.slope;
        values().detectorLaw.intercept = preset.intercept;
        values().isLawChosen = true;
    }
    showLaw();
}

void DetectorLawBox::showPreset()
{
    const DetectorLaw &law = values().detectorLaw;
    int index = 0;
    for (const DetectorPreset &preset : kDetectorPresets) {
        if (preset.slope == law.slope && preset.intercept == law.intercept)
            break;
        ++index;
    }
    m_preset->setCurrentIndex(index);
}

void DetectorLawBox::showLaw()
{
    const DetectorLaw &law = values().detectorLaw;
    m_law->setCurrentIndex(static_cast<int>(law.kind));
    showPreset();
    m_slope->show();
    m_intercept->show();
    const bool isLog = law.kind == DetectorLaw::Kind::Log;
    for (QWidget *part : {static_cast<QWidget *>(m_preset), static_cast<QWidget *>(m_slope->box()),
                          static_cast<QWidget *>(m_intercept->box())})
        part->setEnabled(isLog);
    const NumberText numbers;
    QString meaning;
    switch (law.kind) {
    case DetectorLaw::Kind::Linear:
        meaning = tr("The voltages are those at the detector output.");
        break;
    case DetectorLaw::Kind::Log:
        meaning = tr("The voltages are RMS at the input, into 50 ohms.");
        break;
    case DetectorLaw::Kind::Table:
        meaning = tr("%1 points from %2 to %3 dBm, created with \"SetUp/Calibrate level\"")
                      .arg(NumberText::fromInteger(static_cast<std::int32_t>(law.points().size())),
                           numbers.masked(std::min(law.points().front().dBm, law.points().back().dBm), kMaskDb),
                           numbers.masked(std::max(law.points().front().dBm, law.points().back().dBm), kMaskDb));
        break;
    }
    m_meaning->setText(meaning);
}

void DetectorLawBox::fill()
{
    showLaw();
}

} // namespace calvorn
