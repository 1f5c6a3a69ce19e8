// SPDX-License-Identifier: MIT
#include "controls/level_box.h"

#include "core/detector_calibration.h"
#include "core/number_text.h"
#include "widgets/named.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace calvorn {

namespace {

constexpr double kLargeDigits = 2.4; // times the window's font size
constexpr double kHighestAttenuator = 100.0;
constexpr double kHalfCount = 0.5;
constexpr std::size_t kSmoothedReadings = 8; // their mean has noise of an eighth of a count
constexpr double kAnotherLevel = 4.0;        // counts; greater than the noise
// Limits of the bar, in tenths of a dBm.
constexpr int kBarBottom = -800;
constexpr int kBarTop = 200;
constexpr double kTenths = 10.0;
constexpr double kOhms = 50.0;

// Formats a value with the unit prefix that leaves one to three digits before the separator.
QString withPrefix(double value, const QString &unit)
{
    struct Prefix
    {
        double factor;
        const char16_t *name;
    };
    static constexpr std::array kPrefixes{Prefix{1.0, u""}, Prefix{1e-3, u"m"}, Prefix{1e-6, u"µ"}, Prefix{1e-9, u"n"},
                                          Prefix{1e-12, u"p"}};
    const auto *prefix = std::ranges::find_if(kPrefixes, [value](const Prefix &p) { return value >= p.factor; });
    if (prefix == kPrefixes.end())
        --prefix;
    const DisplayMask mask = kMaskVolt;
    return NumberText().masked(value / prefix->factor, mask) + u' ' + QString::fromUtf16(prefix->name) + unit;
}

QString dBmText(double dBm)
{
    return std::isfinite(dBm) ? NumberText().masked(dBm, kMaskDb) + QStringLiteral(" dBm") : QStringLiteral("– dBm");
}

} // namespace

LevelBox::LevelBox(const Configuration &configuration, QWidget *parent)
    : QGroupBox(tr("Level"), parent)
    , m_configuration(configuration)
{
    auto *column = new QVBoxLayout(this);
    buildNumbers();
    buildButtons();
    auto *numbers = new QHBoxLayout;
    numbers->addWidget(m_volts, 1);
    numbers->addWidget(m_watts, 1);
    numbers->addWidget(m_relative, 1);
    auto *reset = named(new QPushButton(tr("&Reset"), this), "cmdExtremes", tr("Reset minimum and maximum"));
    connect(reset, &QPushButton::clicked, this, &LevelBox::cmdExtremes_Click);
    auto *buttons = new QHBoxLayout;
    for (QPushButton *button : {m_hold, m_zero, reset})
        buttons->addWidget(button);
    auto *form = new QFormLayout;
    form->addRow(tr("Atten&uator - dB"), m_attenuator);
    column->addWidget(m_level);
    column->addWidget(m_bar);
    column->addLayout(numbers);
    column->addWidget(m_extremes);
    column->addLayout(buttons);
    column->addLayout(form);
    column->addWidget(m_warning);
    showExtremes();
}

void LevelBox::buildNumbers()
{
    m_level = named(new QLabel(dBmText(std::nan("")), this), "lblLevel", tr("The level at the input, into 50 ohms"));
    QFont large = m_level->font();
    large.setPointSizeF(large.pointSizeF() * kLargeDigits);
    large.setBold(true);
    m_level->setFont(large);
    m_level->setAlignment(Qt::AlignRight);
    m_volts = named(new QLabel(this), "lblLevelVolts", tr("Volts RMS at the input"));
    m_watts = named(new QLabel(this), "lblLevelWatts", tr("Power into 50 ohms"));
    m_relative = named(new QLabel(this), "lblLevelRelative", tr("Relative to the level when you pressed \"Zero\""));
    m_relative->setAlignment(Qt::AlignRight);
    m_extremes = named(new QLabel(this), "lblLevelExtremes", tr("The lowest and the highest level so far"));
    m_bar = named(new QProgressBar(this), "barLevel", tr("From -80 to 20 dBm"));
    m_bar->setRange(kBarBottom, kBarTop);
    m_bar->setTextVisible(false);
    m_bar->setValue(kBarBottom);
    m_warning = named(new QLabel(this), "lblLevelWarning", tr("Warning about the reading"));
    m_warning->setWordWrap(true);
}

