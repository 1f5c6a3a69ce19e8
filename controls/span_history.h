// SPDX-License-Identifier: MIT
#pragma once

#include "controls/span.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace calvorn {

// The spans measured by the user, in order, and the current span, like a browser history.
class SpanHistory
{
public:
    static constexpr std::size_t kLongest = 100;

    // Adds a span after the current one and makes it current; discards all spans after that. Does nothing if the span
    // is already current.
    void visit(const Span &span);

    bool isEmpty() const { return m_spans.empty(); }
    bool canGoBack() const { return m_current > 0; }
    bool canGoForth() const { return m_current + 1 < m_spans.size(); }

    // Returns nullopt before the first visit().
    std::optional<Span> current() const;

    // Move to the previous or next span and return it, or return nullopt if there is none.
    std::optional<Span> back();
    std::optional<Span> forth();

private:
    std::vector<Span> m_spans;
    std::size_t m_current = 0;
};

} // namespace calvorn
