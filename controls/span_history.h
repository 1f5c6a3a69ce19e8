// SPDX-License-Identifier: MIT
#pragma once

#include "controls/span.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace calvorn {

// The spans that the user has measured, in their order, and the one that is current: as the pages of a browser.
class SpanHistory
{
public:
    static constexpr std::size_t kLongest = 100;

    // A new current span behind the present one; those that were ahead of it are forgotten. Nothing when it is the
    // current one already.
    void visit(const Span &span);

    bool isEmpty() const { return m_spans.empty(); }
    bool canGoBack() const { return m_current > 0; }
    bool canGoForth() const { return m_current + 1 < m_spans.size(); }

    // Nothing before the first visit.
    std::optional<Span> current() const;

    // Where there is one, the span before or after the current one becomes current.
    std::optional<Span> back();
    std::optional<Span> forth();

private:
    std::vector<Span> m_spans;
    std::size_t m_current = 0;
};

} // namespace calvorn
