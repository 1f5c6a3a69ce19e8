// SPDX-License-Identifier: MIT
// messages.html explains every message of the program and nothing else. lupdate extracts the messages from the sources,
// independently of the catalogues.
#include "tests/support/program_captions.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

#include <algorithm>

using namespace calvorn::test;

namespace {

const QString kSources = QStringLiteral(CALVORN_SOURCE_DIR);
const QString kPage = kSources + QStringLiteral("/help/messages.html");

// The server writes this to standard error. It is not translated, so lupdate does not find it.
constexpr Text kUntranslated{"server/links/ppdev_port.cpp",
                             "%s is shared with another driver (%s): printing would disturb a sweep."};

// The page's introduction explains this part, because it can follow any message.
constexpr const char *kInTheIntroduction = "(in %1)";

// Words in entries that are not part of a message: values that the program fills in, and names from the settings file.
constexpr const char *kFilledIn[] = {"400 Hz",     "Parallel Port",         "LPT",
                                     "LPT Wiring", "LPT Wiring Load",       "16",
                                     "L>",         "Config DDS Multiplier", "a box with the title Sweep by Brenik"};

struct Message
{
    QString context;
    QString source;

    QString name() const { return context + QStringLiteral(": ") + source.simplified(); }
    bool isIn(const Text &text) const
    {
        return context == QLatin1String(text.context) && source == QString::fromUtf8(text.source);
    }
};

// A row of the page.
struct Entry
{
    QString message;
    QString advice;
};

struct Span
{
    qsizetype from;
    qsizetype to;

    bool contains(const Span &other) const { return from <= other.from && other.to <= to; }
    bool isLongerThan(const Span &other) const { return to - from > other.to - other.from; }
};

QString read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

// Returns every folder that contains sources of the window or its server, including new folders. calvorn-sweep is
// explained in its own manual page.
QStringList sourceFolders()
{
    const QStringList others{QStringLiteral("bench"), QStringLiteral("build"), QStringLiteral("fuzz"),
                             QStringLiteral("tests"), QStringLiteral("tools")};
    QStringList folders;
    for (const QString &folder : QDir(kSources).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        if (!others.contains(folder) &&
            QDirIterator(kSources + u'/' + folder, {QStringLiteral("*.cpp")}, QDir::Files, QDirIterator::Subdirectories)
                .hasNext())
            folders.append(folder);
    return folders;
}

QList<Message> readCatalogue(const QString &path)
{
    QList<Message> messages;
    QXmlStreamReader xml(read(path));
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"name")
            context = xml.readElementText();
        else if (xml.name() == u"source")
            messages.append({context, xml.readElementText()});
    }
    if (xml.hasError())
        qFatal("%s: %s", qPrintable(path), qPrintable(xml.errorString()));
    return messages;
}

// Returns every string marked for translation.
QList<Message> textsOfTheSources()
{
    const QTemporaryDir folder;
    const QString catalogue = folder.filePath(QStringLiteral("texts.ts"));
    QProcess lupdate;
    lupdate.setWorkingDirectory(kSources);
    lupdate.start(
        QStringLiteral(CALVORN_LUPDATE),
        QStringList{QStringLiteral("-silent"), QStringLiteral("-I"), QStringLiteral("."), QStringLiteral("-locations"),
                    QStringLiteral("none")} +
            sourceFolders() +
            QStringList{QStringLiteral("-target-language"), QStringLiteral("de"), QStringLiteral("-ts"), catalogue});
    if (!lupdate.waitForFinished(120'000) || lupdate.exitCode() != 0)
        qFatal("lupdate: %s", lupdate.readAllStandardError().constData());
    const QString complaints = QString::fromUtf8(lupdate.readAllStandardError());
    if (complaints.contains(QStringLiteral(".cpp:")) || complaints.contains(QStringLiteral(".h:")))
        qFatal("lupdate does not understand all texts: %s", qPrintable(complaints));
    return readCatalogue(catalogue);
}

const QList<Message> &texts()
{
    static const QList<Message> all = textsOfTheSources();
    return all;
}

// Three dots mark a button that opens a window.
bool isSentence(const QString &text)
{
    return text.endsWith(u'.') && !text.endsWith(QStringLiteral("..."));
}

bool isCaption(const Message &text)
{
    if (std::any_of(kCaptions.begin(), kCaptions.end(), [&](const Text &caption) { return text.isIn(caption); }))
        return true;
    // Even in a context with only captions, a sentence counts as a message unless kCaptions names it.
    return !isSentence(text.source) &&
           std::any_of(kCaptionContexts.begin(), kCaptionContexts.end(),
                       [&](const char *context) { return text.context == QLatin1String(context); });
}

QList<Message> messagesOf(const QList<Message> &all)
{
    QList<Message> messages;
    for (const Message &text : all)
        if (!isCaption(text) && text.source != QLatin1String(kInTheIntroduction))
            messages.append(text);
    messages.append({QString::fromLatin1(kUntranslated.context), QString::fromLatin1(kUntranslated.source)});
    return messages;
}

struct Page
{
    QString introduction;
    QList<Entry> entries;
};

Page readPage()
{
    Page page;
    QXmlStreamReader xml(read(kPage));
    int cell = 0; // in the current row
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == u"tr") {
            cell = 0;
        } else if (xml.isStartElement() && xml.name() == u"td") {
            const QString text = xml.readElementText(QXmlStreamReader::IncludeChildElements).simplified();
            if (++cell == 1)
                page.entries.append({text, {}});
            else
                page.entries.last().advice += text;
        } else if (xml.isStartElement() && xml.name() == u"p" && page.entries.isEmpty()) {
            page.introduction += xml.readElementText(QXmlStreamReader::IncludeChildElements).simplified() + u' ';
        }
    }
    if (xml.hasError())
        qFatal("messages.html: %s", qPrintable(xml.errorString()));
    return page;
}

