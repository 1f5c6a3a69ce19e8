// SPDX-License-Identifier: MIT
#include "controls/span_history.h"

namespace calvorn {

void SpanHistory::visit(const Span &span)
{
    if (span == current())
        return;
    if (!m_spans.empty())
        m_spans.resize(m_current + 1);
    m_spans.push_back(span);
    if (m_spans.size() > kLongest)
        m_spans.erase(m_spans.begin());
    m_current = m_spans.size() - 1;
}

std::optional<Span> SpanHistory::current() const
{
    return isEmpty() ? std::nullopt : std::optional(m_spans[m_current]);
}

std::optional<Span> SpanHistory::back()
{
    if (!canGoBack())
        return std::nullopt;
    return m_spans[--m_current];
}

std::optional<Span> SpanHistory::forth()
{
    if (!canGoForth())
        return std::nullopt;
    return m_spans[++m_current];
}

} // namespace calvorn
