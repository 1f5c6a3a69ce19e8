// SPDX-License-Identifier: MIT
#include "core/common_functions.h"

#include "core/log.h"
#include "core/number_text.h"
#include "core/runtime_error.h"
#include "tests/support/locales.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <limits>

using namespace calvorn;

class TestCommonFunctions : public QObject
{
    Q_OBJECT

private:
    static double db(std::int16_t scaleType, double volts)
    {
        Configuration configuration;
        configuration.scaleType = scaleType;
        return voltsToDb(configuration, volts);
    }

    static double volts(std::int16_t scaleType, double value)
    {
        Configuration configuration;
        configuration.scaleType = scaleType;
        return dbToVolts(configuration, value);
    }

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void voltsBecomeDecibels()
    {
        QCOMPARE(db(1, 1.0), 0.0);
        QCOMPARE(db(2, 1.0), 0.0);
        QCOMPARE(db(3, 1.0), -20.0);
        QCOMPARE(db(4, 1.0), -20.0);
        QCOMPARE(db(2, 0.5), -6.02);
        for (std::int16_t scale = 1; scale <= 4; ++scale) {
            QCOMPARE(db(scale, 0.0), -100.0);
            QCOMPARE(db(scale, -0.2), -100.0);
            QCOMPARE(db(scale, std::nan("")), -100.0);
        }
        QCOMPARE(db(0, 0.0), 0.0);
        QCOMPARE(db(0, -0.2), -0.2);
        // An unknown scale is treated as dB referred to 1 V.
        QCOMPARE(db(7, 0.5), -6.02);
    }

    void decibelsBecomeVolts()
    {
        QCOMPARE(volts(1, -20.0), 0.1);
        QCOMPARE(volts(2, -20.0), 0.1);
        QCOMPARE(volts(3, -20.0), 1.0);
        QCOMPARE(volts(4, -20.0), 1.0);
        QCOMPARE(volts(0, -20.0), -20.0);
        QCOMPARE(volts(7, -20.0), 0.0);
        QCOMPARE(volts(-1, -20.0), 0.0);
    }

    void aLevelBeyondEveryVoltageIsAnOverflow()
    {
        Configuration configuration;
        for (std::int16_t scale = 1; scale <= 4; ++scale) {
            configuration.scaleType = scale;
            QVERIFY_THROWS_EXCEPTION(RuntimeError, dbToVolts(configuration, 100000.0));
            QVERIFY_THROWS_EXCEPTION(RuntimeError, dbToVolts(configuration, 6166.0));
            try {
                dbToVolts(configuration, 100000.0);
            } catch (const RuntimeError &error) {
                QCOMPARE(error.kind(), RuntimeError::Kind::Overflow);
            }
            QVERIFY(std::isfinite(dbToVolts(configuration, 6140.0)));
            QCOMPARE(dbToVolts(configuration, -100000.0), 0.0);
            QCOMPARE(dbToVoltsBounded(configuration, 100000.0), std::numeric_limits<double>::max());
            QCOMPARE(dbToVoltsBounded(configuration, -20.0), dbToVolts(configuration, -20.0));
        }
        // Converted to volts, 6160 dB fits in a double if the reference is 1 V, but not if it is 10 V.
        QVERIFY(std::isfinite(volts(1, 6160.0)));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, volts(3, 6160.0));
        QCOMPARE(volts(0, 100000.0), 100000.0);
        QCOMPARE(volts(7, 100000.0), 0.0);
    }

    void theReferenceFollowsTheScale()
    {
        Configuration configuration;
        configuration.dbReference = 5.0;
        configuration.scaleType = 0;
        voltsToDb(configuration, 1.0);
        QCOMPARE(configuration.dbReference, 5.0);
        configuration.scaleType = 3;
        voltsToDb(configuration, 1.0);
        QCOMPARE(configuration.dbReference, 10.0);
        configuration.scaleType = 9;
        voltsToDb(configuration, 0.0);
        QCOMPARE(configuration.dbReference, 1.0);
    }

    void countsBecomeVolts()
    {
        Configuration configuration;
        configuration.adcStep = 0.0048F;
        configuration.adcOffset = 0.1F;
        QCOMPARE(countToVolts(configuration, 100), 0.58F);
        QCOMPARE(countToVolts(configuration, 0), 0.1F);
    }

    void theSeparatorIsTheLocales_data() { test::addLocaleRows(); }
    void theSeparatorIsTheLocales()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        QCOMPARE(QString(NumberText().decimalSeparator()), locale.decimalPoint());
        const QString other = locale.decimalPoint() == u"." ? QStringLiteral("0,0048") : QStringLiteral("0.0048");
        QCOMPARE(normaliseDecimal(other), test::inLocale(locale, QStringLiteral("0.0048")));
    }

    void aMissingKeyIsWrittenAndAPresentOneNot()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("Calvorn.ini"));
        QCOMPARE(readSetting(QStringLiteral("a"), QStringLiteral("b"), path, QStringLiteral("1")), QStringLiteral("1"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("[a]\r\nb=1\r\n"));
        QCOMPARE(readSetting(QStringLiteral("a"), QStringLiteral("b"), path, QStringLiteral("2")), QStringLiteral("1"));
    }

    void theLogIsSilentWhenItIsOff()
    {
        Configuration configuration;
        Log log(configuration);
        QSignalSpy lines(&log, &Log::lineWritten);
        log.writeLog(QStringLiteral("nothing"));
        QCOMPARE(lines.count(), 0);
        QVERIFY(log.takeEarlyLines().isEmpty());
        configuration.logDebug = true;
        log.writeLog(QStringLiteral("L> Start sweep"));
        QCOMPARE(lines.count(), 1);
    }

    void earlyLogLinesAreKeptOnce()
    {
        Configuration configuration;
        configuration.logDebug = true;
        Log log(configuration);
        log.writeLog(QStringLiteral("early"));
        QCOMPARE(log.takeEarlyLines(), QStringList{QStringLiteral("early")});
        log.writeLog(QStringLiteral("late"));
        QVERIFY(log.takeEarlyLines().isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestCommonFunctions)
#include "test_common_functions.moc"
