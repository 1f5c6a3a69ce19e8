// SPDX-License-Identifier: MIT
// Checks the catalogues in translations/ as edited by the translators.
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

namespace {

const QString kSources = QStringLiteral(CALVORN_SOURCE_DIR);

struct Message
{
    QString context;
    QString source;
    QString translation;
    QString state; // empty when the translation is finished
};

QString catalogue(const QString &language)
{
    return kSources + QStringLiteral("/translations/calvorn_%1.ts").arg(language);
}

QList<Message> readCatalogue(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", qPrintable(path));
    QXmlStreamReader xml(&file);
    QList<Message> messages;
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"name")
            context = xml.readElementText();
        else if (xml.name() == u"message")
            messages.append({context, {}, {}, {}});
        else if (xml.name() == u"source")
            messages.last().source = xml.readElementText();
        else if (xml.name() == u"translation") {
            messages.last().state = xml.attributes().value(QStringLiteral("type")).toString();
            messages.last().translation = xml.readElementText();
        }
    }
    if (xml.hasError())
        qFatal("%s: %s", qPrintable(path), qPrintable(xml.errorString()));
    return messages;
}

// Returns every match of the pattern, sorted, because the order may differ in a translation.
QStringList found(const QString &text, const QString &pattern)
{
    QStringList all;
    QRegularExpressionMatchIterator matches = QRegularExpression(pattern).globalMatch(text);
    while (matches.hasNext())
        all.append(matches.next().captured());
    all.sort();
    return all;
}

QSet<QString> keysOf(const QList<Message> &messages)
{
    QSet<QString> keys;
    for (const Message &message : messages)
        keys.insert(message.context + QStringLiteral(": ") + message.source);
    return keys;
}

} // namespace

class TestCatalogues : public QObject
{
    Q_OBJECT

    static void addLanguages()
    {
        QTest::addColumn<QString>("language");
        QTest::newRow("Italian") << QStringLiteral("it");
        QTest::newRow("German") << QStringLiteral("de");
    }

private slots:
    void everyTextIsTranslated_data() { addLanguages(); }
    void everyTextIsTranslated()
    {
        QFETCH(QString, language);
        const QList<Message> messages = readCatalogue(catalogue(language));
        QVERIFY(messages.size() > 500);
        for (const Message &message : messages)
            QVERIFY2(message.state.isEmpty() && !message.translation.isEmpty(),
                     qPrintable(message.context + QStringLiteral(": ") + message.source));
    }

    void whatTheProgramFillsInOrReadsIsKept_data() { addLanguages(); }
    void whatTheProgramFillsInOrReadsIsKept()
    {
        QFETCH(QString, language);
        const QStringList kept{
            QStringLiteral("%L?\\d+|%n"),         // placeholders
            QStringLiteral("[\\r\\n]"),           // line breaks
            QStringLiteral("\\*(\\.\\w+)?\\)"),   // file patterns in a dialog
            QStringLiteral("(?<!\\S)--[a-z]+"),   // command-line options
            QStringLiteral("\\(0x[0-9A-F]{3}\\)") // addresses
        };
        for (const Message &message : readCatalogue(catalogue(language))) {
            const QString where = message.context + QStringLiteral(": ") + message.source;
            for (const QString &pattern : kept)
                QVERIFY2(found(message.source, pattern) == found(message.translation, pattern), qPrintable(where));
            // After a trailing space, the program appends a number or a name.
            QVERIFY2(message.source.endsWith(u' ') == message.translation.endsWith(u' '), qPrintable(where));
            QVERIFY2(!message.source.startsWith(u' ') || message.translation.startsWith(u' '), qPrintable(where));
            const QString mnemonic = QStringLiteral("&\\w");
            QVERIFY2(found(message.source, mnemonic).size() == found(message.translation, mnemonic).size(),
                     qPrintable(where));
        }
    }

    // lupdate skips a string if it does not understand how the string is marked, and the string always remains in
    // English.
    void everyTextOfTheSourcesIsThereAndNoOther_data() { addLanguages(); }
    void everyTextOfTheSourcesIsThereAndNoOther()
    {
        QFETCH(QString, language);
        const QTemporaryDir folder;
        const QString copy = folder.filePath(QStringLiteral("copy.ts"));
        QVERIFY(QFile::copy(catalogue(language), copy));
        QProcess update;
        update.start(kSources + QStringLiteral("/tools/update-translations"), {copy});
        QVERIFY(update.waitForFinished(60000));
        const QString complaints = QString::fromUtf8(update.readAllStandardError());
        QVERIFY2(update.exitCode() == 0 && !complaints.contains(u".cpp:") && !complaints.contains(u".h:"),
                 qPrintable(complaints));

        const QSet<QString> known = keysOf(readCatalogue(catalogue(language)));
        const QSet<QString> used = keysOf(readCatalogue(copy));
        const QString missing = (QSet(used) - known).values().join(u'\n');
        const QString gone = (QSet(known) - used).values().join(u'\n');
        QVERIFY2(missing.isEmpty(), qPrintable(QStringLiteral("not in the catalogue:\n") + missing));
        QVERIFY2(gone.isEmpty(), qPrintable(QStringLiteral("no longer in the sources:\n") + gone));
    }
};

QTEST_GUILESS_MAIN(TestCatalogues)
#include "test_catalogues.moc"
