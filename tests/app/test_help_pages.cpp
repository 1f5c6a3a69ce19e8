// SPDX-License-Identifier: MIT
// The manual's pages: every link has a target, and every page is listed in the contents.
#include <QDir>
#include <QFile>
#include <QSet>
#include <QTest>
#include <QXmlStreamReader>

namespace {

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
    QString error; // from the XML reader
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

// Returns the "ref" attributes of the sections or keywords in the help project.
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
        // No link points outside the manual.
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
    // Clicking a section without a page would show an empty page.
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

void TestHelpPages::everyKeyIsListed()
{
    const QString page = parse(QStringLiteral("keys.html")).text;
    for (const char *key :
         {"F5", "Shift+F5", "Space", "F1", "Ctrl+S", "Ctrl+O", "Ctrl+Shift+S", "Ctrl+C", "Ctrl+P", "Ctrl+Q", "Up, Down",
          "Home, End", "1, 2, 3, 4", "Ctrl+A", "Alt+Left, Alt+Right", "Ctrl and wheel"})
        QVERIFY2(page.contains(QString::fromLatin1(key)), key);
}

QTEST_GUILESS_MAIN(TestHelpPages)
#include "test_help_pages.moc"
