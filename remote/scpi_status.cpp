// SPDX-License-Identifier: MIT
#include "remote/scpi_status.h"

#include "remote/scpi_error.h"

#include <utility>

namespace calvorn {

namespace {

constexpr int kByte = 0xFF;

} // namespace

void ScpiRegisterGroup::setCondition(int bits)
{
    const int next = bits & kAllBits;
    const int risen = next & ~m_condition;
    const int fallen = m_condition & ~next;
    m_condition = next;
    m_event |= (risen & m_positive) | (fallen & m_negative);
}

void ScpiRegisterGroup::setConditionBits(int bits, bool on)
{
    setCondition(on ? m_condition | bits : m_condition & ~bits);
}

int ScpiRegisterGroup::takeEvent()
{
    return std::exchange(m_event, 0);
}

void ScpiRegisterGroup::preset()
{
    m_enable = 0;
    m_positive = kAllBits;
    m_negative = 0;
}

void ScpiStatus::raise(int esrBits)
{
    m_esr |= esrBits & kByte;
}

void ScpiStatus::raiseError(int number)
{
    const int bit = esrBitOf(number);
    if (bit >= 0)
        raise(1 << bit);
}

int ScpiStatus::takeEsr()
{
    return std::exchange(m_esr, 0);
}

void ScpiStatus::setEsrEnable(int bits)
{
    m_esrEnable = bits & kByte;
}

void ScpiStatus::setServiceEnable(int bits)
{
    m_serviceEnable = bits & kByte & ~kStbMasterSummary;
}

int ScpiStatus::statusByte(bool hasErrors, bool hasMessage) const
{
    int byte = 0;
    if (hasErrors)
        byte |= kStbErrorQueue;
    if (m_questionable.hasSummary())
        byte |= kStbQuestionable;
    if (hasMessage)
        byte |= kStbMessageAvailable;
    if ((m_esr & m_esrEnable) != 0)
        byte |= kStbEventSummary;
    if (m_operation.hasSummary())
        byte |= kStbOperation;
    if ((byte & m_serviceEnable) != 0)
        byte |= kStbMasterSummary;
    return byte;
}

void ScpiStatus::clear()
{
    m_esr = 0;
    m_operation.clear();
    m_questionable.clear();
}

void ScpiStatus::preset()
{
    m_operation.preset();
    m_questionable.preset();
}

} // namespace calvorn
