// SPDX-License-Identifier: MIT
#pragma once

#include <QHelpSearchResult>
#include <QTextBrowser>

namespace calvorn {

// Returns the excerpt with complete HTML entities. The search engine cuts excerpts between words and treats entity
// names as words: "M1 -&gt" ends with half a ">", and "quot;Apply" begins with half a quotation mark.
QString mendedExcerpt(QString excerpt);

// The pages found by a help search, as links with an excerpt each.
class HelpResults : public QTextBrowser
{
    Q_OBJECT

public:
    explicit HelpResults(QWidget *parent = nullptr);

    void showPages(const QList<QHelpSearchResult> &pages);
};

} // namespace calvorn
