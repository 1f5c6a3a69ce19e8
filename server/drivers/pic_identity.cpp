// SPDX-License-Identifier: MIT
#include "server/drivers/pic_identity.h"

#include <QCoreApplication>
#include <QList>

#include <cmath>

namespace calvorn {

namespace {

constexpr double kCrystalTolerance = 1e-3;

struct IdentityTexts
{
    Q_DECLARE_TR_FUNCTIONS(PicBoard)
};

bool isSameClock(std::int64_t hertz, const DdsClock &configured)
{
    try {
        const auto clock = static_cast<double>(systemClockHz(configured));
        return std::abs(static_cast<double>(hertz) - clock) <= kCrystalTolerance * clock;
    } catch (const FrequencyError &) {
        return false;
    }
}

} // namespace

std::optional<PicIdentity> picIdentityFrom(const QByteArray &text)
{
    const QList<QByteArray> words = text.split(' ');
    if (words.size() != 5 || words.contains(QByteArray()))
        return std::nullopt;
    bool hasClock = false;
    bool hasSettling = false;
    PicIdentity board{QString::fromLatin1(words[0]), QString::fromLatin1(words[1]), QString::fromLatin1(words[2]),
                      words[3].toLongLong(&hasClock), words[4].toInt(&hasSettling)};
    if (!hasClock || !hasSettling || board.clockHz <= 0 || board.settlingUs < kShortestPicSettling ||
        board.settlingUs > kLongestPicSettling)
        return std::nullopt;
    return board;
}

QString remarkOnGenerator(const PicIdentity &board, const DdsClock &configured)
{
    if (ddsChipFromName(board.chip) == configured.chip && isSameClock(board.clockHz, configured))
        return {};
    return IdentityTexts::tr("The board has an %1 with a clock of %2 Hz; the settings specify %3, %4 Hz.")
        .arg(board.chip, QString::number(board.clockHz), QLatin1String(factsOf(configured.chip).name),
             QString::number(configured.xtalHz * effectiveMultiplier(configured), 'f', 0));
}

} // namespace calvorn
