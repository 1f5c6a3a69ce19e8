// SPDX-License-Identifier: MIT
#include "app/help_window.h"

#include "app/help_icons.h"
#include "app/help_results.h"

#include <QAction>
#include <QFile>
#include <QHelpContentWidget>
#include <QHelpEngine>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QHelpSearchEngine>
#include <QHelpSearchQueryWidget>
#include <QLineEdit>
#include <QScreen>
#include <QSplitter>
#include <QTabWidget>
#include <QToolBar>
#include <QVBoxLayout>

namespace calvorn {

namespace {

constexpr const char *kRoot = "qthelp://calvorn/help/";
constexpr const char *kFirstPage = "index.html";
constexpr QSize kStartSize(940, 620);
constexpr QSize kFrame(8, 40); // added by a window manager

// Returns the path of the collection file; empty if the folder cannot be created.
QString collectionIn(SweptFolder &folder)
{
    return folder.makeAnywhere() ? QFile::decodeName(folder.path()) + QStringLiteral("/help.qhc") : QString();
}

} // namespace

HelpBrowser::HelpBrowser(const QHelpEngine &engine, QWidget *parent)
    : QTextBrowser(parent)
    , m_engine(engine)
{
    setObjectName(QStringLiteral("txtHelp"));
    setAccessibleName(tr("Help page"));
    setOpenExternalLinks(false);
}

QVariant HelpBrowser::loadResource(int type, const QUrl &name)
{
    Q_UNUSED(type)
    const QUrl url = source().resolved(name);
    return url.scheme() == u"qthelp" ? m_engine.fileData(url) : QByteArray();
}

void HelpBrowser::doSetSource(const QUrl &url, QTextDocument::ResourceType type)
{
    if (source().resolved(url).scheme() == u"qthelp")
        QTextBrowser::doSetSource(url, type);
}

HelpWindow::HelpWindow(const QString &helpFile, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_engine(new QHelpEngine(collectionIn(m_folder), this))
{
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(tr("Calvorn Help"));
    m_engine->setReadOnly(false);
    m_engine->setUsesFilterEngine(true);
    // The second setupData() reads the contents and the index after the registration.
    m_usable = !m_folder.path().isEmpty() && m_engine->setupData() && m_engine->registerDocumentation(helpFile) &&
               m_engine->setupData();
    build();
    resize(kStartSize.boundedTo(screen()->availableSize() - kFrame));
}

HelpWindow::~HelpWindow()
{
    // Delete the tabs first, because their views use the engine until they are destroyed.
    delete m_tabs;
}

void HelpWindow::build()
{
    m_browser = new HelpBrowser(*m_engine, this);
    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("tabHelp"));
    m_engine->contentWidget()->setAccessibleName(tr("Help contents"));
    m_engine->contentWidget()->setObjectName(QStringLiteral("lstHelpContents"));
    m_tabs->addTab(m_engine->contentWidget(), tr("&Contents"));
    m_tabs->addTab(buildIndex(), tr("&Index"));
    m_tabs->addTab(buildSearch(), tr("&Search"));
    connect(m_engine->contentWidget(), &QHelpContentWidget::linkActivated, m_browser,
            [this](const QUrl &link) { m_browser->setSource(link); });
    connect(m_engine->contentModel(), &QHelpContentModel::contentsCreated, this, [this] {
        m_engine->contentWidget()->expandAll();
        selectInContents();
    });
    connect(m_browser, &QTextBrowser::historyChanged, this, &HelpWindow::selectInContents);

    // Move the focus to the selected tab's page, so that the user can type or choose immediately.
    connect(m_tabs, &QTabWidget::currentChanged, this, [this] { m_tabs->currentWidget()->setFocus(); });

    auto *splitter = new QSplitter(this);
    splitter->addWidget(m_tabs);
    splitter->addWidget(m_browser);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({250, 650});
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(4, 0, 4, 4);
    column->addWidget(buildToolBar());
    column->addWidget(splitter, 1);
}

namespace {

// Returns the contents entry for an address, or an invalid index if there is none.
QModelIndex entryOf(const QHelpContentModel &contents, const QUrl &address, const QModelIndex &parent = {})
{
    for (int row = 0; row < contents.rowCount(parent); ++row) {
        const QModelIndex entry = contents.index(row, 0, parent);
        const QHelpContentItem *item = contents.contentItemAt(entry);
        if (item && item->url() == address)
            return entry;
        const QModelIndex below = entryOf(contents, address, entry);
        if (below.isValid())
            return below;
    }
    return {};
}

} // namespace

// Selects the contents entry for the current address, or for its page if the address has none.
void HelpWindow::selectInContents()
{
    const QHelpContentModel &contents = *m_engine->contentModel();
    QModelIndex entry = entryOf(contents, m_browser->source());
    if (!entry.isValid())
        entry = entryOf(contents, m_browser->source().adjusted(QUrl::RemoveFragment));
    if (entry.isValid())
        m_engine->contentWidget()->setCurrentIndex(entry);
}

QToolBar *HelpWindow::buildToolBar()
{
    auto *bar = new QToolBar(this);
    const auto add = [&](const char *name, HelpIcon icon, const QString &text, const QKeySequence &shortcut) {
        QAction *action = bar->addAction(helpIcon(icon), text);
        action->setObjectName(QString::fromLatin1(name));
        action->setShortcut(shortcut);
        action->setToolTip(text + QStringLiteral(" (") + shortcut.toString(QKeySequence::NativeText) + u')');
        return action;
    };
    QAction *back = add("mnuHelpBack", HelpIcon::Back, tr("Back"), QKeySequence(Qt::ALT | Qt::Key_Left));
    QAction *forward = add("mnuHelpForward", HelpIcon::Forward, tr("Forward"), QKeySequence(Qt::ALT | Qt::Key_Right));
    QAction *first = add("mnuHelpFirst", HelpIcon::FirstPage, tr("First page"), QKeySequence(Qt::ALT | Qt::Key_Home));
    QAction *close = add("mnuHelpClose", HelpIcon::Close, tr("Close"), QKeySequence(Qt::Key_Escape));
    for (QAction *action : {back, forward})
        action->setEnabled(false);
    connect(back, &QAction::triggered, m_browser, &QTextBrowser::backward);
    connect(forward, &QAction::triggered, m_browser, &QTextBrowser::forward);
    connect(first, &QAction::triggered, this, &HelpWindow::showContents);
    connect(close, &QAction::triggered, this, &QWidget::close);
    connect(m_browser, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(m_browser, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    return bar;
}

QWidget *HelpWindow::buildIndex()
{
    auto *page = new QWidget(this);
    auto *column = new QVBoxLayout(page);
    auto *filter = new QLineEdit(page);
    filter->setObjectName(QStringLiteral("txtHelpIndex"));
    filter->setPlaceholderText(tr("Search for"));
    filter->setAccessibleName(tr("Word to find in the index"));
    filter->setClearButtonEnabled(true);
    QHelpIndexWidget *index = m_engine->indexWidget();
    index->setObjectName(QStringLiteral("lstHelpIndex"));
    index->setAccessibleName(tr("Help index"));
    page->setFocusProxy(filter);
    column->addWidget(filter);
    column->addWidget(index);
    connect(filter, &QLineEdit::textChanged, index, [index](const QString &text) { index->filterIndices(text); });
    connect(filter, &QLineEdit::returnPressed, index, &QHelpIndexWidget::activateCurrentItem);
    connect(index, &QHelpIndexWidget::documentActivated, this,
            [this](const QHelpLink &document) { m_browser->setSource(document.url); });
    connect(index, &QHelpIndexWidget::documentsActivated, this, &HelpWindow::openDocuments);
    return page;
}

// Shows the first page if several have the keyword.
void HelpWindow::openDocuments(const QList<QHelpLink> &documents)
{
    if (!documents.isEmpty())
        m_browser->setSource(documents.first().url);
}

QWidget *HelpWindow::buildSearch()
{
    auto *page = new QWidget(this);
    auto *column = new QVBoxLayout(page);
    QHelpSearchEngine *search = m_engine->searchEngine();
    search->queryWidget()->setObjectName(QStringLiteral("frameHelpQuery"));
    auto *results = new HelpResults(page);
    page->setFocusProxy(search->queryWidget()->findChild<QLineEdit *>());
    column->addWidget(search->queryWidget());
    column->addWidget(results, 1);
    const auto look = [search] { search->search(search->queryWidget()->searchInput()); };
    connect(search->queryWidget(), &QHelpSearchQueryWidget::search, search, look);
    connect(search, &QHelpSearchEngine::searchingFinished, results,
            [search, results](int hits) { results->showPages(search->searchResults(0, hits)); });
    // Repeat a search that was made before the index existed, because it found nothing.
    connect(search, &QHelpSearchEngine::indexingFinished, search, [search, look] {
        if (!search->searchInput().isEmpty())
            look();
    });
    connect(results, &QTextBrowser::anchorClicked, m_browser, [this](const QUrl &link) { m_browser->setSource(link); });
    search->reindexDocumentation();
    return page;
}

void HelpWindow::showPage(const QString &page)
{
    m_browser->setSource(QUrl(QString::fromLatin1(kRoot) + page));
}

void HelpWindow::showContents()
{
    m_tabs->setCurrentIndex(0);
    showPage(QString::fromLatin1(kFirstPage));
}

} // namespace calvorn
