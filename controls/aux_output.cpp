// SPDX-License-Identifier: MIT
#include "controls/aux_output.h"

#include "core/common_functions.h"
#include "core/number_text.h"
#include "platform/profile_file.h"

#include <QGridLayout>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QSignalBlocker>

#include <utility>

namespace calvorn {

namespace {
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
constexpr auto kStateChanged = &QCheckBox::checkStateChanged;
#else
constexpr auto kStateChanged = &QCheckBox::stateChanged; // deprecated since Qt 6.9
#endif
} // namespace

AuxOutput::AuxOutput(std::int16_t number, std::int16_t &value, Configuration &configuration, AuxHardware hardware,
                     ErrorBoundary &boundary, QWidget *parent)
    : QGroupBox(parent)
    , m_number(number)
    , m_value(value)
    , m_configuration(configuration)
    , m_hardware(std::move(hardware))
    , m_boundary(boundary)
    , m_total(new QLabel(QStringLiteral("0"), this))
    , m_totalCaption(new QLabel(tr("Total"), this))
    , m_disabledNote(new QLabel(tr("This output is not enabled in the configuration."), this))
{
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(8, 2, 8, 2);
    grid->setVerticalSpacing(2);
    for (int i = 0; i < 8; ++i) {
        auto *box = new QCheckBox(this);
        box->setObjectName(QStringLiteral("chkAux%1_%2").arg(number).arg(i));
        box->setTristate(true);
        box->setToolTip(tr("Click: off, half, on"));
        box->installEventFilter(this);
        connect(box, kStateChanged, this, [this, i] { boxChanged(i); });
        grid->addWidget(box, i / 4, i % 4);
        m_steps[static_cast<std::size_t>(i)].box = box;
    }
    m_total->setObjectName(QStringLiteral("lblAux%1").arg(number));
    m_total->setToolTip(tr("Sum of the steps that are on"));
    m_total->setAccessibleName(tr("Total of output %1").arg(number));
    QFont font = m_total->font();
    font.setPointSizeF(font.pointSizeF() * 1.5);
    m_total->setFont(font);
    m_totalCaption->setObjectName(QStringLiteral("lblTotalAux%1").arg(number));
    m_totalCaption->setToolTip(m_total->toolTip());
    grid->addWidget(m_totalCaption, 0, 4, Qt::AlignHCenter | Qt::AlignBottom);
    grid->addWidget(m_total, 1, 4, Qt::AlignHCenter | Qt::AlignTop);
    grid->addWidget(m_disabledNote, 2, 0, 1, 6);
    grid->setRowStretch(3, 1);
    if (number == 2)
        buildPotentiometer();
}

void AuxOutput::buildPotentiometer()
{
    auto *grid = static_cast<QGridLayout *>(layout());
    m_potentiometer = new QScrollBar(Qt::Vertical, this);
    m_potentiometer->setObjectName(QStringLiteral("VScrollPot2"));
    m_potentiometer->setToolTip(tr("Digital potentiometer"));
    m_potentiometer->setAccessibleName(tr("Digital potentiometer"));
    m_potentiometer->setFocusPolicy(Qt::StrongFocus);
    m_potentiometer->setMinimumHeight(50);
    m_potentiometerValue = new QLabel(QStringLiteral("0"), this);
    m_potentiometerValue->setObjectName(QStringLiteral("lblPot2"));
    m_potentiometerValue->setToolTip(tr("Position of the potentiometer"));
    m_potentiometerValue->setAccessibleName(tr("Position of the potentiometer"));
    m_potentiometerCaption = new QLabel(tr("Potentiometer"), this);
    m_potentiometerCaption->setObjectName(QStringLiteral("lblCaptionPot2"));
    m_potentiometerCaption->setToolTip(m_potentiometer->toolTip());
    grid->addWidget(m_potentiometer, 0, 5, 4, 1, Qt::AlignRight);
    grid->addWidget(m_potentiometerCaption, 0, 6, Qt::AlignLeft | Qt::AlignBottom);
    grid->addWidget(m_potentiometerValue, 1, 6, Qt::AlignLeft | Qt::AlignTop);
    m_boundary.connect(m_potentiometer, &QScrollBar::valueChanged, this, "VScrollPot2_Change",
                       [this] { VScrollPot2_Change(); });
}

const AuxKeys &AuxOutput::keys() const
{
    return kAuxKeys[static_cast<std::size_t>(m_number - 1)];
}

void AuxOutput::setUp()
{
    m_settings = readAuxSettings(m_configuration.iniPath, m_number);
    const Profile profile(m_configuration.iniPath);
    setTitle(readSetting(keys().title, profile, m_configuration.iniPath));
    m_disabledNote->setVisible(!m_settings.enabled);
    m_total->setVisible(m_settings.enabled);
    m_totalCaption->setVisible(m_settings.enabled);
    setUpSteps(profile);
    if (m_potentiometer)
        setUpPotentiometer();
}

void AuxOutput::setUpSteps(const Profile &profile)
{
    for (int i = 0; i < 8; ++i) {
        if (m_settings.enabled)
            setUpStep(i, readSetting(keys().steps[static_cast<std::size_t>(i)], profile, m_configuration.iniPath));
        m_steps[static_cast<std::size_t>(i)].box->setVisible(m_settings.enabled);
    }
    showTotal();
}

// text: "caption;weight", or one string for both.
void AuxOutput::setUpStep(int index, const QString &text)
{
    const qsizetype separator = text.indexOf(u';');
    const QString weight = separator < 0 ? text : text.sliced(separator + 1);
    Step &step = m_steps[static_cast<std::size_t>(index)];
    QString caption = separator < 0 ? text : text.first(separator);
    // An empty caption means that the step is not wired.
    step.box->setEnabled(!caption.trimmed().isEmpty());
    // Escape "&": a mnemonic would bypass the event filter and toggle the box.
    step.box->setText(caption.replace(u'&', QStringLiteral("&&")));
    const NumberText numbers;
    step.weight = 0;
    m_boundary.run("setUpStep", [&] { step.weight = numbers.toInt16(weight); });
    step.state = (m_value >> index) & 1 ? Qt::Checked : Qt::Unchecked;
    showStep(step);
}

void AuxOutput::setUpPotentiometer()
{
    m_potSettings = readPotSettings(m_configuration.iniPath);
    m_potentiometer->setVisible(m_potSettings.has_value());
    m_potentiometerCaption->setVisible(m_potSettings.has_value());
    m_potentiometerValue->setVisible(m_potSettings.has_value());
    if (!m_potSettings)
        return;
    const QSignalBlocker quiet(m_potentiometer);
    m_potentiometer->setRange(m_potSettings->lowest, m_potSettings->highest);
    m_potentiometer->setValue(m_configuration.pot2);
    m_configuration.pot2 = static_cast<std::int16_t>(m_potentiometer->value());
    m_potentiometerValue->setText(NumberText::fromInteger(m_configuration.pot2));
}

// Pressing any mouse button advances a step; the box itself never receives mouse events.
bool AuxOutput::eventFilter(QObject *watched, QEvent *event)
{
    const bool pressed = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    for (int i = 0; pressed && i < 8; ++i)
        if (m_steps[static_cast<std::size_t>(i)].box == watched)
            advance(i);
    return pressed || event->type() == QEvent::MouseButtonRelease || QGroupBox::eventFilter(watched, event);
}

// Called if a key or a screen reader has changed the box. Undoes this and advances from the previous state.
void AuxOutput::boxChanged(int index)
{
    const Step &step = m_steps[static_cast<std::size_t>(index)];
    if (step.box->checkState() == step.state)
        return;
    showStep(step);
    advance(index);
}

void AuxOutput::showStep(const Step &step)
{
    const QSignalBlocker quiet(step.box);
    step.box->setCheckState(step.state);
}

void AuxOutput::advance(int index)
{
    m_boundary.run("chkAux_MouseDown", [&] { mouseDown(index); });
}

bool AuxOutput::setValue(std::uint8_t value)
{
    if (!m_settings.enabled || !m_hardware.isThere())
        return false;
    for (std::size_t i = 0; i < m_steps.size(); ++i) {
        m_steps[i].state = (value >> i & 1) != 0 ? Qt::Checked : Qt::Unchecked;
        showStep(m_steps[i]);
    }
    m_value = value;
    showTotal();
    sendValue();
    return true;
}

bool AuxOutput::setPosition(std::uint8_t position)
{
    if (!m_potSettings || !m_hardware.isThere())
        return false;
    m_potentiometer->setValue(position);
    return true;
}

void AuxOutput::mouseDown(int index)
{
    if (!m_hardware.isThere() || m_busy)
        return;
    const QScopedValueRollback guard(m_busy, true);
    Step &step = m_steps[static_cast<std::size_t>(index)];
    if (!step.box->isEnabled())
        return;
    // Cycle through unchecked, grayed and checked; grayed still counts as off.
    step.state = step.state == Qt::Unchecked          ? Qt::PartiallyChecked
                 : step.state == Qt::PartiallyChecked ? Qt::Checked
                                                      : Qt::Unchecked;
    showStep(step);
    int value = 0;
    for (int i = 0; i < 8; ++i)
        if (m_steps[static_cast<std::size_t>(i)].state == Qt::Checked)
            value |= 1 << i;
    m_value = static_cast<std::int16_t>(value);
    showTotal();
    sendValue();
}

void AuxOutput::showTotal()
{
    int total = 0;
    for (const Step &step : m_steps)
        if (step.state == Qt::Checked)
            total += step.weight;
    m_total->setText(NumberText::fromInteger(total));
}

void AuxOutput::sendValue() const
{
    m_hardware.sendByte(m_settings.byteFor(m_value), m_number);
}

void AuxOutput::VScrollPot2_Change()
{
    m_configuration.pot2 = static_cast<std::int16_t>(m_potentiometer->value());
    m_potentiometerValue->setText(NumberText::fromInteger(m_configuration.pot2));
    m_hardware.sendPosition(m_potSettings->control, m_potSettings->command, m_configuration);
}

} // namespace calvorn
