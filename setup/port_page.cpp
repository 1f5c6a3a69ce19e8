// SPDX-License-Identifier: MIT
#include "setup/port_page.h"

#include "core/number_text.h"
#include "core/whole_file.h"
#include "platform/parallel_ports.h"
#include "platform/serial_ports.h"
#include "protocol/simulator_keys.h"
#include "setup/lpt_pin_window.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QStyle>

#include <algorithm>
#include <limits>

namespace calvorn {

namespace {

constexpr int kRefreshMs = 1000;
constexpr std::array kPresetAddresses{kSimulatedLptAddress, 0x378, 0x278, 0x3BC}; // in the order of the options
constexpr int kDefaultAddress = 0x378;
constexpr int kHighestAddress = std::numeric_limits<std::uint16_t>::max();
constexpr int kLongestNumber = 5; // digits

// Returns the number formed by the leading digits; the boxes hold at most kLongestNumber digits.
int leadingNumber(const QString &text)
{
    int number = 0;
    for (const QChar c : text.trimmed()) {
        if (c < u'0' || c > u'9')
            break;
        number = 10 * number + (c.unicode() - u'0');
    }
    return number;
}

// Indents a widget to align it with the text of an option.
QHBoxLayout *indented(QWidget *widget)
{
    const QStyle *style = widget->style();
    auto *row = new QHBoxLayout;
    row->addSpacing(style->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth) +
                    style->pixelMetric(QStyle::PM_RadioButtonLabelSpacing));
    row->addWidget(widget, 1);
    return row;
}

int unsignedAddress(std::int16_t address)
{
    return static_cast<std::uint16_t>(address);
}

} // namespace

PortPage::PortPage(const SetUpContext &context)
    : SetUpPage(context, tr("Ports"))
{
    auto *columns = new QHBoxLayout(this);
    columns->addWidget(buildSerialPorts(), 1);
    columns->addWidget(buildParallelPorts(), 1);
    m_refresh.setInterval(kRefreshMs);
    boundary().connect(&m_refresh, &QTimer::timeout, this, "timerPorts_Timer", [this] { IsComPortAvailable(); });
}

