// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>

#include <cstdint>

namespace calvorn {

// A MiniVNA command: four decimal numbers, each terminated by a carriage return.
struct VnaCommand
{
    enum class Path {
        Reflection = 0,   // both converters are connected to the bridge
        Transmission = 1, // the second converter is connected to the DET socket
    };

    Path path = Path::Reflection;
    std::uint32_t start = 0; // tuning word of the first sample; 0 switches the generator off
    int samples = 1;         // at least 1: a command with 0 gets no reply
    std::uint32_t step = 0;  // added to the word after each sample

    bool operator==(const VnaCommand &) const = default;
};

QByteArray vnaCommandText(const VnaCommand &command);

// Returns the command that sets the generator to this tuning word; 0 switches it off. The reply is one sample.
VnaCommand vnaGeneratorCommand(std::uint32_t word);

// One sample: two counts from the 10-bit converters, 0..1023.
struct VnaSample
{
    int phase = 0;
    int magnitude = 0;

    bool operator==(const VnaSample &) const = default;
};

// Collects the reply to one command: four bytes per sample, phase first, low byte first. A reply has no header, check
// sum or end mark; the only redundancy is that the six bits above each count are always 0.
class VnaReply
{
public:
    enum class State {
        Incomplete,
        Complete,
        Broken, // a count above 1023 or too many bytes, because bytes were lost, added or damaged
    };

    static constexpr int kSampleBytes = 4;

    // samples: the number of samples requested.
    explicit VnaReply(int samples = 0);

    // Accepts bytes in pieces of any length. A broken reply remains broken.
    State take(const QByteArray &bytes);
    State state() const { return m_state; }

    const QList<VnaSample> &samples() const { return m_samples; }

private:
    int m_wanted;
    QByteArray m_rest; // bytes of an incomplete sample
    QList<VnaSample> m_samples;
    State m_state = State::Incomplete;
};

} // namespace calvorn
