// SPDX-License-Identifier: MIT
#include "remote/scpi_pattern.h"

#include "remote/scpi_bytes.h"

#include <algorithm>
#include <utility>

namespace calvorn {

using namespace scpi_bytes;

namespace {

char first(QByteArrayView text)
{
    return text.isEmpty() ? '\0' : text.front();
}

bool take(QByteArrayView &text, char byte)
{
    if (first(text) != byte || text.isEmpty())
        return false;
    text = text.sliced(1);
    return true;
}

// Reads at most five digits, as in a header.
bool takeNumber(QByteArrayView &text, int &number)
{
    int digits = 0;
    number = 0;
    for (; isDigit(first(text)) && digits < kMostHeaderSuffixDigits; ++digits, text = text.sliced(1))
        number = 10 * number + (first(text) - '0');
    return digits > 0 && !isDigit(first(text));
}

} // namespace

QByteArray shortFormOf(QByteArrayView mnemonic)
{
    QByteArray form;
    std::copy_if(mnemonic.begin(), mnemonic.end(), std::back_inserter(form), [](char byte) { return !isLower(byte); });
    return form;
}

bool matchesMnemonic(QByteArrayView mnemonic, QByteArrayView written)
{
    return written.compare(mnemonic, Qt::CaseInsensitive) == 0 ||
           written.compare(shortFormOf(mnemonic), Qt::CaseInsensitive) == 0;
}

bool ScpiPattern::Node::allows(int suffix) const
{
    const int value = suffix < 0 ? 1 : suffix;
    if (suffixes.isEmpty())
        return value == 1;
    return std::any_of(suffixes.begin(), suffixes.end(),
                       [value](Range range) { return value >= range.lowest && value <= range.highest; });
}

ScpiPattern::ScpiPattern(const char *pattern)
    : m_text(pattern)
{
    QByteArrayView rest(m_text);
    m_isCommon = take(rest, '*');
    m_variants = {QList<int>()};
    m_isValid = readNodes(rest, 0, m_variants) && !m_text.endsWith(':') && (!m_isCommon || m_nodes.size() == 1);
    // Not all nodes may be optional.
    m_isValid = m_isValid && !m_variants.contains(QList<int>());
    if (!m_isValid)
        m_variants.clear();
}

// Reads nodes and bracketed groups up to the end of the text or this group's closing bracket, and appends them to each
// variant.
bool ScpiPattern::readNodes(QByteArrayView &rest, int depth, QList<QList<int>> &variants)
{
    constexpr int kDeepest = 4;
    constexpr qsizetype kMostVariants = 256;
    while (!rest.isEmpty() && first(rest) != ']') {
        take(rest, ':');
        if (first(rest) == ']')
            break;
        if (take(rest, '[')) {
            QList<QList<int>> with = variants;
            if (depth >= kDeepest || !readNodes(rest, depth + 1, with) || !take(rest, ']'))
                return false;
            variants += with;
        } else {
            Node node;
            if (!readNode(rest, node))
                return false;
            for (QList<int> &variant : variants)
                variant.append(static_cast<int>(m_nodes.size()));
            m_nodes.append(node);
        }
        if (variants.size() > kMostVariants)
            return false;
    }
    return depth == 0 ? rest.isEmpty() : first(rest) == ']';
}

bool ScpiPattern::readNode(QByteArrayView &rest, Node &node)
{
    qsizetype length = 0;
    while (length < rest.size() && isMnemonicByte(rest[length]))
        ++length;
    const QByteArrayView whole = rest.first(length);
    QByteArrayView name = whole;
    rest = rest.sliced(length);
    while (!m_isCommon && !name.isEmpty() && isDigit(name.back()))
        name.chop(1);
    if (name.isEmpty() || !isUpper(name.front()) || name.size() > kLongestMnemonic)
        return false;
    node.longForm = name.toByteArray().toUpper();
    node.shortForm = shortFormOf(name);
    // A name may not end in a digit, because trailing digits in a header are its suffix.
    if (!m_isCommon && isDigit(node.shortForm.back()))
        return false;

    QByteArrayView digits = whole.sliced(name.size());
    if (!digits.isEmpty()) {
        Range range;
        if (!takeNumber(digits, range.lowest))
            return false;
        range.highest = range.lowest;
        node.suffixes.append(range);
    }
    if (!take(rest, '<'))
        return true;
    node.place = m_places++;
    return node.suffixes.isEmpty() && readSuffixes(rest, node.suffixes);
}

bool ScpiPattern::readSuffixes(QByteArrayView &rest, QList<Range> &ranges)
{
    do {
        Range range;
        if (!takeNumber(rest, range.lowest))
            return false;
        range.highest = range.lowest;
        if (take(rest, '-') && !takeNumber(rest, range.highest))
            return false;
        if (range.highest < range.lowest)
            return false;
        ranges.append(range);
    } while (take(rest, '|'));
    return take(rest, '>');
}

ScpiMatch ScpiPattern::match(const ScpiUnit &unit, QList<int> *suffixes) const
{
    if (unit.isCommon != m_isCommon)
        return ScpiMatch::No;
    ScpiMatch best = ScpiMatch::No;
    for (const QList<int> &variant : m_variants) {
        QList<int> found(m_places, 1);
        best = std::max(best, matchVariant(variant, unit, found));
        if (best == ScpiMatch::Yes) {
            if (suffixes)
                *suffixes = found;
            break;
        }
    }
    return best;
}

bool ScpiPattern::matches(const ScpiUnit &unit, QList<int> *suffixes) const
{
    return match(unit, suffixes) == ScpiMatch::Yes;
}

ScpiMatch ScpiPattern::matchVariant(const QList<int> &variant, const ScpiUnit &unit, QList<int> &suffixes) const
{
    if (variant.size() != unit.path.size())
        return ScpiMatch::No;
    bool fits = true;
    for (qsizetype index = 0; index < variant.size(); ++index) {
        const Node &node = m_nodes[variant[index]];
        const ScpiNode &written = unit.path[index];
        if (written.name.compare(node.longForm, Qt::CaseInsensitive) != 0 &&
            written.name.compare(node.shortForm, Qt::CaseInsensitive) != 0)
            return ScpiMatch::No;
        fits = fits && node.allows(written.suffix);
        if (node.place >= 0 && written.suffix >= 0)
            suffixes[node.place] = written.suffix;
    }
    return fits ? ScpiMatch::Yes : ScpiMatch::SuffixOutOfRange;
}

QByteArray ScpiPattern::joined(QByteArray Node::*form) const
{
    QByteArray text = m_isCommon ? "*" : "";
    for (const Node &node : m_nodes) {
        if (&node != &m_nodes.front())
            text += ':';
        text += node.*form;
    }
    return text;
}

QByteArray ScpiPattern::longForm() const
{
    return joined(&Node::longForm);
}

QByteArray ScpiPattern::shortForm() const
{
    return joined(&Node::shortForm);
}

QList<QByteArray> ScpiPattern::spellingsOf(const Node &node) const
{
    QList<QByteArray> endings;
    if (node.allows(-1))
        endings.append(QByteArray());
    for (const Range range : node.suffixes) {
        endings.append(QByteArray::number(range.lowest));
        if (range.highest != range.lowest)
            endings.append(QByteArray::number(range.highest));
    }
    QList<QByteArray> all;
    for (const QByteArray &ending : endings) {
        all.append(node.shortForm + ending);
        if (node.longForm != node.shortForm)
            all.append(node.longForm + ending);
    }
    return all;
}

QList<QByteArray> ScpiPattern::spellings() const
{
    QList<QByteArray> all;
    for (const QList<int> &variant : m_variants) {
        QList<QByteArray> headers = {m_isCommon ? "*" : ""};
        for (qsizetype index = 0; index < variant.size(); ++index) {
            QList<QByteArray> longer;
            for (const QByteArray &header : std::as_const(headers)) {
                for (const QByteArray &node : spellingsOf(m_nodes[variant[index]]))
                    longer.append(index == 0 ? header + node : header + ':' + node);
            }
            headers = longer;
        }
        all += headers;
    }
    return all;
}

} // namespace calvorn
