// SPDX-License-Identifier: MIT
// Feeds arbitrary bytes to the PIC frame decoder, in pieces of any length. Every decoded sweep must be present in the
// input as a complete frame, and the piece size must not affect the result.
#include "fuzz/require.h"
#include "server/drivers/pic_frames.h"
#include "tests/support/pic_frame.h"

#include <algorithm>
#include <fuzzer/FuzzedDataProvider.h>
#include <random>

using namespace calvorn;
using fuzz::require;
using test::picFrame;

namespace {

// Returns a mix of frames, damaged frames and random bytes that depends on the fuzzer input.
QByteArray makeLine(FuzzedDataProvider &data)
{
    constexpr int kMostParts = 12;
    QByteArray line;
    std::uint8_t sequence = data.ConsumeIntegral<std::uint8_t>();
    for (int part = 0; part < kMostParts && data.remaining_bytes() > 0; ++part) {
        if (data.ConsumeBool()) {
            line += QByteArray::fromStdString(data.ConsumeRandomLengthString(600));
            continue;
        }
        std::minstd_rand random(data.ConsumeIntegral<std::uint8_t>() + 1U);
        QList<int> samples;
        for (int index = 0; index < 400; ++index)
            samples.append(static_cast<int>(random() % 1024));
        const auto damage = data.ConsumeIntegralInRange<int>(0, 5);
        // Damage 4 is a frame with a different plan, so it does not belong to this sweep.
        QByteArray frame = damage == 4 ? picFrame(sequence++, samples, QByteArray::fromHex("0089062000000065"))
                                       : picFrame(sequence++, samples);
        const auto position = data.ConsumeIntegralInRange<qsizetype>(0, frame.size() - 1);
        if (damage == 1)
            frame.remove(position, 1);
        else if (damage == 2)
            frame.insert(position, static_cast<char>(data.ConsumeIntegral<std::uint8_t>()));
        else if (damage == 3)
            frame[position] = static_cast<char>(frame[position] ^ data.ConsumeIntegral<std::uint8_t>());
        line += frame;
    }
    return line;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    const auto piece = data.ConsumeIntegralInRange<qsizetype>(1, 700);
    const QByteArray line = makeLine(data);

    QList<QList<int>> atOnce;
    qsizetype damaged = 0;
    PicDecoder whole({8'980'000, 100});
    whole.take(line);
    while (const auto sweep = whole.next()) {
        if (sweep->isDamaged())
            ++damaged;
        else
            atOnce.append(sweep->samples);
    }
    // At most one per frame length without a good frame, plus one per gap next to a good frame.
    require(damaged <= line.size() / 505 + atOnce.size() + 1);
    for (const QList<int> &samples : atOnce) {
        require(samples.size() == 400);
        bool stood = false;
        for (int sequence = 0; sequence < 256 && !stood; ++sequence)
            stood = line.contains(picFrame(static_cast<std::uint8_t>(sequence), samples));
        require(stood);
    }

    QList<QList<int>> inPieces;
    PicDecoder decoder({8'980'000, 100});
    for (qsizetype at = 0; at < line.size(); at += piece) {
        decoder.take(line.mid(at, piece));
        while (const auto sweep = decoder.next()) {
            if (!sweep->isDamaged())
                inPieces.append(sweep->samples);
        }
    }
    require(inPieces == atOnce);
    return 0;
}
