// SPDX-License-Identifier: MIT
#include "data/csv_fields.h"

#include "core/runtime_error.h"

#include <QBuffer>
#include <QTest>

using namespace calvorn;

class TestCsvFields : public QObject
{
    Q_OBJECT

private:
    // Returns all fields in the text.
    static QStringList fieldsOf(QByteArray text)
    {
        QBuffer device(&text);
        device.open(QIODevice::ReadOnly);
        CsvFields fields(device);
        QStringList result;
        try {
            for (;;)
                result.append(fields.next());
        } catch (const RuntimeError &) {
            return result;
        }
    }

private slots:
    void splitsFields_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QStringList>("expected");
        const QStringList three{QStringLiteral("a"), QStringLiteral("b c"), QStringLiteral("d")};
        QTest::newRow("CR LF") << QByteArray("a,b c\r\nd\r\n") << three;
        QTest::newRow("LF") << QByteArray("a,b c\nd") << three;
        QTest::newRow("CR") << QByteArray("a,b c\rd\r") << three;
        QTest::newRow("blanks") << QByteArray("  a \t, b c  \r\n\t d ") << three;
        QTest::newRow("quotes") << QByteArray("\"a\",\"b c\"\r\n\"d\"") << three;
        QTest::newRow("text after a quote") << QByteArray("\"a\"xyz,\"b c\" \r\nd") << three;
        QTest::newRow("comma and line end inside quotes")
            << QByteArray("\"a,\r\nb\",c") << QStringList{QStringLiteral("a,\r\nb"), QStringLiteral("c")};
        QTest::newRow("quote that never closes") << QByteArray("\"abc") << QStringList{QStringLiteral("abc")};
        QTest::newRow("empty fields") << QByteArray("a,,b\r\n")
                                      << QStringList{QStringLiteral("a"), QString(), QStringLiteral("b")};
        QTest::newRow("nothing") << QByteArray() << QStringList();
        QTest::newRow("only blanks") << QByteArray("  \t ") << QStringList();
        QTest::newRow("NUL byte") << QByteArray("a\0b,c", 5)
                                  << QStringList{QString::fromLatin1("a\0b", 3), QStringLiteral("c")};
    }
    void splitsFields()
    {
        QFETCH(QByteArray, text);
        QFETCH(QStringList, expected);
        QCOMPARE(fieldsOf(text), expected);
    }

    void anEndlessLineIsRefusedEarly()
    {
        QByteArray text(8 * 1024 * 1024, '7');
        QBuffer device(&text);
        device.open(QIODevice::ReadOnly);
        CsvFields fields(device);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, fields.next());
        QVERIFY(device.pos() < 200000);
    }

    void linesAreCounted_data()
    {
        QTest::addColumn<QByteArray>("end");
        QTest::newRow("CR LF") << QByteArray("\r\n");
        QTest::newRow("LF") << QByteArray("\n");
        QTest::newRow("CR") << QByteArray("\r");
    }
    void linesAreCounted()
    {
        QFETCH(QByteArray, end);
        QByteArray text = "a,b" + end + "c" + end + end + "\"d\",e";
        QBuffer device(&text);
        device.open(QIODevice::ReadOnly);
        CsvFields fields(device);
        for (const int line : {1, 1, 2, 3, 4, 4}) {
            QCOMPARE(fields.line(), line);
            fields.next();
        }
    }

    void fieldsAcrossPieces()
    {
        QByteArray text;
        QStringList expected;
        for (int i = 0; i < 30000; ++i) {
            text += QByteArray::number(i) + ',';
            expected.append(QString::number(i));
        }
        QCOMPARE(fieldsOf(text), expected);
    }
};

QTEST_APPLESS_MAIN(TestCsvFields)
#include "test_csv_fields.moc"
