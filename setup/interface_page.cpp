// SPDX-License-Identifier: MIT
#include "setup/interface_page.h"

#include "instrument/interface_kind.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace calvorn {

InterfacePage::InterfacePage(const SetUpContext &context)
    : SetUpPage(context, tr("Interface"))
{
    const std::array<QString, 3> captions{tr("PI&C 16F877 board on USB"), tr("DDS/DAC &board on the parallel port"),
                                          tr("&MiniVNA on USB")};
    const std::array<QString, 3> toolTips{
        tr("A generator and detector with a microcontroller, on a serial port (COM)"),
        tr("A generator and detector on a parallel port (LPT), with two auxiliary outputs"),
        tr("The vector analyser for 0.1 to 180 MHz, on a serial port (COM)")};
    const std::array<QString, 3> defaults{tr("Default &1"), tr("Default &2"), tr("Default &3")};
    auto *grid = new QGridLayout(this);
    grid->setVerticalSpacing(12);
    for (std::size_t i = 0; i < m_optInterface.size(); ++i) {
        const auto index = static_cast<std::int16_t>(i + 1);
        const int row = static_cast<int>(i);
        auto *option = named(new QRadioButton(captions[i], this), QStringLiteral("optInterface_%1").arg(index),
                             toolTips[i] + u'\n' + tr("Choosing an interface loads its prepared configuration."));
        auto *button = named(new QPushButton(defaults[i], this), QStringLiteral("cmdDefault%1").arg(index),
                             tr("Choose this interface and load its prepared configuration, discarding all changes"),
                             tr("Default configuration: %1").arg(QString(captions[i]).remove(u'&')));
        button->setAutoDefault(false);
        grid->addWidget(option, row, 0);
        grid->addWidget(button, row, 1);
        m_optInterface[i] = option;
        boundary().connect(option, &QRadioButton::clicked, this, "optInterface_Click",
                           [this, index] { optInterface_Click(index); });
        boundary().connect(button, &QPushButton::clicked, this, "cmdDefault_Click",
                           [this, index] { cmdDefault_Click(index); });
    }
    auto *hint =
        wrapping(new QLabel(tr("Without hardware: choose any interface, then a simulated board on the \"Ports\" page: "
                               "LPT0 for the parallel port, COM100 for the two others."),
                            this));
    grid->addWidget(hint, 3, 0, 1, 2, Qt::AlignBottom);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(3, 1);
}

void InterfacePage::fill()
{
    // Select no option if the file names an unknown interface.
    for (std::size_t i = 0; i < m_optInterface.size(); ++i)
        if (values().interfaceType == interfaceKinds()[i].number)
            chooseOption(m_optInterface[i]);
}

void InterfacePage::forget()
{
    chooseNoOption(m_optInterface.front());
}

// Ignores a click on the selected option, which would undo changes made on the other pages.
void InterfacePage::optInterface_Click(std::int16_t index)
{
    if (values().interfaceType == index)
        return;
    values().interfaceType = index;
    if (hasDefaults(iniPath(), index))
        takeDefaults(index);
    else
        messages().warn(tr("Sorry, default value not found."));
    emit interfaceChosen();
}

void InterfacePage::cmdDefault_Click(std::int16_t index)
{
    if (!hasDefaults(iniPath(), index)) {
        const std::array<QString, 3> texts{tr("Default value for PIC not found."),
                                           tr("Default value for DDS/DAC connencted to LPT not found."),
                                           tr("Default value for MiniVNA not found.")};
        messages().warn(texts[static_cast<std::size_t>(index - 1)]);
        return;
    }
    values().interfaceType = index;
    takeDefaults(index);
    fill();
    emit interfaceChosen();
}

void InterfacePage::takeDefaults(std::int16_t index)
{
    const QStringList faults = loadDefaults(values(), iniPath(), index);
    if (!faults.isEmpty())
        messages().warn(tr("Some settings could not be read.") + u'\r' + faults.join(u'\r'));
}

} // namespace calvorn
