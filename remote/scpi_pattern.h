// SPDX-License-Identifier: MIT
#pragma once

#include "remote/scpi_message.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

namespace calvorn {

// How a header fits a pattern. SuffixOutOfRange: all mnemonics fit but a numeric suffix does not, which is
// kScpiHeaderSuffixOutOfRange unless the header fits another pattern.
enum class ScpiMatch { No, SuffixOutOfRange, Yes };

// One mnemonic as manuals write it, such as "FREQuency": the short form is what stays without the lower-case letters.
// Exactly the short or exactly the long form matches, in any case.
QByteArray shortFormOf(QByteArrayView mnemonic); // upper case
bool matchesMnemonic(QByteArrayView mnemonic, QByteArrayView written);

// The header of a command as manuals write it: "[SENSe:]FREQuency:STARt", "INITiate[:IMMediate]", "*IDN". A "?" is not
// part of it.
//
// Nodes in brackets, which may be nested, can be left out. "MARKer<1|2>" takes the suffixes 1 and 2, "MARKer<1-4>"
// those from 1 to 4, "<1-4|8>" both; "AUX2" is the same as "AUX<2>"; neither form may end in a digit otherwise. A
// mnemonic without suffix stands for suffix 1, and where a pattern has no suffix, 1 may be written.
class ScpiPattern
{
public:
    explicit ScpiPattern(const char *pattern);

    // Whether the pattern itself is well formed. One that is not matches nothing.
    bool isValid() const { return m_isValid; }

    // suffixes: with Yes, one for each "<...>" of the pattern from left to right, 1 for one that is not written or in a
    // node that is left out; unchanged otherwise.
    ScpiMatch match(const ScpiUnit &unit, QList<int> *suffixes = nullptr) const;
    bool matches(const ScpiUnit &unit, QList<int> *suffixes = nullptr) const;

    QByteArray text() const { return m_text; }
    bool isCommon() const { return m_isCommon; }
    // All nodes in their long or short form, upper case, without suffixes: "SENSE:FREQUENCY:START", "*IDN".
    QByteArray longForm() const;
    QByteArray shortForm() const;
    // All accepted spellings in upper case: each form of each node, with and without each optional one. A suffix
    // stands with its lowest and highest value of each range, and is left out where 1 is allowed. Their number grows
    // twofold with each node: meant for tests.
    QList<QByteArray> spellings() const;

private:
    struct Range
    {
        int lowest = 1;
        int highest = 1;
    };
    struct Node
    {
        QByteArray longForm; // upper case
        QByteArray shortForm;
        QList<Range> suffixes; // that are allowed; none: there is no "<...>"
        int place = -1;        // among the "<...>" of the pattern; -1: none

        bool allows(int suffix) const;
    };

    bool readNodes(QByteArrayView &rest, int depth, QList<QList<int>> &variants);
    bool readNode(QByteArrayView &rest, Node &node);
    static bool readSuffixes(QByteArrayView &rest, QList<Range> &ranges);
    ScpiMatch matchVariant(const QList<int> &variant, const ScpiUnit &unit, QList<int> &suffixes) const;
    QList<QByteArray> spellingsOf(const Node &node) const;
    QByteArray joined(QByteArray Node::*form) const;

    QByteArray m_text;
    QList<Node> m_nodes;          // all, from left to right
    QList<QList<int>> m_variants; // which of them a header may consist of
    int m_places = 0;             // the number of "<...>"
    bool m_isCommon = false;
    bool m_isValid = false;
};

} // namespace calvorn
