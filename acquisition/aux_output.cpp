// SPDX-License-Identifier: MIT
#include "acquisition/aux_output.h"

#include "core/common_functions.h"
#include "core/number_text.h"
#include "platform/profile_file.h"

#include <QGridLayout>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QSignalBlocker>

#include <utility>

namespace calvorn {

AuxOutput::AuxOutput(std::int16_t number, std::int16_t &value, Configuration &configuration, AuxHardware hardware,
                     ErrorBoundary &boundary, QWidget *parent)
    : QGroupBox(parent)
    , m_number(number)
    , m_value(value)
    , m_configuration(configuration)
    , m_hardware(std::move(hardware))
    , m_boundary(boundary)
    , m_total(new QLabel(QStringLiteral("0"), this))
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
        grid->addWidget(box, i / 4, i % 4);
        m_steps[static_cast<std::size_t>(i)].box = box;
    }
    m_total->setObjectName(QStringLiteral("lblAux%1").arg(number));
    m_total->setToolTip(tr("Sum of the steps that are on"));
    m_total->setAccessibleName(tr("Total of output %1").arg(number));
    QFont font = m_total->font();
    font.setPointSizeF(font.pointSizeF() * 1.5);
    m_total->setFont(font);
    grid->addWidget(m_total, 0, 4, 2, 1, Qt::AlignCenter);
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
    grid->addWidget(m_potentiometer, 0, 5, 4, 1, Qt::AlignRight);
    grid->addWidget(m_potentiometerValue, 0, 6, 2, 1, Qt::AlignVCenter);
    m_boundary.connect(m_potentiometer, &QScrollBar::valueChanged, this, "VScrollPot2_Change",
                       [this] { VScrollPot2_Change(); });
}

QString AuxOutput::readOwn(const char *key) const
{
    return readProfileString(m_configuration.iniPath, QStringLiteral("Aux%1").arg(m_number), QString::fromLatin1(key));
}

void AuxOutput::setUp()
{
    m_settings = readAuxSettings(m_configuration.iniPath, m_number);
    const QString section = QStringLiteral("Aux%1").arg(m_number);
    setTitle(
        readSetting(section, QStringLiteral("Title"), m_configuration.iniPath, QStringLiteral("Aux %1").arg(m_number)));
    m_disabledNote->setVisible(!m_settings.enabled);
    m_total->setVisible(m_settings.enabled);
    setUpSteps();
    if (m_potentiometer)
        setUpPotentiometer();
}

void AuxOutput::setUpSteps()
{
    for (int i = 0; i < 8; ++i) {
        if (m_settings.enabled)
            setUpStep(i);
        m_steps[static_cast<std::size_t>(i)].box->setVisible(m_settings.enabled);
    }
    showTotal();
}

// "caption;weight", or one text that is both.
void AuxOutput::setUpStep(int index)
{
    const int decibels = (index + 1) * 10;
    const QString fallback = QStringLiteral("%1dB;%1").arg(decibels);
    const QString text = readSetting(QStringLiteral("Aux%1").arg(m_number), QStringLiteral("Step %1").arg(index),
                                     m_configuration.iniPath, fallback);
    const qsizetype separator = text.indexOf(u';');
    const QString weight = separator < 0 ? text : text.sliced(separator + 1);
    Step &step = m_steps[static_cast<std::size_t>(index)];
    QString caption = separator < 0 ? text : text.first(separator);
    // A step without a label is not wired.
    step.box->setEnabled(!caption.trimmed().isEmpty());
    // An "&" of the caption is none of a mnemonic, which would toggle the box by itself.
    step.box->setText(caption.replace(u'&', QStringLiteral("&&")));
    const NumberText numbers;
    step.weight = 0;
    m_boundary.run("setUpStep", [&] { step.weight = numbers.toInt16(weight); });
    step.box->setCheckState((m_value >> index) & 1 ? Qt::Checked : Qt::Unchecked);
}

void AuxOutput::setUpPotentiometer()
{
    m_potSettings = readPotSettings(m_configuration.iniPath);
    m_potentiometer->setVisible(m_potSettings.has_value());
    m_potentiometerValue->setVisible(m_potSettings.has_value());
    if (!m_potSettings)
        return;
    const QSignalBlocker quiet(m_potentiometer);
    m_potentiometer->setRange(m_potSettings->lowest, m_potSettings->highest);
    m_potentiometer->setValue(m_configuration.pot2);
    m_configuration.pot2 = static_cast<std::int16_t>(m_potentiometer->value());
    m_potentiometerValue->setText(NumberText::fromInteger(m_configuration.pot2));
}

// The mouse-down drives the boxes, not the click: the box never sees the mouse, and so cannot toggle itself.
bool AuxOutput::eventFilter(QObject *watched, QEvent *event)
{
    const bool left = (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick) &&
                      static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton;
    const bool space = event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Space;
    const bool pressed = left || (space && !static_cast<QKeyEvent *>(event)->isAutoRepeat());
    for (int i = 0; pressed && i < 8; ++i)
        if (m_steps[static_cast<std::size_t>(i)].box == watched)
            m_boundary.run("chkAux_MouseDown", [&] { mouseDown(i); });
    const bool swallowed = left || space || event->type() == QEvent::MouseButtonRelease;
    return swallowed || QGroupBox::eventFilter(watched, event);
}

void AuxOutput::mouseDown(int index)
{
    if (m_configuration.interfaceType != kInterfaceLpt || m_busy)
        return;
    const QScopedValueRollback guard(m_busy, true);
    QCheckBox *box = m_steps[static_cast<std::size_t>(index)].box;
    if (!box->isEnabled())
        return;
    // Unchecked, grayed, checked, and round again; grayed is still off.
    switch (box->checkState()) {
    case Qt::Unchecked:
        box->setCheckState(Qt::PartiallyChecked);
        break;
    case Qt::PartiallyChecked:
        box->setCheckState(Qt::Checked);
        break;
    case Qt::Checked:
        box->setCheckState(Qt::Unchecked);
        break;
    }
    int value = 0;
    for (int i = 0; i < 8; ++i)
        if (m_steps[static_cast<std::size_t>(i)].box->checkState() == Qt::Checked)
            value |= 1 << i;
    m_value = static_cast<std::int16_t>(value);
    showTotal();
    sendValue();
}

void AuxOutput::showTotal()
{
    int total = 0;
    for (const Step &step : m_steps)
        if (step.box->checkState() == Qt::Checked)
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
