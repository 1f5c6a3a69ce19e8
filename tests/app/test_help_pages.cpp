// SPDX-License-Identifier: MIT
// The pages of the manual: every link leads somewhere, every page can be found, and every message is explained.
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QXmlStreamReader>

namespace {

const QRegularExpression kOpening(QStringLiteral("[({]"));
constexpr qint64 kLargestPicture = 60'000; // bytes

QString read(const QString &path)
{
    QFile file(QStringLiteral(CALVORN_SOURCE_DIR "/") + path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

struct Page
{
    QStringList links; // to pages and anchors
    QStringList pictures;
    QSet<QString> anchors;
    QString text;
    QString error; // of the markup
};

Page parse(const QString &name)
{
    Page page;
    QXmlStreamReader xml(read(QStringLiteral("help/") + name));
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isCharacters())
            page.text += xml.text();
        if (!xml.isStartElement())
            continue;
        const auto attribute = [&](const char *key) { return xml.attributes().value(QLatin1String(key)).toString(); };
        page.text += u' ';
        if (xml.name() == u"img")
            page.pictures.append(attribute("src"));
        if (xml.name() != u"a")
            continue;
        if (!attribute("name").isEmpty())
            page.anchors.insert(attribute("name"));
        if (!attribute("href").isEmpty())
            page.links.append(attribute("href"));
    }
    page.text = page.text.simplified();
    if (xml.hasError())
        page.error = xml.errorString();
    return page;
}

// The attribute "ref" of the sections or keywords in the project of the manual.
QStringList projectReferences(const QString &element)
{
    QStringList references;
    QXmlStreamReader xml(read(QStringLiteral("help/calvorn.qhp")));
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == element && xml.attributes().hasAttribute(QLatin1String("ref")))
            references.append(xml.attributes().value(QLatin1String("ref")).toString());
    }
    return references;
}

QStringList helpFiles(const QString &pattern)
{
    return QDir(QStringLiteral(CALVORN_SOURCE_DIR "/help")).entryList({pattern});
}

// From the bracket at `open` to the one that closes it.
QString bracketed(const QString &source, qsizetype open)
{
    int depth = 0;
    for (qsizetype i = open; i < source.size(); ++i) {
        const QChar c = source[i];
        if (c == u'(' || c == u'{')
            ++depth;
        else if (c == u')' || c == u'}')
            --depth;
        if (depth == 0)
            return source.mid(open, i - open + 1);
    }
    return {};
}

// Adjacent literals joined, escapes resolved, and cut where something is filled in or a new line begins.
QStringList sentencesIn(const QString &code)
{
    static const QRegularExpression literals(QStringLiteral(R"re("(?:[^"\\]|\\.)*"(?:\s*"(?:[^"\\]|\\.)*")*)re"));
    static const QRegularExpression seam(QStringLiteral(R"re((?<!\\)"\s*")re"));
    static const QRegularExpression filledIn(QStringLiteral(R"(%[\ds]|\\r|\\n)"));
    QStringList sentences;
    for (auto match = literals.globalMatch(code); match.hasNext();) {
        const QString literal = match.next().captured().remove(seam);
        for (const QString &part : literal.mid(1, literal.size() - 2).split(filledIn)) {
            const QString sentence = QString(part).replace(QStringLiteral("\\\""), QStringLiteral("\"")).simplified();
            if (sentence.contains(u' ') && sentence.size() >= 8)
                sentences.append(sentence);
        }
    }
    return sentences;
}

// What the sources show in boxes or report as faults.
QStringList messagesIn(const QString &path)
{
    // A quotation mark as a character, and what comments quote, would be taken for a literal.
    static const QRegularExpression noise(QStringLiteral(R"('\x22'|/{2}[^\n]*)"));
    const QString source = read(path).remove(noise);
    // Here every sentence is told in a box or a line of the log, or is the reason of a failure.
    static const QRegularExpression everySentence(QStringLiteral(
        R"(^(server/(links|synthesiser)/.*|platform/lpt_wiring_parser\.cpp)"
        R"(|acquisition/(acquisition_driver|lpt_driver|pic_driver|server_process|frequency_plan)\.cpp)$)"));
    if (everySentence.match(path).hasMatch())
        return sentencesIn(source);
    static const QRegularExpression calls(QStringLiteral(
        R"((?:\bwarn|\bbeepAndWarn|\bsendOrWarn|\bshow|\bRuntimeError|\breport|\bremark|\baErrore)"
        R"(|\bPortError|\bruntime_error|\brefuse|\bappend|\bwriteLog|\btellWhetherOpen|\baddFault|\bChipTexts::tr)\()"
        R"(|\btexts\{|translate\("RuntimeError")"));
    QStringList found;
    for (auto match = calls.globalMatch(source); match.hasNext();)
        found += sentencesIn(bracketed(source, source.indexOf(kOpening, match.next().capturedStart())));
    return found;
}

} // namespace

