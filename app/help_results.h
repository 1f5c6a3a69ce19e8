// SPDX-License-Identifier: MIT
#pragma once

#include <QHelpSearchResult>
#include <QTextBrowser>

namespace calvorn {

// The search engine cuts excerpts between words, and treats the names of HTML entities as words: "M1 -&gt" and
// "quot;Apply" end or begin with half a ">" and half a quotation mark. Returns the excerpt with whole entities.
QString mendedExcerpt(QString excerpt);

// The pages that a search of the help has found, as links with an excerpt each.
class HelpResults : public QTextBrowser
{
    Q_OBJECT

public:
    explicit HelpResults(QWidget *parent = nullptr);

    void showPages(const QList<QHelpSearchResult> &pages);
};

} // namespace calvorn
