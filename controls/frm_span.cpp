// SPDX-License-Identifier: MIT
#include "controls/frm_span.h"

#include "core/number_text.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <algorithm>
#include <cmath>

namespace calvorn {

namespace {

constexpr int kTitleButtons = 150; // logical pixels for icon and buttons beside the window title

} // namespace

FrmSpan::FrmSpan(const Configuration &configuration, Desktop &desktop, QWidget *parent)
    : QDialog(parent)
    , m_configuration(configuration)
    , m_desktop(desktop)
{
    setObjectName(QStringLiteral("frmSpan"));
    setWindowTitle(tr("Centre and span"));
    setMinimumWidth(fontMetrics().horizontalAdvance(windowTitle()) + kTitleButtons);
    auto *grid = new QGridLayout(this);
    m_centreBox = addBox(grid, "txtCentre", tr("&Centre - Hz"), tr("Enter the centre of the range in Hz"));
    m_spanBox = addBox(grid, "txtSpan", tr("&Span - Hz"), tr("Enter the width of the range in Hz"));
    connect(m_centreBox, &EntryBox::lostFocus, this, &FrmSpan::txtCentre_LostFocus);
    connect(m_spanBox, &EntryBox::lostFocus, this, &FrmSpan::txtSpan_LostFocus);

    auto *buttons = new QHBoxLayout;
    auto *take = new QPushButton(tr("OK"), this);
    take->setObjectName(QStringLiteral("cmdOk"));
    take->setToolTip(tr("Sweep this range"));
    take->setDefault(true);
    auto *cancel = new QPushButton(tr("Cancel"), this);
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    cancel->setToolTip(tr("Close without changes"));
    buttons->addStretch();
    buttons->addWidget(take);
    buttons->addWidget(cancel);
    grid->addLayout(buttons, grid->rowCount(), 0, 1, 2);
    connect(take, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

EntryBox *FrmSpan::addBox(QGridLayout *grid, const char *name, const QString &caption, const QString &toolTip)
{
    auto *box = new EntryBox(this);
    box->setObjectName(QString::fromLatin1(name));
    box->setToolTip(toolTip);
    box->setAccessibleName(QString(caption).remove(u'&'));
    auto *label = new QLabel(caption, this);
    label->setBuddy(box);
    const int row = grid->rowCount();
    grid->addWidget(label, row, 0);
    grid->addWidget(box, row, 1);
    connect(box, &EntryBox::gotFocus, this, [box] { enterBox(box); });
    return box;
}

void FrmSpan::load()
{
    const double start = m_configuration.startFreq;
    const double stop = m_configuration.stopFreq;
    m_falls = start > stop;
    m_centre = std::floor((start + stop) / 2.0);
    m_span = std::abs(stop - start);
    m_changed = false;
    for (EntryBox *box : {m_centreBox, m_spanBox})
        box->setModified(false);
    showHertz(m_centreBox, m_centre);
    showHertz(m_spanBox, m_span);
    m_centreBox->setFocus();
    enterBox(m_centreBox);
    m_centreBox->selectAll();
}

void FrmSpan::enterBox(EntryBox *box)
{
    const NumberText numbers;
    if (numbers.isNumeric(box->text()))
        box->setText(numbers.generalNumber(box->text()));
}

void FrmSpan::showHertz(EntryBox *box, double value)
{
    box->setText(NumberText().masked(value, kMaskHertz));
}

double FrmSpan::entered(const EntryBox *box, double former)
{
    const NumberText numbers;
    if (numbers.isNumeric(box->text()))
        return std::round(numbers.toDouble(box->text()));
    m_desktop.beep();
    return former;
}

double FrmSpan::within(double value, double lowest, double highest)
{
    const double inside = std::max(std::min(value, highest), lowest);
    if (inside != value)
        m_desktop.beep();
    return inside;
}

void FrmSpan::txtCentre_LostFocus()
{
    const double former = m_centre;
    const double margin = kMinSweepRange / 2.0;
    const double value = entered(m_centreBox, former);
    // A range read from a file may be outside the limits; keep it until the user changes it.
    if (value != former) {
        m_centre = within(value, m_configuration.ddsMinFreq + margin, m_configuration.ddsMaxFreq - margin);
        m_changed = true;
        narrowSpan();
    }
    showHertz(m_centreBox, m_centre);
}

void FrmSpan::txtSpan_LostFocus()
{
    const double value = entered(m_spanBox, m_span);
    if (value != m_span) {
        m_span = value;
        m_changed = true;
        narrowSpan();
    }
    showHertz(m_spanBox, m_span);
}

void FrmSpan::narrowSpan()
{
    const double room = std::min(m_centre - m_configuration.ddsMinFreq, m_configuration.ddsMaxFreq - m_centre);
    m_span = within(m_span, kMinSweepRange, std::max(2.0 * room, double{kMinSweepRange}));
    if (!m_spanBox->isBeingTyped())
        showHertz(m_spanBox, m_span);
}

Span FrmSpan::span() const
{
    const double low = m_centre - std::floor(m_span / 2.0);
    const double high = low + m_span;
    return m_falls ? boundedSpan(m_configuration, high, low) : boundedSpan(m_configuration, low, high);
}

void FrmSpan::done(int result)
{
    if (result == Accepted) {
        for (EntryBox *box : {m_centreBox, m_spanBox})
            box->commit();
        if (m_changed)
            emit spanEntered(span());
    }
    QDialog::done(result);
}

} // namespace calvorn
