// SPDX-License-Identifier: MIT
#include "controls/frequency_readouts.h"

#include <QHBoxLayout>

namespace calvorn {

namespace {

QLabel *makeLabel(QWidget *parent, const char *name, const QString &text, const QString &toolTip)
{
    auto *label = new QLabel(text, parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setToolTip(toolTip);
    label->setAccessibleName(toolTip);
    return label;
}

} // namespace

FrequencyReadouts::FrequencyReadouts(QWidget *parent)
    : QWidget(parent)
    , m_start(makeLabel(this, "lblStart", tr("start"), tr("Frequency of the first sample, Hz")))
    , m_centre(makeLabel(this, "lblCentro", tr("center"), tr("Frequency of sample 200, Hz")))
    , m_stop(makeLabel(this, "lblStop", tr("stop"), tr("Frequency of the last sample, Hz")))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    // Equal thirds keep the centre label under the centre line, regardless of the label widths.
    row->addWidget(m_start, 1, Qt::AlignLeft);
    row->addWidget(m_centre, 1, Qt::AlignHCenter);
    row->addWidget(m_stop, 1, Qt::AlignRight);
}

void FrequencyReadouts::show(const QString &start, const QString &centre, const QString &stop)
{
    m_start->setText(start);
    m_centre->setText(centre);
    m_stop->setText(stop);
}

} // namespace calvorn
