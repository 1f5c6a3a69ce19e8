// SPDX-License-Identifier: MIT
// Parses arbitrary bytes as the PIC board's identity. Accepted values must be in range and consist of the received
// words, and a remark about the generator must state the board's clock.
#include "fuzz/require.h"
#include "server/drivers/pic_identity.h"

using namespace calvorn;
using fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size));
    const auto board = picIdentityFrom(text);
    if (!board)
        return 0;
    require(board->clockHz > 0);
    require(board->settlingUs >= kShortestPicSettling && board->settlingUs <= kLongestPicSettling);
    require(!board->name.isEmpty() && !board->version.isEmpty() && !board->chip.isEmpty());
    require(text.startsWith((board->name + u' ' + board->version + u' ' + board->chip + u' ').toLatin1()));
    for (const DdsClock &clock : {DdsClock{}, DdsClock{DdsChip::Ad9851, 30e6, 6}, DdsClock{DdsChip::Ad9951, 0.0, 0}}) {
        const QString sentence = remarkOnGenerator(*board, clock);
        require(sentence.isEmpty() || sentence.contains(QString::number(board->clockHz)));
    }
    return 0;
}
