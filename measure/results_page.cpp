// SPDX-License-Identifier: MIT
#include "measure/results_page.h"

#include "analysis/result_text.h"
#include "core/number_text.h"
#include "core/scale_type.h"
#include "widgets/button_key.h"

#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace calvorn {

namespace {

constexpr double kMostOhms = 10'000.0;

} // namespace

ResultsPage::ResultsPage(Measurement &measurement, const Markers &markers, MarkerPanel &markerPanel, Desktop &desktop,
                         QWidget *parent)
    : QWidget(parent)
    , m_measurement(measurement)
    , m_markers(markers)
    , m_markerPanel(markerPanel)
    , m_desktop(desktop)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(5, 5, 5, 5);
    layout->addWidget(makeChoices());
    auto *frame = new QFrame(this);
    frame->setFrameShape(QFrame::StyledPanel);
    m_grid = new QGridLayout(frame);
    m_grid->setVerticalSpacing(2);
    m_grid->setContentsMargins(6, 6, 6, 6);
    m_grid->setColumnStretch(1, 1);
    layout->addWidget(frame);
    layout->addWidget(makeButtons());
    layout->addStretch();
    makeLines();
    connect(&measurement, &Measurement::refreshed, this, [this] {
        if (isVisible())
            showResults();
    });
    connect(&markers, &Markers::moved, this, [this](GraphItem item) {
        if (isVisible() && (item == GraphItem::M1 || item == GraphItem::M2))
            showResults();
    });
    connect(&measurement, &Measurement::peakFound, this,
            [this](double hertz) { m_markerPanel.enterFrequencyOf(GraphItem::M1, hertz); });
}

QWidget *ResultsPage::makeChoices()
{
    auto *box = new QWidget(this);
    auto *form = new QFormLayout(box);
    form->setContentsMargins(0, 0, 0, 0);
    m_kind = new QComboBox(this);
    m_kind->setObjectName(QStringLiteral("cboResults"));
    m_kind->addItems({tr("Filter"), tr("Notch"), tr("Crystal"), tr("Match with a bridge")});
    m_kind->setToolTip(tr("Type of device"));
    form->addRow(tr("&Results of"), m_kind);
    m_source = new QComboBox(this);
    m_source->setObjectName(QStringLiteral("cboSource"));
    m_source->addItems({tr("Live sweep"), tr("Average")});
    m_source->setToolTip(tr("The curve used for the results"));
    form->addRow(tr("Fr&om"), m_source);
    m_fixture = new RealSpinBox(this);
    m_fixture->setObjectName(QStringLiteral("txtFixture"));
    m_fixture->setRange(0.1, kMostOhms);
    m_fixture->setDecimals(1);
    m_fixture->setSuffix(tr(" Ω"));
    m_fixture->setValue(kDefaultFixtureOhms);
    m_fixture->setToolTip(tr("Resistance of the fixture's source and load (same value for both)"));
    m_fixtureCaption = new QLabel(tr("Fi&xture"), this);
    m_fixtureCaption->setBuddy(m_fixture);
    form->addRow(m_fixtureCaption, m_fixture);
    connect(m_kind, &QComboBox::currentIndexChanged, this, &ResultsPage::choose);
    connect(m_source, &QComboBox::currentIndexChanged, this, &ResultsPage::choose);
    connect(m_fixture, &QDoubleSpinBox::valueChanged, this, &ResultsPage::choose);
    return box;
}

QPushButton *ResultsPage::makeButton(const char *name, const QString &caption, const QString &toolTip)
{
    auto *button = new QPushButton(caption, this);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(toolTip);
    // Let the button be as narrow as its text: the narrow panel has two rows of three buttons.
    button->setMinimumWidth(40);
    return button;
}

