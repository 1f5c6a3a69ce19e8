// SPDX-License-Identifier: MIT
#include "server/links/line_settings.h"

#include <QTest>

#include <stdexcept>

using namespace calvorn;

// Tests parsing the strings that describe serial-line settings.
class LineSettingsTexts : public QObject
{
    Q_OBJECT

private slots:
    void goodTextsAreUnderstood();
    void badTextsAreRefused_data();
    void badTextsAreRefused();
};

void LineSettingsTexts::goodTextsAreUnderstood()
{
    QCOMPARE(parseLineSettings("115200,N,8,1"), (LineSettings{115'200, LineParity::None, 8, LineStop::One}));
    QCOMPARE(parseLineSettings(" 9600 , e , 7 , 2 "), (LineSettings{9600, LineParity::Even, 7, LineStop::Two}));
    QCOMPARE(parseLineSettings("113636,o,5,1.5"), (LineSettings{113'636, LineParity::Odd, 5, LineStop::OneAndHalf}));
    QCOMPARE(parseLineSettings("300,m,6,1").parity, LineParity::Mark);
    QCOMPARE(parseLineSettings("300,S,6,1").parity, LineParity::Space);
}

void LineSettingsTexts::badTextsAreRefused_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"", "115200", "115200,N,8", "115200,N,8,1,1", "0,N,8,1", "-9600,N,8,1", "+9600,N,8,1",
                             "4000001,N,8,1", "99999999999,N,8,1", "115200,X,8,1", "115200,NE,8,1", "115200,N,4,1",
                             "115200,N,9,1", "115200,N,8,3", "115200,N,8,1,5", "115200,,8,1", "fast,N,8,1"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

void LineSettingsTexts::badTextsAreRefused()
{
    QFETCH(QString, text);
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, parseLineSettings(text));
}

QTEST_GUILESS_MAIN(LineSettingsTexts)
#include "line_settings.moc"
