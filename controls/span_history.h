// SPDX-License-Identifier: MIT
#pragma once

#include "controls/span.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace calvorn {

// The spans that the user has measured, in order, and the current one, like the history of a browser.
class SpanHistory
{
public:
    static constexpr std::size_t kLongest = 100;

    // Adds a span after the current one and makes it current; any spans after that are dropped. Does nothing if the
    // span is already current.
    void visit(const Span &span);

    bool isEmpty() const { return m_spans.empty(); }
    bool canGoBack() const { return m_current > 0; }
    bool canGoForth() const { return m_current + 1 < m_spans.size(); }

    // Nothing before the first visit().
    std::optional<Span> current() const;

    // Move to the span before or after the current one and return it; nothing if there is none.
    std::optional<Span> back();
    std::optional<Span> forth();

private:
    std::vector<Span> m_spans;
    std::size_t m_current = 0;
};

} // namespace calvorn
