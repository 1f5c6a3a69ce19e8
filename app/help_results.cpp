// SPDX-License-Identifier: MIT
#include "app/help_results.h"

#include <QRegularExpression>

namespace calvorn {

QString mendedExcerpt(QString excerpt)
{
    // Pictures appear as replacement characters in the text.
    excerpt.remove(QChar::ObjectReplacementCharacter);
    // The search term is in bold, even if it is the name of an entity.
    static const QRegularExpression bold(QStringLiteral("&<b>(quot|amp|lt|gt)</b>;"));
    excerpt.replace(bold, QStringLiteral("&\\1;"));
    static const QRegularExpression cutBegin(QStringLiteral(R"(^(\.\.\.)?(quot|amp|lt|gt);)"));
    excerpt.replace(cutBegin, QStringLiteral("\\1&\\2;"));
    static const QRegularExpression cutEnd(QStringLiteral(R"(&(quot|amp|lt|gt)(\.\.\.)?$)"));
    excerpt.replace(cutEnd, QStringLiteral("&\\1;\\2"));
    return excerpt;
}

HelpResults::HelpResults(QWidget *parent)
    : QTextBrowser(parent)
{
    setObjectName(QStringLiteral("lstHelpResults"));
    setAccessibleName(tr("Search results"));
    setOpenLinks(false);
}

void HelpResults::showPages(const QList<QHelpSearchResult> &pages)
{
    QString html;
    for (const QHelpSearchResult &page : pages)
        html += QStringLiteral("<p><a href=\"%1\">%2</a><br/>%3</p>")
                    .arg(page.url().toString(QUrl::FullyEncoded).toHtmlEscaped(), page.title().toHtmlEscaped(),
                         mendedExcerpt(page.snippet()));
    if (pages.isEmpty())
        html = tr("No page contains these words.").toHtmlEscaped();
    setHtml(html);
}

} // namespace calvorn