class TestHelpPages : public QObject
{
    Q_OBJECT

private slots:
    void everyLinkLeadsSomewhere_data();
    void everyLinkLeadsSomewhere();
    void everyPageIsInTheContents();
    void theProjectPointsToWhatIsThere();
    void everyPictureIsUsedAndSmall();
    void everyMessageIsExplained_data();
    void everyMessageIsExplained();
    void everyKeyIsListed();
};

void TestHelpPages::everyLinkLeadsSomewhere_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : helpFiles(QStringLiteral("*.html")))
        QTest::newRow(qPrintable(name)) << name;
}

void TestHelpPages::everyLinkLeadsSomewhere()
{
    QFETCH(QString, name);
    const Page page = parse(name);
    QCOMPARE(page.error, QString());
    for (const QString &link : page.links) {
        // Nothing leads out of the manual.
        QVERIFY2(!link.contains(u':'), qPrintable(link));
        const QString file = link.section(u'#', 0, 0).isEmpty() ? name : link.section(u'#', 0, 0);
        QVERIFY2(helpFiles(file).size() == 1, qPrintable(link));
        if (link.contains(u'#'))
            QVERIFY2(parse(file).anchors.contains(link.section(u'#', 1)), qPrintable(link));
    }
    for (const QString &picture : page.pictures)
        QVERIFY2(helpFiles(picture).size() == 1, qPrintable(picture));
}

void TestHelpPages::everyPageIsInTheContents()
{
    const QStringList contents = projectReferences(QStringLiteral("section"));
    const QStringList pages = helpFiles(QStringLiteral("*.html"));
    QVERIFY(pages.size() >= 15);
    for (const QString &page : pages)
        QVERIFY2(contents.contains(page), qPrintable(page));
}

void TestHelpPages::theProjectPointsToWhatIsThere()
{
    // A heading of the contents without a page would show an empty one.
    QCOMPARE(projectReferences(QStringLiteral("section")).size(),
             read(QStringLiteral("help/calvorn.qhp")).count(QStringLiteral("<section ")));
    for (const char *element : {"section", "keyword"}) {
        const QStringList references = projectReferences(QString::fromLatin1(element));
        QVERIFY(references.size() > 20);
        for (const QString &reference : references) {
            const QString file = reference.section(u'#', 0, 0);
            QVERIFY2(helpFiles(file).size() == 1, qPrintable(reference));
            if (reference.contains(u'#'))
                QVERIFY2(parse(file).anchors.contains(reference.section(u'#', 1)), qPrintable(reference));
        }
    }
}

void TestHelpPages::everyPictureIsUsedAndSmall()
{
    QStringList used;
    for (const QString &name : helpFiles(QStringLiteral("*.html")))
        used += parse(name).pictures;
    const QStringList pictures = helpFiles(QStringLiteral("*.png"));
    QVERIFY(pictures.size() >= 9);
    for (const QString &picture : pictures) {
        QVERIFY2(used.contains(picture), qPrintable(picture));
        const QFile file(QStringLiteral(CALVORN_SOURCE_DIR "/help/") + picture);
        QVERIFY2(file.size() > 0 && file.size() < kLargestPicture, qPrintable(picture));
    }
}

void TestHelpPages::everyMessageIsExplained_data()
{
    QTest::addColumn<QString>("sentence");
    const QDir root(QStringLiteral(CALVORN_SOURCE_DIR));
    QSet<QString> seen;
    for (const char *folder : {"acquisition", "app", "core", "data", "display", "platform", "setup", "server"}) {
        QDirIterator files(root.filePath(QString::fromLatin1(folder)), {QStringLiteral("*.cpp")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = root.relativeFilePath(files.next());
            for (const QString &sentence : messagesIn(path)) {
                if (seen.contains(sentence))
                    continue;
                seen.insert(sentence);
                QTest::newRow(qPrintable(path + QStringLiteral(": ") + sentence)) << sentence;
            }
        }
    }
    QVERIFY(seen.size() > 80);
}

void TestHelpPages::everyMessageIsExplained()
{
    QFETCH(QString, sentence);
    static const QString page = parse(QStringLiteral("messages.html")).text;
    QVERIFY2(page.contains(sentence), qPrintable(sentence));
}

void TestHelpPages::everyKeyIsListed()
{
    const QString page = parse(QStringLiteral("keys.html")).text;
    for (const char *key : {"F5", "Space", "F1", "Ctrl+S", "Ctrl+O", "Ctrl+Shift+S", "Ctrl+C", "Ctrl+P", "Ctrl+Q",
                            "Up, Down", "Home, End", "1, 2, 3, 4", "Ctrl+A"})
        QVERIFY2(page.contains(QString::fromLatin1(key)), key);
}

QTEST_GUILESS_MAIN(TestHelpPages)
#include "test_help_pages.moc"
