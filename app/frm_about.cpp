// SPDX-License-Identifier: MIT
#include "app/frm_about.h"

#include "core/display_mask.h"
#include "core/number_text.h"
#include "instrument/interface_kind.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QMouseEvent>
#include <QPushButton>

namespace calvorn {

namespace {

constexpr DisplayMask kMaskMillivolt{"0.000"};

QLabel *addText(QGridLayout *grid, const char *name, const QString &text, int row, int column, int columns = 1)
{
    auto *label = new QLabel(text);
    label->setObjectName(QString::fromLatin1(name));
    label->setWordWrap(column > 0 || columns > 1);
    label->setTextFormat(Qt::PlainText);
    // Pass clicks on a label through to the background.
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    grid->addWidget(label, row, column, 1, columns, Qt::AlignTop);
    return label;
}

} // namespace

FrmAbout::FrmAbout(const Configuration &configuration, QWidget *parent)
    : QDialog(parent)
    , m_configuration(configuration)
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(tr("About Calvorn"));
    setMinimumWidth(540);
    auto *grid = new QGridLayout(this);
    grid->setColumnStretch(1, 1);
    grid->setVerticalSpacing(10);
    addText(grid, "Label3", tr("Interface:"), 0, 0);
    m_interface = addText(grid, "lblInterfaccia", QString(), 0, 1);
    addText(grid, "Label4", tr("DDS Device:"), 1, 0);
    m_generator = addText(grid, "lblDDS", QString(), 1, 1);
    addText(grid, "Label6", tr("DAC Device:"), 2, 0);
    m_detector = addText(grid, "lblDAC", QString(), 2, 1);
    const QString version = QCoreApplication::applicationVersion();
    addText(grid, "Label1", tr("Calvorn %1, made by the Calvorn authors for radio amateurs.").arg(version), 3, 0, 2);
    addText(grid, "Label2", tr("Without any warranty. Check your wiring before you switch on."), 4, 0, 2);
    addText(grid, "Label5", tr("Free to use, change and pass on under the terms of the MIT licence."), 5, 0, 2);
    auto *exit = new QPushButton(tr("EXIT"), this);
    exit->setObjectName(QStringLiteral("cmdExit"));
    exit->setToolTip(tr("Close this window"));
    exit->setDefault(true);
    grid->addWidget(exit, 6, 0, 1, 2, Qt::AlignRight);
    connect(exit, &QPushButton::clicked, this, &QDialog::accept);
}

QString FrmAbout::interfaceText(const Configuration &c)
{
    const InterfaceKind *kind = interfaceKind(c.interfaceType);
    return kind ? kind->about(c) : QString();
}

QString FrmAbout::generatorText(const Configuration &c)
{
    // Show only whole megahertz: 12.5 MHz as 12MHz.
    const auto megahertz = [](std::int32_t hertz) { return NumberText::fromInteger(hertz / 1000000); };
    return c.ddsDevice + tr(", ClockRef: ") + megahertz(c.ddsXtalFreq) + tr("MHz, Multiplier: ") +
           NumberText::fromInteger(c.ddsMultiplier) + tr(", Max frequency: ") + megahertz(c.ddsMaxFreq) +
           QStringLiteral("MHz");
}

QString FrmAbout::detectorText(const Configuration &c)
{
    const QString step =
        NumberText().masked(static_cast<double>(c.adcStep) * 1000.0, kMaskMillivolt) + QStringLiteral("mV");
    const InterfaceKind *kind = interfaceKind(c.interfaceType);
    return kind ? c.adcDevice + kind->aboutDetector() + step : QString();
}

// Updates the texts, because the configuration may have changed since the window was last open.
void FrmAbout::showEvent(QShowEvent *event)
{
    m_interface->setText(interfaceText(m_configuration).replace(u'\r', u'\n'));
    m_generator->setText(generatorText(m_configuration));
    m_detector->setText(detectorText(m_configuration));
    // Make room for wrapped text.
    resize(width(), layout()->totalHeightForWidth(width()));
    QDialog::showEvent(event);
}

void FrmAbout::mouseReleaseEvent(QMouseEvent *event)
{
    event->accept();
    accept();
}

} // namespace calvorn
