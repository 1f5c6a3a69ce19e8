// SPDX-License-Identifier: MIT
#pragma once

namespace calvorn {

// Bits of the standard event status register, IEEE 488.2 chapter 11.5.1.
inline constexpr int kEsrOperationComplete = 1 << 0;
inline constexpr int kEsrQueryError = 1 << 2;
inline constexpr int kEsrDeviceError = 1 << 3;
inline constexpr int kEsrExecutionError = 1 << 4;
inline constexpr int kEsrCommandError = 1 << 5;
inline constexpr int kEsrPowerOn = 1 << 7;

// Bits of the status byte, IEEE 488.2 chapter 11.2 and SCPI-99 volume 1, chapter 9.
inline constexpr int kStbErrorQueue = 1 << 2;
inline constexpr int kStbQuestionable = 1 << 3;
inline constexpr int kStbMessageAvailable = 1 << 4;
inline constexpr int kStbEventSummary = 1 << 5;
inline constexpr int kStbMasterSummary = 1 << 6;
inline constexpr int kStbOperation = 1 << 7;

// Bits of the operation condition register, SCPI-99 volume 1, chapter 9.3.
inline constexpr int kOperationCalibrating = 1 << 0;
inline constexpr int kOperationSettling = 1 << 1;
inline constexpr int kOperationRanging = 1 << 2;
inline constexpr int kOperationSweeping = 1 << 3;
inline constexpr int kOperationMeasuring = 1 << 4;
inline constexpr int kOperationWaitingForTrigger = 1 << 5;
inline constexpr int kOperationCorrecting = 1 << 7;

// Bits of the questionable condition register, SCPI-99 volume 1, chapter 9.4.
inline constexpr int kQuestionableVoltage = 1 << 0;
inline constexpr int kQuestionablePower = 1 << 3;
inline constexpr int kQuestionableFrequency = 1 << 5;
inline constexpr int kQuestionableCalibration = 1 << 8;

// An SCPI-99 register group: 15 bits, 0 to 32767; bit 15 of a value is ignored and always reads 0.
class ScpiRegisterGroup
{
public:
    static constexpr int kAllBits = 0x7FFF;

    int condition() const { return m_condition; }
    // A rising bit sets its event if it is set in the positive filter, a falling bit if it is set in the negative one.
    void setCondition(int bits);
    void setConditionBits(int bits, bool on); // leaves the other bits unchanged

    int event() const { return m_event; }
    int takeEvent(); // reads and clears
    int enable() const { return m_enable; }
    void setEnable(int bits) { m_enable = bits & kAllBits; }
    int positiveTransition() const { return m_positive; }
    void setPositiveTransition(int bits) { m_positive = bits & kAllBits; }
    int negativeTransition() const { return m_negative; }
    void setNegativeTransition(int bits) { m_negative = bits & kAllBits; }

    bool hasSummary() const { return (m_event & m_enable) != 0; }
    // STATus:PRESet: disables all events and selects rising bits. Does not change condition or events.
    void preset();
    // *CLS: clears only the events.
    void clear() { m_event = 0; }

private:
    int m_condition = 0;
    int m_event = 0;
    int m_enable = 0;
    int m_positive = kAllBits;
    int m_negative = 0;
};

// The status registers of one client. IEEE 488.2 registers have 8 bits, 0 to 255; higher bits are ignored. Initially,
// the power-on bit is set and nothing is enabled.
class ScpiStatus
{
public:
    // Sets bits of the standard event status register, such as kEsrOperationComplete.
    void raise(int esrBits);
    // Sets the bit for the error's class; numbers without a class set no bit.
    void raiseError(int number);
    int esr() const { return m_esr; }
    int takeEsr(); // *ESR?: reads and clears
    int esrEnable() const { return m_esrEnable; }
    void setEsrEnable(int bits);
    int serviceEnable() const { return m_serviceEnable; }
    // Bit 6 cannot be enabled and is ignored.
    void setServiceEnable(int bits);

    // *STB?: reads without clearing. hasErrors: the error queue is not empty; hasMessage: a response is pending.
    int statusByte(bool hasErrors, bool hasMessage) const;

    ScpiRegisterGroup &operation() { return m_operation; }
    const ScpiRegisterGroup &operation() const { return m_operation; }
    ScpiRegisterGroup &questionable() { return m_questionable; }
    const ScpiRegisterGroup &questionable() const { return m_questionable; }

    // *CLS except for the error queue: clears all event registers but not the enable registers.
    void clear();
    // STATus:PRESet for both groups. Does not change the IEEE 488.2 registers.
    void preset();

private:
    int m_esr = kEsrPowerOn;
    int m_esrEnable = 0;
    int m_serviceEnable = 0;
    ScpiRegisterGroup m_operation;
    ScpiRegisterGroup m_questionable;
};

} // namespace calvorn
