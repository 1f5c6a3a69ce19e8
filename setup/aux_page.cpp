// SPDX-License-Identifier: MIT
#include "setup/aux_page.h"

#include "core/checked_arithmetic.h"
#include "core/number_text.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>

#include <algorithm>
#include <limits>

namespace calvorn {

namespace {

constexpr int kHighestPosition = 255; // of the potentiometer
constexpr int kLongestText = 40;
constexpr double kLowestWeight = std::numeric_limits<std::int16_t>::min();
constexpr double kHighestWeight = std::numeric_limits<std::int16_t>::max();

} // namespace

AuxPage::AuxPage(const SetUpContext &context)
    : SetUpPage(context, tr("Auxiliary outputs (parallel port only)"))
{
    auto *columns = new QHBoxLayout(this);
    columns->addWidget(buildOutput(0), 1);
    columns->addWidget(buildOutput(1), 1);
    columns->addWidget(buildPotentiometer());
}

QWidget *AuxPage::buildOutput(std::size_t output)
{
    const auto number = static_cast<int>(output + 1);
    const QString suffix = QStringLiteral("Aux%1").arg(number);
    Output &controls = m_outputs[output];
    auto *frame = new QGroupBox(tr("Output %1").arg(number), this);
    auto *grid = new QGridLayout(frame);
    grid->setVerticalSpacing(3);
    grid->setContentsMargins(6, 4, 6, 6);
    controls.enabled =
        named(new QCheckBox(tr("Enabled"), frame), QStringLiteral("chkBoxEnable") + suffix,
              tr("Show the buttons of this output in the main window"), tr("Output %1 enabled").arg(number));
    controls.inverse = named(new QCheckBox(tr("Inverse logic"), frame), QStringLiteral("chkBoxLogica") + suffix,
                             tr("Invert every bit of the byte"), tr("Output %1 inverse").arg(number));
    controls.title = named(new QLineEdit(frame), QStringLiteral("txtTitolo") + suffix,
                           tr("The heading of this output in the main window"), tr("Title of output %1").arg(number));
    controls.title->setMaxLength(kLongestText);
    auto *flags = new QHBoxLayout;
    flags->addWidget(controls.enabled);
    flags->addWidget(controls.inverse);
    flags->addStretch();
    grid->addLayout(flags, 0, 0, 1, 3);
    grid->addWidget(new QLabel(tr("Title"), frame), 1, 0);
    grid->addWidget(controls.title, 1, 1, 1, 2);
    buildSteps(output, grid);
    boundary().connect(controls.enabled, &QCheckBox::clicked, this, "chkBoxEnableAux_Click",
                       [this, output](bool on) { values().aux[output].enabled = on; });
    boundary().connect(controls.inverse, &QCheckBox::clicked, this, "chkBoxLogicaAux_Click",
                       [this, output](bool on) { values().aux[output].inverse = on; });
    boundary().connect(controls.title, &QLineEdit::textEdited, this, "txtTitoloAux_Change",
                       [this, output](const QString &text) { values().aux[output].title = text; });
    return frame;
}

void AuxPage::buildSteps(std::size_t output, QGridLayout *grid)
{
    // In the file, a ";" separates the label from the value.
    auto *noSemicolon = new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[^;]*")), this);
    grid->addWidget(new QLabel(tr("Label"), this), 2, 1);
    grid->addWidget(new QLabel(tr("Value - dB"), this), 2, 2);
    for (std::size_t step = 0; step < kAuxSteps; ++step) {
        const int row = static_cast<int>(step) + 3;
        auto *caption = named(new QLineEdit(this), QStringLiteral("txtAux%1_%2").arg(output + 1).arg(step),
                              tr("Enter the label or leave 'blank' to disable this button"),
                              tr("Output %1, label of step %2").arg(output + 1).arg(step));
        caption->setMaxLength(kLongestText);
        caption->setValidator(noSemicolon);
        m_outputs[output].captions[step] = caption;
        m_outputs[output].weights[step] = makeWeight(output, step);
        grid->addWidget(new QLabel(tr("Step %1").arg(step), this), row, 0);
        grid->addWidget(caption, row, 1);
        grid->addWidget(m_outputs[output].weights[step]->box(), row, 2);
        boundary().connect(
            caption, &QLineEdit::textEdited, this, "txtAux_Change",
            [this, output, step](const QString &text) { values().aux[output].captions[step] = text.trimmed(); });
    }
    grid->setColumnStretch(1, 1);
}

NumberEntry *AuxPage::makeWeight(std::size_t output, std::size_t step)
{
    auto *box = named(new EntryBox(this), QStringLiteral("txtAux%1Val_%2").arg(output + 1).arg(step),
                      tr("Enter the value to be sent to the attenuator"),
                      tr("Output %1, value of step %2").arg(output + 1).arg(step));
    fitToNumber(box, NumberText::fromInteger(std::numeric_limits<std::int16_t>::min()));
    return new NumberEntry(box, NumberEntry::Kind::Whole,
                           {[this, output, step] { return values().aux[output].weights[step]; },
                            [this, output, step](double number) {
                                values().aux[output].weights[step] =
                                    NumberText::fromInteger(roundToInteger<std::int16_t>(number));
                            },
                            [] { return std::pair(kLowestWeight, kHighestWeight); }},
                           messages(), boundary());
}

QLineEdit *AuxPage::makePotBox(const char *name, const QString &toolTip, QString &value)
{
    auto *box = named(new QLineEdit(this), QString::fromLatin1(name), toolTip, toolTip);
    box->setAlignment(Qt::AlignRight);
    fitToNumber(box, QStringLiteral("0%1").arg(kHighestPosition));
    boundary().connect(box, &QLineEdit::textChanged, this, name, [this, box, &value] { txtPot_Change(box, value); });
    return box;
}

QWidget *AuxPage::buildPotentiometer()
{
    auto *frame = new QGroupBox(tr("Potentiometer"), this);
    auto *column = new QVBoxLayout(frame);
    m_potMax = makePotBox("txtVscrollMax", tr("Highest position, 0 to 255; leave empty if there is no potentiometer"),
                          values().potMax);
    m_potMin = makePotBox("txtVScrollMin", tr("Lowest position, 0 to 255; leave empty if there is no potentiometer"),
                          values().potMin);
    m_potentiometer = named(new QScrollBar(Qt::Vertical, frame), QStringLiteral("VScroll1"),
                            tr("Range of the potentiometer in the main window"), tr("Range of the potentiometer"));
    column->addWidget(new QLabel(tr("Maximum"), frame), 0, Qt::AlignHCenter);
    column->addWidget(m_potMax, 0, Qt::AlignHCenter);
    column->addWidget(m_potentiometer, 1, Qt::AlignHCenter);
    column->addWidget(new QLabel(tr("Minimum"), frame), 0, Qt::AlignHCenter);
    column->addWidget(m_potMin, 0, Qt::AlignHCenter);
    return frame;
}

void AuxPage::fill()
{
    for (std::size_t output = 0; output < m_outputs.size(); ++output) {
        const AuxValues &from = values().aux[output];
        const Output &controls = m_outputs[output];
        controls.enabled->setChecked(from.enabled);
        controls.inverse->setChecked(from.inverse);
        controls.title->setText(from.title);
        for (std::size_t step = 0; step < kAuxSteps; ++step) {
            controls.captions[step]->setText(from.captions[step]);
            controls.weights[step]->show();
        }
    }
    m_potMax->setText(values().potMax);
    m_potMin->setText(values().potMin);
    showPotRange();
}

// Accepts digits only, and limits the number to the highest position. Leading zeros are kept.
void AuxPage::txtPot_Change(QLineEdit *box, QString &value)
{
    QString text = box->text();
    text.removeIf([](QChar c) { return c < u'0' || c > u'9'; });
    bool fits = false;
    if (!text.isEmpty() && (text.toInt(&fits) > kHighestPosition || !fits))
        text = NumberText::fromInteger(kHighestPosition);
    if (text != box->text()) {
        messages().desktop().beep();
        const QSignalBlocker quiet(box);
        box->setText(text);
    }
    value = text;
    showPotRange();
}

void AuxPage::showPotRange()
{
    const auto [low, high] = std::minmax({values().potMin.toInt(), values().potMax.toInt()});
    m_potentiometer->setRange(low, high);
    m_potentiometer->setEnabled(!values().potMin.isEmpty() && !values().potMax.isEmpty());
}

} // namespace calvorn
