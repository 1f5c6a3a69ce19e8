// SPDX-License-Identifier: MIT
#pragma once

#include "remote/scpi_message.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

namespace calvorn {

// Result of matching a header against a pattern. SuffixOutOfRange: all mnemonics match but a numeric suffix does not;
// the error is kScpiHeaderSuffixOutOfRange unless the header matches another pattern.
enum class ScpiMatch { No, SuffixOutOfRange, Yes };

// mnemonic: in manual notation, such as "FREQuency"; its short form consists of the upper-case letters and digits. Only
// the exact short and long forms match, regardless of case.
QByteArray shortFormOf(QByteArrayView mnemonic); // upper case
bool matchesMnemonic(QByteArrayView mnemonic, QByteArrayView written);

// A command header in manual notation: "[SENSe:]FREQuency:STARt", "INITiate[:IMMediate]", "*IDN". The pattern does not
// contain the "?" of a query.
//
// Nodes in brackets are optional; brackets may be nested. "MARKer<1|2>" accepts suffixes 1 and 2, "MARKer<1-4>" accepts
// 1 to 4, and "<1-4|8>" accepts 1 to 4 and 8; "AUX2" is the same as "AUX<2>". Otherwise, neither form may end in a
// digit. A mnemonic without a suffix means suffix 1. Suffix 1 is also accepted where a pattern has no suffix.
class ScpiPattern
{
public:
    explicit ScpiPattern(const char *pattern);

    // Returns true if the pattern itself is well formed. An invalid pattern matches nothing.
    bool isValid() const { return m_isValid; }

    // suffixes: if the result is Yes, receives one value for each "<...>" in the pattern, from left to right; the value
    // is 1 for a suffix that is omitted or belongs to an omitted node. Otherwise unchanged.
    ScpiMatch match(const ScpiUnit &unit, QList<int> *suffixes = nullptr) const;
    bool matches(const ScpiUnit &unit, QList<int> *suffixes = nullptr) const;

    QByteArray text() const { return m_text; }
    bool isCommon() const { return m_isCommon; }
    // Return all nodes in long or short form, in upper case and without suffixes: "SENSE:FREQUENCY:START", "*IDN".
    QByteArray longForm() const;
    QByteArray shortForm() const;
    // Returns all accepted spellings in upper case: each form of each node, with and without each optional node, with
    // the lowest and highest suffix of each range, and without a suffix where 1 is allowed. For tests only, because the
    // number of spellings doubles with each node.
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
        QList<Range> suffixes; // allowed suffixes; empty if there is no "<...>"
        int place = -1;        // index among the pattern's "<...>"; -1 if there is none

        bool allows(int suffix) const;
    };

    bool readNodes(QByteArrayView &rest, int depth, QList<QList<int>> &variants);
    bool readNode(QByteArrayView &rest, Node &node);
    static bool readSuffixes(QByteArrayView &rest, QList<Range> &ranges);
    ScpiMatch matchVariant(const QList<int> &variant, const ScpiUnit &unit, QList<int> &suffixes) const;
    QList<QByteArray> spellingsOf(const Node &node) const;
    QByteArray joined(QByteArray Node::*form) const;

    QByteArray m_text;
    QList<Node> m_nodes;          // all nodes, from left to right
    QList<QList<int>> m_variants; // each lists the nodes of one accepted header
    int m_places = 0;             // the number of "<...>"
    bool m_isCommon = false;
    bool m_isValid = false;
};

} // namespace calvorn
