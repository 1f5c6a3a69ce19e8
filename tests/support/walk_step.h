// SPDX-License-Identifier: MIT
#pragma once

#include <QRandomGenerator>
#include <QString>
#include <QStringList>

#include <array>
#include <cmath>
#include <limits>
#include <numeric>

namespace calvorn::test {

// The boxes for numbers.
enum class WalkBox { Start, Stop, M1X, M2X, M3Y, M4Y, MaxVolt, MaxDb };
inline constexpr std::array kWalkBoxes{"txtStart", "txtStop", "txtM1X",     "txtM2X",
                                       "txtM3Y",   "txtM4Y",  "txtMaxVolt", "txtMaxDb"};
// The aspect of the window's state that each box sets.
inline constexpr std::array kWalkAspects{"start", "stop", "m1", "m2", "m3", "m4", "maxVolt", "maxDb"};

inline bool isFrequency(WalkBox box)
{
    return box <= WalkBox::M2X;
}

// How the user finishes an entry. The last three do not leave the box.
enum class WalkLeave { Tab, Return, OtherBox, GraphMiddle, GraphLeft, GraphShift, MenuSeen, Export, Stay };
inline constexpr int kWalkLeaves = 9;

enum class WalkKind {
    Type,
    DigitBar,
    Wheel,
    UpDownKey,
    GraphClick,
    GraphDrag,
    GraphKeys,
    MouseMove,
    CopyMarker,
    Scale,
    View,
    TestButton,
    SweepButton,
    F5,
    Vector,
    Import,
    Export,
    Aux,
    Pot,
    Speed,
    Preferences,
    Time,
    TabKey,
    IntoBox,
    Reopen
};
inline constexpr std::array kWalkKindNames{"Type",        "DigitBar",   "Wheel",       "UpDownKey",  "GraphClick",
                                           "GraphDrag",   "GraphKeys",  "MouseMove",   "CopyMarker", "Scale",
                                           "View",        "TestButton", "SweepButton", "F5",         "Vector",
                                           "Import",      "Export",     "Aux",         "Pot",        "Speed",
                                           "Preferences", "Time",       "TabKey",      "IntoBox",    "Reopen"};
// The relative frequency of each kind, in the same order.
inline constexpr std::array kWalkWeights{22, 6, 3, 4, 9, 4, 4, 2, 4, 7, 5, 7, 4, 3, 8, 4, 2, 3, 2, 2, 1, 12, 3, 3, 0};

// A step, chosen independently of the window's state, so that any part of a walk can be repeated.
struct WalkStep
{
    WalkKind kind = WalkKind::Time;
    int a = 0; // the meaning depends on the kind
    int b = 0;
    int c = 0;
    QString text;                                            // the text to type
    double value = std::numeric_limits<double>::quiet_NaN(); // the value of the text; NaN if it is not a number
    bool huge = false;                                       // a number outside every range

    int number = 0; // index in the walk

    WalkBox box() const { return static_cast<WalkBox>(a); }
    WalkLeave leave() const { return static_cast<WalkLeave>(b); }

    QString toString() const
    {
        QString name = QString::fromLatin1(kWalkKindNames[static_cast<std::size_t>(kind)]);
        if (kind == WalkKind::Type) {
            static constexpr std::array kLeaves{"Tab",
                                                "Return",
                                                "click another box",
                                                "middle click on the graph",
                                                "click graph",
                                                "Shift+right click on the graph",
                                                "open a menu, Escape",
                                                "Ctrl+S",
                                                "stay"};
            return QStringLiteral("%1: %2 \"%3\", %4")
                .arg(number)
                .arg(QString::fromLatin1(kWalkBoxes[static_cast<std::size_t>(a)]), text,
                     QString::fromLatin1(kLeaves[static_cast<std::size_t>(b)]));
        }
        return QStringLiteral("%1: %2(%3,%4,%5)").arg(number).arg(name).arg(a).arg(b).arg(c);
    }
};

class WalkDice
{
public:
    WalkDice(quint32 seed, QString group)
        : m_random(seed)
        , m_group(std::move(group))
    {
    }

    WalkStep next()
    {
        WalkStep step;
        int left = m_random.bounded(std::accumulate(kWalkWeights.begin(), kWalkWeights.end(), 0));
        int kind = 0;
        while (left >= kWalkWeights[static_cast<std::size_t>(kind)])
            left -= kWalkWeights[static_cast<std::size_t>(kind++)];
        step.kind = static_cast<WalkKind>(kind);
        step.a = m_random.bounded(1 << 16);
        step.b = m_random.bounded(1 << 16);
        step.c = m_random.bounded(1 << 16);
        if (step.kind == WalkKind::Type) {
            step.a %= static_cast<int>(kWalkBoxes.size());
            // At least half of all entries are finished with Tab or Return.
            step.b = m_random.bounded(2) == 0 ? m_random.bounded(2) : m_random.bounded(kWalkLeaves);
            isFrequency(step.box()) ? frequency(step) : amplitude(step);
        }
        return step;
    }

private:
    void noNumber(WalkStep &step)
    {
        const QStringList texts{QString(), QStringLiteral("abc"), QStringLiteral("-"), QStringLiteral("1x"),
                                QStringLiteral("--3")};
        step.text = texts[m_random.bounded(static_cast<int>(texts.size()))];
    }

    void frequency(WalkStep &step)
    {
        const int form = m_random.bounded(20);
        if (form < 2)
            return noNumber(step);
        if (form == 2) {
            step.huge = true;
            step.text = QStringLiteral("99999999999");
            step.value = 99999999999.0;
            return;
        }
        int hertz = 100'000 + m_random.bounded(60'000'000);
        if (form < 8)
            hertz = 5'000'000 + m_random.bounded(1'000); // close to each other
        if (form == 8)
            hertz = m_random.bounded(3) == 0 ? 0 : m_random.bounded(600);
        if (form == 9)
            hertz = -hertz;
        step.value = hertz;
        step.text = QString::number(hertz);
        if (form == 10)
            step.text.prepend(u'+');
        if (form == 11)
            step.text = u' ' + step.text + u' ';
        if (form == 12 || form == 13) {
            QString grouped = step.text;
            for (int at = static_cast<int>(grouped.size()) - 3; at > 0; at -= 3)
                grouped.insert(at, m_group);
            step.text = grouped;
        }
        if (form == 14) {
            // Append a fraction; the group separator would not start one.
            step.text += m_group == u'.' ? QStringLiteral(",4") : QStringLiteral(".4");
            step.value += 0.4;
        }
    }

    void amplitude(WalkStep &step)
    {
        const int form = m_random.bounded(16);
        if (form < 2)
            return noNumber(step);
        if (form == 2) {
            step.huge = true;
            step.text = QStringLiteral("9999999999");
            step.value = 9999999999.0;
            return;
        }
        static constexpr std::array kTexts{"0.5",   "1.25",  "3.75", "0.25",   "10", "1", "-3",
                                           "-12.5", "-0.75", "-40",  "-25.25", "0",  "2", "+1.5",
                                           "90",    "-95.5", "11",   ".5",     "7."};
        QString text = QString::fromLatin1(kTexts[static_cast<std::size_t>(m_random.bounded(int(kTexts.size())))]);
        step.value = text.toDouble();
        if (m_random.bounded(2) == 0)
            text.replace(u'.', u',');
        step.text = text;
    }

    QRandomGenerator m_random;
    QString m_group;
};

} // namespace calvorn::test