const Page &page()
{
    static const Page read = readPage();
    return read;
}

// Returns a pattern that finds a message in an entry: each run of words is one group, and any text (or three dots) may
// replace a value that the program fills in.
QRegularExpression patternOf(const QString &source)
{
    static const QRegularExpression filledIn(QStringLiteral(R"(%L?\d+|%[sn]|\\r|[\r\n])"));
    static const QRegularExpression ends(QStringLiteral(R"(^[\s:.,]+|[\s:.,]+$)"));
    QStringList groups;
    for (const QString &run : source.split(filledIn)) {
        // Punctuation around a message is part of the sentence that contains the message.
        const QString words = source.contains(filledIn) ? run.simplified() : run.simplified().remove(ends);
        if (!QString(words).remove(ends).isEmpty())
            groups.append(u'(' + QRegularExpression::escape(words) + u')');
    }
    return QRegularExpression(groups.join(QStringLiteral(R"(\s*\S.*?\s*?)")));
}

// Returns the positions of a message's words in an entry, one span for each run of words.
QList<Span> spansIn(const Entry &entry, const Message &message)
{
    QList<Span> spans;
    for (auto match = patternOf(message.source).globalMatch(entry.message); match.hasNext();) {
        const QRegularExpressionMatch next = match.next();
        for (int group = 1; group <= next.lastCapturedIndex(); ++group)
            spans.append({next.capturedStart(group), next.capturedEnd(group)});
    }
    return spans;
}

// The entry for "Stop sweep forzato" does not explain "Stop sweep".
bool isExplainedBy(const Entry &entry, const Message &message, const QList<Message> &messages)
{
    const QList<Span> own = spansIn(entry, message);
    if (own.isEmpty())
        return false;
    for (const Message &other : messages) {
        const QList<Span> theirs = spansIn(entry, other);
        const auto isPart = [&](const Span &span) {
            return std::any_of(theirs.begin(), theirs.end(),
                               [&](const Span &longer) { return longer.contains(span) && longer.isLongerThan(span); });
        };
        if (std::all_of(own.begin(), own.end(), isPart))
            return false;
    }
    return true;
}

bool isExplained(const Message &message, const QList<Message> &messages, const QList<Entry> &entries)
{
    return std::any_of(entries.begin(), entries.end(),
                       [&](const Entry &entry) { return isExplainedBy(entry, message, messages); });
}

// Returns the words in an entry that are not part of a message, one item for each contiguous run.
QStringList unsaid(const Entry &entry, const QList<Message> &messages)
{
    static const QRegularExpression marks(QStringLiteral("[….,:;()\\[\\]\"'=]+"));
    QString rest = entry.message;
    for (const Message &message : messages)
        for (const Span &span : spansIn(entry, message))
            for (qsizetype at = span.from; at < span.to; ++at)
                rest[at] = u'\n';
    QStringList words;
    for (const QString &part : rest.split(u'\n', Qt::SkipEmptyParts)) {
        const QString word = QString(part).replace(marks, QStringLiteral(" ")).simplified();
        if (!word.isEmpty())
            words.append(word);
    }
    return words;
}

bool isFilledIn(const QString &words)
{
    return std::any_of(std::begin(kFilledIn), std::end(kFilledIn),
                       [&](const char *known) { return words == QLatin1String(known); });
}

} // namespace

class TestHelpMessages : public QObject
{
    Q_OBJECT

private slots:
    void theSourcesAreRead();
    void everyMessageIsExplained_data();
    void everyMessageIsExplained();
    void everyEntryIsAMessage_data();
    void everyEntryIsAMessage();
    void theListsNameWhatIsThere();
    void whatIsMissingIsFound();
};

