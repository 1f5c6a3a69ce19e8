// SPDX-License-Identifier: MIT
#pragma once

#include "remote/scpi_message.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

namespace calvorn {

// How a header matches a pattern. SuffixOutOfRange: all mnemonics match but a numeric suffix does not; the error is
// kScpiHeaderSuffixOutOfRange unless the header matches another pattern.
enum class ScpiMatch { No, SuffixOutOfRange, Yes };

// A mnemonic in the notation of manuals, such as "FREQuency"; its short form consists of the upper-case letters and
// digits. Only the exact short form and the exact long form match, in any case.
QByteArray shortFormOf(QByteArrayView mnemonic); // upper case
bool matchesMnemonic(QByteArrayView mnemonic, QByteArrayView written);

// The header of a command in the notation of manuals: "[SENSe:]FREQuency:STARt", "INITiate[:IMMediate]", "*IDN". The
// pattern does not contain the "?" of a query.
//
// Nodes in brackets are optional; brackets may be nested. "MARKer<1|2>" accepts the suffixes 1 and 2, "MARKer<1-4>"
// those from 1 to 4, "<1-4|8>" both; "AUX2" is the same as "AUX<2>". Otherwise, neither form may end in a digit. A
// mnemonic without suffix means suffix 1. Where a pattern has no suffix, a header may contain the suffix 1.
class ScpiPattern
{
public:
    explicit ScpiPattern(const char *pattern);

    // Whether the pattern itself is well formed. An invalid pattern matches nothing.
    bool isValid() const { return m_isValid; }

    // suffixes: after Yes, one for each "<...>" of the pattern from left to right, 1 for a suffix that is omitted or
    // belongs to an omitted node; unchanged otherwise.
    ScpiMatch match(const ScpiUnit &unit, QList<int> *suffixes = nullptr) const;
    bool matches(const ScpiUnit &unit, QList<int> *suffixes = nullptr) const;

    QByteArray text() const { return m_text; }
    bool isCommon() const { return m_isCommon; }
    // All nodes in their long or short form, in upper case and without suffixes: "SENSE:FREQUENCY:START", "*IDN".
    QByteArray longForm() const;
    QByteArray shortForm() const;
    // All accepted spellings in upper case: each form of each node, with and without each optional node. For suffixes:
    // the lowest and the highest value of each range, and no suffix where 1 is allowed. The number of spellings doubles
    // with each node: for tests only.
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
        QList<Range> suffixes; // allowed ones; empty if there is no "<...>"
        int place = -1;        // index among the "<...>" of the pattern; -1: none

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
    QList<QList<int>> m_variants; // each lists the nodes of one accepted header
    int m_places = 0;             // the number of "<...>"
    bool m_isCommon = false;
    bool m_isValid = false;
};

} // namespace calvorn