void LevelBox::buildButtons()
{
    m_hold = named(new QPushButton(tr("H&old"), this), "cmdHold", tr("Stop the meter and keep its readings"));
    m_hold->setCheckable(true);
    m_zero = named(new QPushButton(tr("&Zero"), this), "cmdZero", tr("Use the current level as 0 dB"));
    m_zero->setCheckable(true);
    m_zero->setEnabled(false);
    connect(m_zero, &QPushButton::clicked, this, &LevelBox::cmdRelative_Click);
    connect(m_hold, &QPushButton::toggled, this, &LevelBox::held);
    m_attenuator = named(new RealSpinBox(this), "spinAttenuator",
                         tr("Loss of an attenuator in front of the detector; it is added to the level"));
    m_attenuator->setRange(0.0, kHighestAttenuator);
    m_attenuator->setDecimals(1);
}

void LevelBox::show(const LevelReading &reading)
{
    if (isHeld())
        return;
    const double count = smoothed(reading);
    m_warning->setText(warningOf(count));
    showLevel(dBmOfVolts(detectorOf(m_configuration).volts(count)) + m_attenuator->value());
}

double LevelBox::smoothed(const LevelReading &reading)
{
    const auto mean = [this] {
        return std::accumulate(m_recent.begin(), m_recent.end(), 0.0) / static_cast<double>(m_recent.size());
    };
    if (!m_recent.empty() && std::abs(reading.count - mean()) > kAnotherLevel)
        m_recent.clear();
    m_recent.push_back(reading.count);
    if (m_recent.size() > kSmoothedReadings)
        m_recent.pop_front();
    return mean();
}

void LevelBox::showLevel(double dBm)
{
    m_last = std::isfinite(dBm) ? std::optional(dBm) : std::nullopt;
    m_level->setText(dBmText(dBm));
    m_zero->setEnabled(m_last || m_reference);
    if (!m_last) {
        for (QLabel *number : {m_volts, m_watts, m_relative})
            number->clear();
        m_bar->setValue(kBarBottom);
        return;
    }
    const double volts = voltsOfDbm(dBm);
    m_volts->setText(withPrefix(volts, QStringLiteral("V")));
    m_watts->setText(withPrefix(volts * volts / kOhms, QStringLiteral("W")));
    m_relative->setText(m_reference ? NumberText().masked(dBm - *m_reference, kMaskDb) + QStringLiteral(" dB")
                                    : QString());
    m_bar->setValue(static_cast<int>(std::clamp(dBm * kTenths, double{kBarBottom}, double{kBarTop})));
    m_lowest = std::min(m_lowest.value_or(dBm), dBm);
    m_highest = std::max(m_highest.value_or(dBm), dBm);
    showExtremes();
}

void LevelBox::showExtremes()
{
    m_extremes->setText(m_lowest ? tr("%1 to %2").arg(dBmText(*m_lowest), dBmText(*m_highest)) : QStringLiteral("–"));
}

void LevelBox::showPause(const QString &reason)
{
    m_warning->setText(reason);
    m_recent.clear();
    if (!reason.isEmpty() && !isHeld())
        showLevel(std::nan(""));
}

QString LevelBox::warningOf(double count) const
{
    const DetectorCalibration detector = detectorOf(m_configuration);
    if (detector.law.isBeyondEnds(detector.detectorVolts(count)))
        return tr("Outside the detector's calibrated range.");
    if (detector.volts(count) <= detector.floor())
        return tr("Below the detector's floor.");
    const double loudest = detector.law.isRising() ? detector.highestCount : detector.lowestCount;
    if (std::abs(count - loudest) <= kHalfCount)
        return tr("At full scale: the level may be higher.");
    return {};
}

void LevelBox::cmdRelative_Click(bool on)
{
    m_reference = on ? m_last : std::nullopt;
    m_zero->setChecked(m_reference.has_value());
    if (m_last)
        showLevel(*m_last);
}

void LevelBox::cmdExtremes_Click()
{
    m_lowest.reset();
    m_highest.reset();
    showExtremes();
}

} // namespace calvorn