void TestHelpMessages::theSourcesAreRead()
{
    for (const char *folder : {"app", "core", "data", "platform", "server", "setup"})
        QVERIFY2(sourceFolders().contains(QLatin1String(folder)), folder);
    QVERIFY(texts().size() > 450);
    QVERIFY(messagesOf(texts()).size() > 110);
    QVERIFY(page().entries.size() > 110);
}

void TestHelpMessages::everyMessageIsExplained_data()
{
    QTest::addColumn<QString>("context");
    QTest::addColumn<QString>("source");
    for (const Message &message : messagesOf(texts()))
        QTest::newRow(qPrintable(message.name())) << message.context << message.source;
}

void TestHelpMessages::everyMessageIsExplained()
{
    QFETCH(QString, context);
    QFETCH(QString, source);
    static const QList<Message> messages = messagesOf(texts());
    const Message message{context, source};
    QVERIFY2(isExplained(message, messages, page().entries),
             qPrintable(QStringLiteral("missing from messages.html and program_captions.h: ") + message.name()));
}

void TestHelpMessages::everyEntryIsAMessage_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("advice");
    for (const Entry &entry : page().entries)
        QTest::newRow(qPrintable(entry.message)) << entry.message << entry.advice;
}

void TestHelpMessages::everyEntryIsAMessage()
{
    QFETCH(QString, message);
    QFETCH(QString, advice);
    static const QList<Message> messages = messagesOf(texts());
    for (const QString &words : unsaid({message, {}}, messages))
        QVERIFY2(isFilledIn(words), qPrintable(QStringLiteral("not a message of the program: ") + words));
    QVERIFY(!advice.isEmpty());
}

// An item removed from the sources or the page must also be removed from the lists; otherwise it could hide a new text.
void TestHelpMessages::theListsNameWhatIsThere()
{
    const QList<Message> &all = texts();
    for (const Text &caption : kCaptions) {
        const QByteArray name = QByteArray(caption.context) + ": " + caption.source;
        QVERIFY2(std::any_of(all.begin(), all.end(), [&](const Message &text) { return text.isIn(caption); }), name);
        const bool isInContext =
            std::any_of(kCaptionContexts.begin(), kCaptionContexts.end(),
                        [&](const char *context) { return qstrcmp(context, caption.context) == 0; });
        QVERIFY2(!isInContext || isSentence(QString::fromUtf8(caption.source)), name + " is listed twice");
    }
    for (const char *context : kCaptionContexts)
        QVERIFY2(std::any_of(all.begin(), all.end(),
                             [&](const Message &text) { return text.context == QLatin1String(context); }),
                 context);
    QVERIFY(read(kSources + u'/' + QString::fromLatin1(kUntranslated.context))
                .contains(QString::fromLatin1(kUntranslated.source)));
    QVERIFY(std::any_of(all.begin(), all.end(),
                        [](const Message &text) { return text.source == QLatin1String(kInTheIntroduction); }));
    QVERIFY(page().introduction.contains(QStringLiteral("(in …)")));

    QSet<QString> filledIn;
    for (const Entry &entry : page().entries)
        for (const QString &words : unsaid(entry, messagesOf(all)))
            filledIn.insert(words);
    for (const char *words : kFilledIn)
        QVERIFY2(filledIn.contains(QLatin1String(words)), words);
}

void TestHelpMessages::whatIsMissingIsFound()
{
    const QList<Message> messages =
        messagesOf(texts()) + QList<Message>{{QStringLiteral("New"), QStringLiteral("The board %1 is too hot.")},
                                             {QStringLiteral("New"), QStringLiteral("Stop")}};
    const QList<Entry> entries = page().entries;
    QVERIFY(!isExplained(messages[messages.size() - 2], messages, entries));
    QVERIFY(!isExplained(messages.last(), messages, entries));
    const Entry known{QStringLiteral("The board … is too hot."), QStringLiteral("Switch it off.")};
    QVERIFY(isExplained(messages[messages.size() - 2], messages, entries + QList<Entry>{known}));
    QCOMPARE(unsaid(known, messages), QStringList());
    QCOMPARE(unsaid({QStringLiteral("The board … is too cold."), {}}, messages),
             QStringList{QStringLiteral("The board is too cold")});
    // A sentence is a message in every context.
    QVERIFY(isCaption({QStringLiteral("calvorn::PortPage"), QStringLiteral("A caption")}));
    QVERIFY(!isCaption({QStringLiteral("calvorn::PortPage"), QStringLiteral("The port is on fire.")}));
}

QTEST_GUILESS_MAIN(TestHelpMessages)
#include "test_help_messages.moc"
