// SPDX-License-Identifier: MIT
#include "protocol/lpt_wiring_parser.h"

#include "protocol/port_error.h"

#include <QCoreApplication>

#include <algorithm>

namespace calvorn {

namespace {

// The keys in the section, in the order of LptLine. mayBeAbsent: the board works without the line. maySitOnBus: the
// line may change while D0..D7 transfer bytes to the generator.
struct Key
{
    const char *name;
    bool mayBeAbsent;
    bool maySitOnBus;
};

constexpr std::array<Key, kLptLineCount> kKeys{{
    {"DdsClock", false, false},
    {"DdsUpdate", false, false},
    {"DdsData", false, true},
    {"DdsReset", false, false},
    {"AdcClock", false, true},
    {"AdcSelect", false, false},
    {"I2cClock", true, false},
    {"I2cData", true, false},
    {"AuxData", true, true},
    {"AuxClock", true, true},
    {"AuxLatch", true, false},
    {"AdcOut", false, false},
    {"I2cDataBack", true, false},
}};

constexpr const char *kLoad = "Load";

struct WiringTexts
{
    Q_DECLARE_TR_FUNCTIONS(LptWiring)
};

[[noreturn]] void refuse(const QString &key, const QString &what)
{
    throw PortError(QStringLiteral("[%1] %2: %3").arg(QLatin1String(kLptWiringSection), key, what).toStdString());
}

[[noreturn]] void refuse(const char *key, const QString &what)
{
    refuse(QString::fromLatin1(key), what);
}

bool isKey(const ProfileEntry &entry, const char *name)
{
    return entry.key.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
}

// Rejects misspelt line names; otherwise those lines would silently keep their standard wiring.
void checkKeys(const QVector<ProfileEntry> &entries)
{
    for (const ProfileEntry &entry : entries) {
        const bool isLine =
            std::any_of(kKeys.begin(), kKeys.end(), [&](const Key &key) { return isKey(entry, key.name); });
        if (!isLine && !isKey(entry, kLoad))
            refuse(entry.key, WiringTexts::tr("unknown line."));
    }
}

QString valueOf(const QVector<ProfileEntry> &entries, const char *name)
{
    const auto found =
        std::find_if(entries.begin(), entries.end(), [name](const auto &entry) { return isKey(entry, name); });
    return found == entries.end() ? QString() : found->value.trimmed();
}

bool isInput(LptLine line)
{
    return line == LptLine::AdcOut || line == LptLine::I2cDataBack;
}

const Key &keyOf(const LineWiring &wiring)
{
    return kKeys[static_cast<std::size_t>(wiring.line)];
}

void parseLine(LineWiring &wiring, const QString &text)
{
    const Key &key = keyOf(wiring);
    if (text.compare(QLatin1String("none"), Qt::CaseInsensitive) == 0) {
        if (!key.mayBeAbsent)
            refuse(key.name, WiringTexts::tr("this line must be connected."));
        wiring.mask = 0;
        return;
    }
    const bool invertedByBoard = text.startsWith(QLatin1Char('!'));
    const QString name = text.mid(invertedByBoard ? 1 : 0).trimmed();
    const auto pin = std::find_if(kPortPins.begin(), kPortPins.end(), [&name](const PortPin &candidate) {
        return name.compare(QLatin1String(candidate.name), Qt::CaseInsensitive) == 0;
    });
    if (pin == kPortPins.end())
        refuse(key.name, WiringTexts::tr("there is no pin \"%1\".").arg(name));
    const bool inputPin = pin->portRegister == PortRegister::Status;
    if (inputPin && !isInput(wiring.line))
        refuse(key.name, WiringTexts::tr("%1 is an input of the port.").arg(QLatin1String(pin->name)));
    if (!inputPin && isInput(wiring.line))
        refuse(key.name, WiringTexts::tr("%1 is an output of the port.").arg(QLatin1String(pin->name)));
    wiring = {wiring.line, pin->portRegister, pin->mask, pin->inverted != invertedByBoard};
}

void checkPins(const BoardWiring &wiring)
{
    const bool hasBus = wiring.loading == DdsLoading::Bytes;
    for (auto line = wiring.lines.begin(); line != wiring.lines.end(); ++line) {
        if (line->mask == 0)
            continue;
        const Key &key = keyOf(*line);
        if (hasBus && line->portRegister == PortRegister::Data && !key.maySitOnBus)
            refuse(key.name, WiringTexts::tr("D0 to D7 are used for the generator's bytes."));
        const auto other = std::find_if(wiring.lines.begin(), line, [line](const LineWiring &former) {
            return former.portRegister == line->portRegister && former.mask == line->mask;
        });
        if (other == line)
            continue;
        // The AD9951 data line may share its pin because the AD9951 clock is idle while the other lines
        // change.
        if (hasBus && (other->line == LptLine::DdsData || line->line == LptLine::DdsData))
            continue;
        refuse(key.name, WiringTexts::tr("the pin is already used by %1.").arg(QLatin1String(keyOf(*other).name)));
    }
}

DdsLoading parseLoading(const QString &text)
{
    if (text.isEmpty() || text.compare(QLatin1String("serial"), Qt::CaseInsensitive) == 0)
        return DdsLoading::Serial;
    if (text.compare(QLatin1String("byte"), Qt::CaseInsensitive) == 0)
        return DdsLoading::Bytes;
    refuse(kLoad, WiringTexts::tr("must be \"serial\" or \"byte\", not \"%1\".").arg(text));
}

} // namespace

BoardWiring parseBoardWiring(const QVector<ProfileEntry> &entries)
{
    checkKeys(entries);
    BoardWiring wiring;
    wiring.loading = parseLoading(valueOf(entries, kLoad));
    if (wiring.loading == DdsLoading::Bytes)
        wiring.lines = kByteWideLptWiring;
    for (LineWiring &line : wiring.lines) {
        const QString text = valueOf(entries, keyOf(line).name);
        if (!text.isEmpty())
            parseLine(line, text);
    }
    checkPins(wiring);
    return wiring;
}

BoardWiring readBoardWiring(const QString &settingsPath)
{
    return parseBoardWiring(readProfileSection(settingsPath, QString::fromLatin1(kLptWiringSection)));
}

} // namespace calvorn