QWidget *ResultsPage::makeButtons()
{
    auto *box = new QWidget(this);
    auto *grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    QPushButton *peak = makeButton("cmdPeak", tr("&Peak"), tr("Move M1 to the highest point"));
    QPushButton *minimum = makeButton("cmdMinimum", tr("M&inimum"), tr("Move M1 to the lowest point"));
    QPushButton *left = makeButton("cmdPeakLeft", tr("◀ Peak"), tr("Move M1 to the next peak on the left"));
    QPushButton *right = makeButton("cmdPeakRight", tr("Peak ▶"), tr("Move M1 to the next peak on the right"));
    giveKey(*left, QKeySequence(Qt::CTRL | Qt::Key_PageUp));
    giveKey(*right, QKeySequence(Qt::CTRL | Qt::Key_PageDown));
    QPushButton *points3 = makeButton("cmdPoints3", tr("−&3 dB"), tr("Move M1 and M2 to the −3 dB points"));
    QPushButton *points6 = makeButton("cmdPoints6", tr("−&6 dB"), tr("Move M1 and M2 to the −6 dB points"));
    m_prominence = new RealSpinBox(this);
    m_prominence->setObjectName(QStringLiteral("txtProminence"));
    m_prominence->setRange(0.1, 60.0);
    m_prominence->setDecimals(1);
    m_prominence->setSuffix(tr(" dB"));
    m_prominence->setValue(3.0);
    m_prominence->setToolTip(tr("How far a peak must rise above the valleys on both sides"));
    m_tracksPeak = new QCheckBox(tr("M1 tr&acks the peak"), this);
    m_tracksPeak->setObjectName(QStringLiteral("chkTrackPeak"));
    m_tracksPeak->setToolTip(tr("Move M1 to the highest point after each sweep"));
    connect(peak, &QPushButton::clicked, this, [this] {
        const Response &response = m_measurement.response();
        const auto plateau = highestPlateau(response.frequencies, response.decibels);
        goTo(plateau ? std::optional(plateau->middle()) : std::nullopt);
    });
    connect(minimum, &QPushButton::clicked, this, [this] {
        const Response &response = m_measurement.response();
        const auto plateau = lowestPlateau(response.frequencies, response.decibels);
        goTo(plateau ? std::optional(plateau->middle()) : std::nullopt);
    });
    connect(left, &QPushButton::clicked, this, [this] { goToPeak(-1); });
    connect(right, &QPushButton::clicked, this, [this] { goToPeak(1); });
    connect(points3, &QPushButton::clicked, this, [this] { goToPoints(kHalfPowerDb); });
    connect(points6, &QPushButton::clicked, this, [this] { goToPoints(6.0); });
    connect(m_tracksPeak, &QCheckBox::toggled, &m_measurement, &Measurement::setTracksPeak);
    auto *caption = new QLabel(tr("Peaks of at &least"), this);
    caption->setBuddy(m_prominence);
    grid->addWidget(left, 0, 0);
    grid->addWidget(peak, 0, 1);
    grid->addWidget(right, 0, 2);
    grid->addWidget(points3, 1, 0);
    grid->addWidget(minimum, 1, 1);
    grid->addWidget(points6, 1, 2);
    grid->addWidget(caption, 2, 0, 1, 2);
    grid->addWidget(m_prominence, 2, 2);
    grid->addWidget(m_tracksPeak, 3, 0, 1, 3);
    return box;
}

void ResultsPage::choose()
{
    const auto kind = static_cast<ResultKind>(std::max(m_kind->currentIndex(), 0));
    const bool isOther = kind != m_measurement.kind();
    const auto source = m_source->currentIndex() == 1 ? TraceSet::Source::Average : TraceSet::Source::Live;
    m_measurement.choose(kind, source, m_fixture->value());
    if (isOther)
        makeLines();
    showResults();
}

// Creates a line for each key of the result kind, and for the levels at the two markers.
void ResultsPage::makeLines()
{
    for (const Line &line : m_lines) {
        delete line.caption;
        delete line.value;
    }
    m_lines.clear();
    const auto add = [this](const QString &name, const QString &caption) {
        Line line{new QLabel(caption, this), new ElidedLabel(this)};
        line.value->setObjectName(name);
        line.value->setAccessibleName(caption);
        line.value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        line.value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        const int row = static_cast<int>(m_lines.size());
        m_grid->addWidget(line.caption, row, 0);
        m_grid->addWidget(line.value, row, 1);
        m_lines.push_back(line);
    };
    for (const char *key : resultKeys(m_measurement.kind()))
        add(QStringLiteral("lblResult_") + QLatin1String(key), ResultText::caption(key));
    add(QStringLiteral("lblLevel_M1"), tr("At M1"));
    add(QStringLiteral("lblLevel_M2"), tr("At M2"));
    m_fixture->setVisible(m_measurement.kind() == ResultKind::Crystal);
    m_fixtureCaption->setVisible(m_measurement.kind() == ResultKind::Crystal);
    showResults();
}

