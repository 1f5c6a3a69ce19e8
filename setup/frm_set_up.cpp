// SPDX-License-Identifier: MIT
#include "setup/frm_set_up.h"

#include "core/detector_settings.h"
#include "core/runtime_error.h"
#include "instrument/interface_kind.h"
#include "setup/adc_page.h"
#include "setup/aux_page.h"
#include "setup/dds_page.h"
#include "setup/interface_page.h"
#include "setup/port_page.h"
#include "setup/prepared_settings.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QShowEvent>

#include <utility>

namespace calvorn {

namespace {

// Highlights a pressed button, because the default shade is hard to see among dark colours.
void markPressed(QPushButton *button, bool pressed)
{
    QPalette colours = button->parentWidget()->palette();
    if (pressed) {
        colours.setBrush(QPalette::Button, colours.brush(QPalette::Highlight));
        colours.setBrush(QPalette::ButtonText, colours.brush(QPalette::HighlightedText));
    }
    button->setPalette(pressed ? colours : QPalette());
}

} // namespace

FrmSetUp::FrmSetUp(const Configuration &configuration, Messages &messages, ErrorBoundary &boundary, QWidget *parent)
    : QDialog(parent)
    , m_configuration(configuration)
    , m_messages(messages)
    , m_boundary(boundary)
{
    setObjectName(QStringLiteral("frmSetUp"));
    setWindowTitle(tr("Configuration"));
    auto *grid = new QGridLayout(this);
    grid->addLayout(buildPageButtons(), 0, 0);
    grid->setColumnStretch(1, 1);
    // Create the widgets in tab order.
    buildPages({m_values, configuration, messages, boundary});
    grid->addLayout(buildButtons(), 1, 0, 1, 2);
}

QLayout *FrmSetUp::buildPageButtons()
{
    struct Button
    {
        const char *name;
        QString caption;
        QString toolTip;
    };
    const std::array<Button, kPages> buttons{{
        {"cmdInterface", tr("&Interface"), tr("Which hardware is connected")},
        {"cmdDDS", tr("Syn&thesiser"), tr("The generator chip, its clock and its limits")},
        {"cmdADC", tr("&Detector"), tr("The converter of the detector")},
        {"cmdAux", tr("Auxi&liary"), tr("The auxiliary outputs of the parallel-port board")},
        {"cmdPort", tr("&Ports"), tr("The serial port and the parallel port")},
    }};
    auto *column = new QVBoxLayout;
    // Use a group, because auto-exclusive buttons would include the options on the pages.
    auto *group = new QButtonGroup(this);
    for (std::size_t page = 0; page < kPages; ++page) {
        auto *button = new QPushButton(buttons[page].caption, this);
        button->setObjectName(QString::fromLatin1(buttons[page].name));
        button->setToolTip(buttons[page].toolTip);
        button->setCheckable(true);
        connect(button, &QPushButton::toggled, this, [button](bool pressed) { markPressed(button, pressed); });
        group->addButton(button);
        button->setAutoDefault(false);
        button->setMinimumHeight(34);
        m_boundary.connect(button, &QPushButton::clicked, this, buttons[page].name, [this, page] { showPage(page); });
        column->addWidget(button);
        m_pageButtons[page] = button;
    }
    column->addStretch();
    return column;
}

QLayout *FrmSetUp::buildButtons()
{
    m_apply = new QPushButton(tr("&Apply"), this);
    m_apply->setObjectName(QStringLiteral("cmdApply"));
    m_apply->setToolTip(tr("Save the configuration and close the program; changes take effect at the next start"));
    auto *exit = new QPushButton(tr("&EXIT"), this);
    exit->setObjectName(QStringLiteral("cmdExit"));
    exit->setToolTip(tr("Close without changes"));
    // Return in a text box must only accept the entry.
    m_apply->setAutoDefault(false);
    exit->setAutoDefault(false);
    m_boundary.connect(m_apply, &QPushButton::clicked, this, "cmdApply_Click", [this] { cmdApply_Click(); });
    m_boundary.connect(exit, &QPushButton::clicked, this, "cmdExit_Click", [this] { reject(); });
    auto *row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(m_apply);
    row->addWidget(exit);
    return row;
}

// Stacks the pages; only one is visible at a time.
void FrmSetUp::buildPages(const SetUpContext &context)
{
    auto *interfacePage = new InterfacePage(context);
    m_pages = {interfacePage, new DdsPage(context), new AdcPage(context), new AuxPage(context), new PortPage(context)};
    connect(interfacePage, &InterfacePage::interfaceChosen, this, &FrmSetUp::interfaceChosen);
    auto *frame = new QWidget(this);
    frame->setObjectName(QStringLiteral("frameSetUp"));
    auto *stack = new QGridLayout(frame);
    stack->setContentsMargins(0, 0, 0, 0);
    for (std::size_t page = 0; page < kPages; ++page) {
        m_pages[page]->setObjectName(QStringLiteral("frameSetUp_%1").arg(page));
        stack->addWidget(m_pages[page], 0, 0);
    }
    static_cast<QGridLayout *>(layout())->addWidget(frame, 0, 1);
    frameInvisibili();
}

void FrmSetUp::showEvent(QShowEvent *event)
{
    if (!event->spontaneous())
        m_boundary.run("Form_Load", [this] { load(); });
    QDialog::showEvent(event);
}

void FrmSetUp::load()
{
    m_values = SetUpValues();
    const SetUpOpening opening = std::exchange(m_opening, {});
    QStringList faults = loadPorts(m_values, opening.firstStart ? preparedSettings() : m_configuration.iniPath);
    faults += opening.firstStart && hasDefaults(m_configuration.iniPath, m_values.interfaceType)
                  ? loadDefaults(m_values, m_configuration.iniPath, m_values.interfaceType)
                  : loadHardware(m_values, m_configuration.iniPath, opening.reportedDevice);
    for (SetUpPage *page : m_pages)
        page->forget();
    interfaceChosen();
    showPage(Interface);
    if (!faults.isEmpty())
        m_messages.warn(tr("Some settings could not be read.") + u'\r' + faults.join(u'\r'));
}

void FrmSetUp::frameInvisibili()
{
    for (SetUpPage *page : m_pages)
        page->hide();
}

void FrmSetUp::showPage(std::size_t page)
{
    frameInvisibili();
    m_pages[page]->fill();
    m_pages[page]->show();
    m_pageButtons[page]->setChecked(true);
}

// The chip, the converter and the outputs depend on the interface; without an interface, their pages are empty.
void FrmSetUp::enablePageButtons(bool enabled)
{
    for (const std::size_t page : {Dds, Adc, Aux})
        m_pageButtons[page]->setEnabled(enabled);
}

void FrmSetUp::interfaceChosen()
{
    enablePageButtons(interfaceKind(m_values.interfaceType) != nullptr);
}

void FrmSetUp::cmdApply_Click()
{
    // Commit a pending entry, regardless of how the button was pressed.
    m_apply->setFocus();
    if (m_messages.show(BoxIcon::Warning, BoxButtons::OkCancel,
                        tr("Please confirm, now program will exit.") + u'\r' + tr("Please restart.")) != kBoxOk)
        return;
    QVector<ProfileEntry> entries = entriesOf(m_values);
    if (m_values.isLawChosen)
        entries += detectorLawEntries(m_values.detectorLaw, Profile(m_configuration.iniPath));
    if (!writeProfileStrings(m_configuration.iniPath, entries))
        throw RuntimeError(RuntimeError::Kind::File,
                           tr("the configuration could not be written to %1").arg(m_configuration.iniPath));
    accept();
}

} // namespace calvorn
