// SPDX-License-Identifier: MIT
// Parses arbitrary bytes as a MiniVNA reply, in pieces of any length. The piece size must not affect the result, no
// count may exceed 1023, and a complete reply must consist of exactly the bytes of its samples.
#include "fuzz/require.h"
#include "server/drivers/vna_protocol.h"

#include <algorithm>
#include <fuzzer/FuzzedDataProvider.h>

using namespace calvorn;
using fuzz::require;

namespace {

QByteArray bytesOf(const QList<VnaSample> &samples)
{
    QByteArray bytes;
    for (const VnaSample &sample : samples) {
        for (const int count : {sample.phase, sample.magnitude}) {
            bytes += static_cast<char>(count & 0xFF);
            bytes += static_cast<char>(count >> 8);
        }
    }
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    const int wanted = data.PickValueInArray({1, 2, 400});
    const auto piece = data.ConsumeIntegralInRange<qsizetype>(1, 200);
    QByteArray reply = QByteArray::fromStdString(data.ConsumeRemainingBytesAsString());

    VnaReply whole(wanted);
    whole.take(reply);
    require(whole.samples().size() <= wanted);
    for (const VnaSample &sample : whole.samples())
        require(sample.phase >= 0 && sample.phase <= 1023 && sample.magnitude >= 0 && sample.magnitude <= 1023);
    if (whole.state() == VnaReply::State::Complete)
        require(bytesOf(whole.samples()) == reply);
    if (whole.state() == VnaReply::State::Incomplete)
        require(reply.startsWith(bytesOf(whole.samples())) && reply.size() < wanted * VnaReply::kSampleBytes);

    VnaReply inPieces(wanted);
    for (qsizetype at = 0; at < reply.size(); at += piece)
        inPieces.take(reply.mid(at, piece));
    require(inPieces.state() == whole.state() && inPieces.samples() == whole.samples());
    return 0;
}