// Each option's device is shown beside it; the free number's device is shown below, where there is more room.
QWidget *PortPage::buildSerialPorts()
{
    auto *frame = new QGroupBox(tr("Serial port (PIC, MiniVNA)"), this);
    auto *grid = new QGridLayout(frame);
    auto *freeRow = new QHBoxLayout;
    for (std::size_t i = 0; i < m_optSerial.size(); ++i) {
        const int number = static_cast<int>(i) + 1;
        m_optSerial[i] = named(new QRadioButton(frame), QStringLiteral("optSerialPort_%1").arg(number), {});
        m_comDevice[i] = named(new ElidedLabel(frame), QStringLiteral("lblComDevice_%1").arg(number), {});
        boundary().connect(m_optSerial[i], &QRadioButton::clicked, this, "optSerialPort_Click",
                           [this, number] { optSerialPort_Click(number); });
        if (number <= kFixedComPorts) {
            grid->addWidget(m_optSerial[i], static_cast<int>(i), 0);
            grid->addWidget(m_comDevice[i], static_cast<int>(i), 1);
        }
    }
    // Reserve the width of the longer text, so that the device names do not move when a port appears or disappears.
    m_optSerial.front()->setText(tr("COM%1").arg(kFixedComPorts) + tr(" NOT available"));
    grid->setColumnMinimumWidth(0, m_optSerial.front()->sizeHint().width());
    m_optSerial.back()->setText(tr("COMx"));
    m_optSerial.back()->setToolTip(tr("The port with this number; %1 is a simulated board").arg(kSimulatedComPort));
    m_comNumber = named(new QLineEdit(frame), QStringLiteral("txtAddressRS232"), {}, tr("Number of the serial port"));
    m_comNumber->setMaxLength(kLongestNumber - 1);
    fitToNumber(m_comNumber, QString(kLongestNumber - 1, u'0'));
    m_comState =
        named(new QLabel(frame), QStringLiteral("lblAddressRS232"), tr("Shows whether a port with this number exists"));
    freeRow->addWidget(m_optSerial.back());
    freeRow->addWidget(m_comNumber);
    freeRow->addWidget(m_comState, 1);
    m_accessRule = named(new QPushButton(tr("Access &rule..."), frame), QStringLiteral("cmdAccessRule"), {});
    m_accessRule->setAutoDefault(false);
    boundary().connect(m_accessRule, &QPushButton::clicked, this, "cmdAccessRule_Click",
                       [this] { cmdAccessRule_Click(); });
    freeRow->addWidget(m_accessRule);
    grid->addLayout(freeRow, kFixedComPorts, 0, 1, 2);
    grid->addLayout(indented(m_comDevice.back()), kFixedComPorts + 1, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(kFixedComPorts + 2, 1);
    boundary().connect(m_comNumber, &QLineEdit::textChanged, this, "txtAddressRS232_Change",
                       [this] { txtAddressRS232_Change(); });
    return frame;
}

QString PortPage::simulatedBoard()
{
    return tr("simulated board");
}

QString PortPage::noKnownPort()
{
    return tr("no known port");
}

QWidget *PortPage::buildParallelPorts()
{
    static_assert(kPresetAddresses.size() == kFreeAddress);
    const std::array<QString, kFreeAddress + 1> captions{tr("LPT0 simulated (0x000)"), tr("LPT1, port 888 (0x378)"),
                                                         tr("LPT2, port 632 (0x278)"), tr("LPT3, port 956 (0x3BC)"),
                                                         tr("LPTx, port")};
    auto *frame = new QGroupBox(tr("Parallel port (DDS/DAC board)"), this);
    auto *grid = new QGridLayout(frame);
    auto *freeLine = new QHBoxLayout;
    for (std::size_t i = 0; i < m_optParallel.size(); ++i) {
        m_optParallel[i] = named(new QRadioButton(captions[i], frame), QStringLiteral("optParallelPort_%1").arg(i), {});
        m_lptDevice[i] = named(new ElidedLabel(frame), QStringLiteral("lblLptDevice_%1").arg(i), {});
        boundary().connect(m_optParallel[i], &QRadioButton::clicked, this, "optParallelPort_Click",
                           [this, i] { optParallelPort_Click(i); });
        if (i < kFreeAddress) {
            grid->addWidget(m_optParallel[i], static_cast<int>(i), 0);
            grid->addWidget(m_lptDevice[i], static_cast<int>(i), 1);
        }
    }
    m_address =
        named(new QLineEdit(frame), QStringLiteral("txtAddressLPT"),
              tr("Base address of the parallel port, decimal, up to 65535"), tr("Address of the parallel port"));
    m_address->setMaxLength(kLongestNumber);
    fitToNumber(m_address, QString(kLongestNumber, u'0'));
    m_addressHex = named(new QLabel(frame), QStringLiteral("txtLPTHex"), tr("The same address, hexadecimal"));
    auto *pins = named(new QPushButton(tr("Pins of the &board..."), frame), QStringLiteral("cmdLPTpin"),
                       tr("Show which pin of the port carries which signal"));
    pins->setAutoDefault(false);
    const int freeRow = static_cast<int>(kFreeAddress);
    freeLine->addWidget(m_optParallel.back());
    freeLine->addWidget(m_address);
    freeLine->addWidget(m_addressHex, 1);
    grid->addLayout(freeLine, freeRow, 0, 1, 2);
    grid->addLayout(indented(m_lptDevice.back()), freeRow + 1, 0, 1, 2);
    grid->addWidget(pins, freeRow + 2, 0, 1, 2, Qt::AlignLeft);
    const QFontMetrics metrics = frame->fontMetrics();
    grid->setColumnMinimumWidth(
        1, std::max(metrics.horizontalAdvance(simulatedBoard()), metrics.horizontalAdvance(noKnownPort())));
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(freeRow + 3, 1);
    boundary().connect(m_address, &QLineEdit::textChanged, this, "txtAddressLPT_Change",
                       [this] { txtAddressLPT_Change(); });
    boundary().connect(pins, &QPushButton::clicked, this, "cmdLPTpin_Click", [this] { cmdLPTpin_Click(); });
    return frame;
}

bool PortPage::ComPortExists(int comPort) const
{
    return comPortExists(comPort, iniPath());
}

// Marks unavailable ports only in the text, because the user can still choose them.
void PortPage::IsComPortAvailable()
{
    for (int number = 1; number <= kFixedComPorts; ++number) {
        const QString name = tr("COM%1").arg(number);
        m_optSerial[static_cast<std::size_t>(number - 1)]->setText(ComPortExists(number) ? name
                                                                                         : name + tr(" NOT available"));
    }
    if (!m_comNumber->text().isEmpty())
        m_comState->setText(ComPortExists(leadingNumber(m_comNumber->text())) ? QString() : tr(" NOT available"));
    nameDevices();
}

// Returns the full description of a COM number, for a tool tip.
QString PortPage::describeComPort(int number) const
{
    if (number == kSimulatedComPort)
        return tr("COM%1: a simulated board").arg(number);
    const QString device = serialDeviceOf(number, iniPath());
    if (device.isEmpty())
        return tr("This number has no device. You can assign one in the [Ports] section of the settings file.");
    // A name created by udev is a link to the actual device.
    const QString target = QFileInfo(device).canonicalFilePath();
    return target.isEmpty() || target == device ? device : device + QStringLiteral(" → ") + target;
}

void PortPage::showComDevice(std::size_t index, int number)
{
    const QString description = describeComPort(number);
    ElidedLabel *label = m_comDevice[index];
    if (number == kSimulatedComPort)
        label->setText(simulatedBoard());
    else
        label->setText(serialDeviceOf(number, iniPath()).isEmpty() ? tr("no device") : description);
    label->setToolTip(description);
    m_optSerial[index]->setAccessibleDescription(description);
}

void PortPage::nameDevices()
{
    for (int number = 1; number <= kFixedComPorts; ++number) {
        const auto index = static_cast<std::size_t>(number - 1);
        showComDevice(index, number);
        m_optSerial[index]->setToolTip(m_comDevice[index]->toolTip());
    }
    if (m_comNumber->text().isEmpty()) {
        m_comDevice.back()->clear();
        m_comDevice.back()->setToolTip({});
        m_optSerial.back()->setAccessibleDescription({});
        m_comNumber->setToolTip(tr("Number of the port; %1 is a simulated board").arg(kSimulatedComPort));
    } else {
        showComDevice(m_optSerial.size() - 1, leadingNumber(m_comNumber->text()));
        m_comNumber->setToolTip(m_comDevice.back()->toolTip());
    }
    offerAccessRule();
    nameParallelPorts();
}

void PortPage::lookForUsbIn(const QString &ttyClass)
{
    m_ttyClass = ttyClass;
    offerAccessRule();
}

std::optional<UsbDevice> PortPage::chosenUsbDevice() const
{
    const QString device = serialDeviceOf(values().commPort, iniPath());
    return device.isEmpty() ? std::optional<UsbDevice>() : usbDeviceOf(device, m_ttyClass);
}

// A rule identifies the device itself, so the device must be connected.
void PortPage::offerAccessRule()
{
    const bool isThere = chosenUsbDevice().has_value();
    m_accessRule->setEnabled(isThere);
    m_accessRule->setToolTip(isThere ? tr("Save a udev rule that lets the user at this computer open the board")
                                     : tr("Available when a connected USB board is selected"));
}

void PortPage::nameParallelPorts()
{
    const QVector<ParportEntry> ports = listParports({});
    for (std::size_t i = 0; i < m_optParallel.size(); ++i) {
        const bool isFree = i == kFreeAddress;
        const int address = isFree ? leadingNumber(m_address->text()) : kPresetAddresses[i];
        const auto port = std::find_if(ports.begin(), ports.end(),
                                       [address](const ParportEntry &entry) { return entry.base == address; });
        QString device;
        QString description;
        if (isFree && m_address->text().isEmpty()) {
            // Nothing to name yet
        } else if (address == 0) {
            device = simulatedBoard();
            description = tr("A simulated board, to use the program without hardware");
        } else if (port != ports.end()) {
            device = description = QStringLiteral("/dev/parport%1").arg(port->number);
        } else {
            device = noKnownPort();
            description = tr("The system knows no port at this address");
        }
        m_lptDevice[i]->setText(device);
        m_lptDevice[i]->setToolTip(description);
        m_optParallel[i]->setAccessibleDescription(description);
        m_optParallel[i]->setToolTip(isFree ? tr("A port at this address, for instance on a card") : description);
    }
}

void PortPage::fill()
{
    selectParallelPort();
    IsComPortAvailable();
    selectSerialPort();
}

void PortPage::forget()
{
    for (QLineEdit *box : {m_comNumber, m_address}) {
        const QSignalBlocker quiet(box);
        box->clear();
    }
    m_comState->clear();
    m_addressHex->clear();
    chooseNoOption(m_optSerial.front());
}

void PortPage::selectParallelPort()
{
    const int address = unsignedAddress(values().lptAddress);
    for (std::size_t i = 0; i < kFreeAddress; ++i)
        if (kPresetAddresses[i] == address)
            return chooseOption(m_optParallel[i]);
    m_address->setText(NumberText::fromInteger(address));
    chooseOption(m_optParallel[kFreeAddress]);
}

void PortPage::selectSerialPort()
{
    const std::int16_t port = values().commPort;
    if (port > kFixedComPorts) {
        m_comNumber->setText(NumberText::fromInteger(port));
        chooseOption(m_optSerial.back());
        m_comState->setText(ComPortExists(port) ? QString() : tr(" NOT available"));
    } else if (port > 0) {
        chooseOption(m_optSerial[static_cast<std::size_t>(port - 1)]);
    }
}

void PortPage::optParallelPort_Click(std::size_t index)
{
    if (index < kFreeAddress) {
        values().lptAddress = static_cast<std::int16_t>(kPresetAddresses[index]);
        return;
    }
    if (m_address->text().isEmpty())
        m_address->setText(NumberText::fromInteger(kDefaultAddress));
    txtAddressLPT_Change();
}

void PortPage::txtAddressLPT_Change()
{
    if (leadingNumber(m_address->text()) > kHighestAddress) {
        messages().desktop().beep();
        const QSignalBlocker quiet(m_address);
        m_address->setText(NumberText::fromInteger(kHighestAddress));
    }
    nameParallelPorts();
    const int address = leadingNumber(m_address->text());
    m_addressHex->setText(QStringLiteral("(0x%1)").arg(QString::number(address, 16).toUpper()));
    if (m_optParallel[kFreeAddress]->isChecked())
        values().lptAddress = static_cast<std::int16_t>(static_cast<std::uint16_t>(address));
}

void PortPage::optSerialPort_Click(int index)
{
    if (index <= kFixedComPorts) {
        values().commPort = static_cast<std::int16_t>(index);
        offerAccessRule();
        return;
    }
    if (m_comNumber->text().isEmpty())
        m_comNumber->setText(NumberText::fromInteger(kSimulatedComPort));
    txtAddressRS232_Change();
}

void PortPage::txtAddressRS232_Change()
{
    const int number = leadingNumber(m_comNumber->text());
    if (m_optSerial.back()->isChecked())
        values().commPort = static_cast<std::int16_t>(number);
    m_comState->setText(ComPortExists(number) ? QString() : tr(" NOT available"));
    nameDevices();
}

void PortPage::cmdLPTpin_Click()
{
    LptPinWindow(iniPath(), this).exec();
}

// Only root can install the rule; a comment in the file gives the command.
void PortPage::cmdAccessRule_Click()
{
    const std::optional<UsbDevice> device = chosenUsbDevice();
    if (!device)
        return;
    const QString path = messages().desktop().chooseFileToSave(tr("Rules for udev (*.rules);;All files (*)"),
                                                               QString::fromLatin1(kAccessRuleName));
    if (!path.isEmpty())
        writeWholeFile(path, accessRule(*device));
}

void PortPage::showEvent(QShowEvent *event)
{
    SetUpPage::showEvent(event);
    m_refresh.start();
}

void PortPage::hideEvent(QHideEvent *event)
{
    m_refresh.stop();
    SetUpPage::hideEvent(event);
}

} // namespace calvorn