void ResultsPage::showEvent(QShowEvent *event)
{
    showResults();
    QWidget::showEvent(event);
}

void ResultsPage::showResults()
{
    const Results &results = m_measurement.results();
    if (results.size() + 2 != m_lines.size())
        return;
    for (std::size_t i = 0; i < results.size(); ++i) {
        const QString reason = ResultText::missing(results[i].missing);
        const QString value = ResultText::value(results[i]);
        m_lines[i].value->setText(reason.isEmpty() ? value : value + u' ' + reason);
        if (m_lines[i].value->toolTip() == reason)
            continue;
        m_lines[i].value->setToolTip(reason);
        m_lines[i].value->setAccessibleDescription(reason);
    }
    const std::vector<double> amplitudes = m_measurement.shownSweep().amplitudes;
    m_lines[results.size()].value->setText(levelAt(GraphItem::M1, amplitudes));
    m_lines[results.size() + 1].value->setText(levelAt(GraphItem::M2, amplitudes));
}

QString ResultsPage::levelAt(GraphItem marker, const std::vector<double> &amplitudes) const
{
    const auto index = static_cast<std::size_t>(std::max(m_markers.row(marker) - 1, 0));
    if (index >= amplitudes.size() || std::isnan(amplitudes[index]))
        return QStringLiteral("–");
    const NumberText numbers;
    const double amplitude = amplitudes[index];
    const auto unit = m_measurement.shownUnit();
    if (!unit) // a ratio
        return numbers.masked(amplitude, kMaskVolt);
    return unit == LimitUnit::Volt ? tr("%1 V").arg(numbers.masked(amplitude, kMaskVolt))
                                   : tr("%1 dB").arg(numbers.masked(amplitude, kMaskDb));
}

void ResultsPage::goTo(std::optional<std::size_t> sample, GraphItem marker)
{
    if (!sample)
        return m_desktop.beep();
    m_markerPanel.enterFrequencyOf(marker, m_measurement.response().frequencies[*sample]);
}

std::size_t ResultsPage::sampleUnderM1() const
{
    const PlotTrace sweep = m_measurement.shownSweep();
    const double hertz = sweep.axis.frequencyAt(m_markers.row(GraphItem::M1));
    const std::vector<double> &frequencies = m_measurement.response().frequencies;
    const auto nearest = std::ranges::lower_bound(frequencies, hertz - std::abs(sweep.axis.step) / 2.0);
    return std::min(static_cast<std::size_t>(nearest - frequencies.begin()), frequencies.size() - 1);
}

// direction: as on the screen, where a falling sweep has its higher frequencies on the left.
void ResultsPage::goToPeak(int direction)
{
    const Response &response = m_measurement.response();
    if (response.isEmpty())
        return m_desktop.beep();
    const bool isFalling = m_measurement.shownSweep().axis.step < 0.0;
    goTo(nextPeak(response, sampleUnderM1(), isFalling ? -direction : direction, m_prominence->value()));
}

void ResultsPage::goToPoints(double belowPeakDb)
{
    const Crossings found = crossings(m_measurement.response(), belowPeakDb);
    if (!found.lower.frequency || !found.upper.frequency)
        return m_desktop.beep();
    m_markerPanel.enterFrequencyOf(GraphItem::M1, *found.lower.frequency);
    m_markerPanel.enterFrequencyOf(GraphItem::M2, *found.upper.frequency);
}

void ResultsPage::restore(const MeasureChoices &choices)
{
    m_kind->setCurrentIndex(choices.kind);
    m_source->setCurrentIndex(choices.source);
    m_fixture->setValue(choices.fixtureOhms);
    m_prominence->setValue(choices.prominence);
    m_tracksPeak->setChecked(choices.tracksPeak);
}

void ResultsPage::save(MeasureChoices &choices) const
{
    choices.kind = static_cast<std::int16_t>(m_kind->currentIndex());
    choices.source = static_cast<std::int16_t>(m_source->currentIndex());
    choices.fixtureOhms = m_fixture->value();
    choices.prominence = m_prominence->value();
    choices.tracksPeak = m_tracksPeak->isChecked();
}

} // namespace calvorn
