// SPDX-License-Identifier: MIT
#include "server/drivers/vna_protocol.h"

#include "protocol/vna_instrument.h"

namespace calvorn {

namespace {

constexpr int kHighestCount = kVnaFullScale - 1;

int littleEndian(const QByteArray &bytes, qsizetype at)
{
    return static_cast<quint8>(bytes[at]) | static_cast<quint8>(bytes[at + 1]) << 8;
}

} // namespace

QByteArray vnaCommandText(const VnaCommand &command)
{
    QByteArray text;
    for (const qint64 number : {static_cast<qint64>(command.path), static_cast<qint64>(command.start),
                                static_cast<qint64>(command.samples), static_cast<qint64>(command.step)}) {
        text += QByteArray::number(number);
        text += '\r';
    }
    return text;
}

VnaCommand vnaGeneratorCommand(std::uint32_t word)
{
    return {VnaCommand::Path::Reflection, word, 1, 0};
}

VnaReply::VnaReply(int samples)
    : m_wanted(samples)
{
    m_samples.reserve(samples);
}

VnaReply::State VnaReply::take(const QByteArray &bytes)
{
    if (m_state == State::Broken || bytes.isEmpty())
        return m_state;
    m_rest += bytes;
    qsizetype at = 0;
    for (; m_rest.size() - at >= kSampleBytes && m_samples.size() < m_wanted; at += kSampleBytes) {
        const VnaSample sample{littleEndian(m_rest, at), littleEndian(m_rest, at + 2)};
        if (sample.phase > kHighestCount || sample.magnitude > kHighestCount) {
            m_state = State::Broken;
            return m_state;
        }
        m_samples.append(sample);
    }
    m_rest.remove(0, at);
    if (m_samples.size() == m_wanted)
        m_state = m_rest.isEmpty() ? State::Complete : State::Broken;
    return m_state;
}

} // namespace calvorn
