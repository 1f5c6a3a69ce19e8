// SPDX-License-Identifier: MIT
#pragma once

#include "platform/usb_device.h"
#include "setup/set_up_page.h"
#include "widgets/elided_label.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <array>
#include <optional>

namespace calvorn {

// The ports: the available COM numbers, the selected number, and the parallel-port address. While visible, the page is
// updated when adapters are plugged in or removed.
class PortPage : public SetUpPage
{
    Q_OBJECT

public:
    explicit PortPage(const SetUpContext &context);

    void fill() override;
    void forget() override;

    // Looks for USB devices in a folder other than /sys/class/tty, for tests.
    void lookForUsbIn(const QString &ttyClass);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    static constexpr int kFixedComPorts = 6;
    static constexpr std::size_t kFreeAddress = 4;

    QWidget *buildSerialPorts();
    QWidget *buildParallelPorts();
    bool ComPortExists(int comPort) const;
    void IsComPortAvailable();
    QString describeComPort(int number) const;
    void showComDevice(std::size_t index, int number);
    static QString simulatedBoard();
    static QString noKnownPort();
    void nameDevices();
    void nameParallelPorts();
    void selectParallelPort();
    void selectSerialPort();
    void optParallelPort_Click(std::size_t index);
    void optSerialPort_Click(int index);
    void txtAddressLPT_Change();
    void txtAddressRS232_Change();
    void cmdLPTpin_Click();
    std::optional<UsbDevice> chosenUsbDevice() const;
    void offerAccessRule();
    void cmdAccessRule_Click();

    QTimer m_refresh;
    std::array<QRadioButton *, kFixedComPorts + 1> m_optSerial{}; // COM1 to COM6, and the free number
    std::array<ElidedLabel *, kFixedComPorts + 1> m_comDevice{};
    QLineEdit *m_comNumber = nullptr;
    QLabel *m_comState = nullptr;
    QPushButton *m_accessRule = nullptr;
    QString m_ttyClass = QStringLiteral("/sys/class/tty");
    std::array<QRadioButton *, kFreeAddress + 1> m_optParallel{};
    std::array<ElidedLabel *, kFreeAddress + 1> m_lptDevice{};
    QLineEdit *m_address = nullptr;
    QLabel *m_addressHex = nullptr;
};

} // namespace calvorn
