// SPDX-License-Identifier: MIT
#include "instrument/instrument.h"

#include "core/runtime_error.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/locales.h"

#include <QSignalSpy>
#include <QTest>

using namespace calvorn;
using calvorn::test::inLocale;

class TestSampleConversion : public QObject
{
    Q_OBJECT

private:
    Configuration m_configuration;

    static QVector<int> vector(int value) { return QVector<int>(kSweepPoints, value); }

private slots:
    void init()
    {
        m_configuration = Configuration();
        m_configuration.adcStep = 0.0048F;
        m_configuration.startFreq = 1000000;
        m_configuration.stepFreq = 1000;
    }
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void countsBecomeRows_data() { test::addLocaleRows(); }
    void countsBecomeRows()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        SweepTable table(m_configuration);
        table.inizializzaGrid();
        SampleConversion conversion(m_configuration, table);
        QSignalSpy stored(&conversion, &SampleConversion::vectorStored);
        QVector<int> counts;
        for (int i = 0; i < kSweepPoints; ++i)
            counts.append(i * 2);
        conversion.datiDDS(counts);
        QCOMPARE(stored.count(), 1);
        for (int row = 1; row <= kSweepPoints; ++row)
            QCOMPARE(table.text(row, 2), QString::number((row - 1) * 2));
        QCOMPARE(table.text(1, 1), inLocale(locale, QStringLiteral("0.000")));
        QCOMPARE(table.text(400, 1), inLocale(locale, QStringLiteral("3.830"))); // 798 x 0.0048
        m_configuration.scaleType = 1;
        conversion.datiDDS(counts);
        QCOMPARE(table.text(1, 1), inLocale(locale, QStringLiteral("-100.0")));
        QCOMPARE(table.text(400, 1), inLocale(locale, QStringLiteral("11.7"))); // 20 lg 3.830 = 11.66
    }

    // Whatever changes between two sweeps, the cells match those of a new conversion.
    void nothingIsKeptBeyondItsTime_data() { test::addLocaleRows(); }
    void nothingIsKeptBeyondItsTime()
    {
        QFETCH(QLocale, locale);
        SweepTable table(m_configuration);
        table.inizializzaGrid();
        SampleConversion conversion(m_configuration, table);
        QVector<int> counts;
        for (int i = 0; i < kSweepPoints; ++i)
            counts.append(i < 10 ? i - 5 : i * 3); // includes counts that no converter returns
        const auto isAsIfNew = [&] {
            conversion.datiDDS(counts);
            const double reference = m_configuration.dbReference;
            m_configuration.dbReference = 0.0;
            SweepTable other(m_configuration);
            other.inizializzaGrid();
            SampleConversion(m_configuration, other).datiDDS(counts);
            for (int row = 1; row <= kSweepPoints; ++row)
                for (const int column : {SweepTable::SampleColumn, SweepTable::AmplitudeColumn})
                    if (table.text(row, column) != other.text(row, column))
                        return false;
            return m_configuration.scaleType == 0 || m_configuration.dbReference == reference;
        };
        QVERIFY(isAsIfNew());
        for (const int scale : {1, 2, 3, 4, 0, 3}) {
            m_configuration.scaleType = static_cast<std::int16_t>(scale);
            QVERIFY(isAsIfNew());
            QVERIFY(isAsIfNew());
            m_configuration.adcStep += 0.001F;
            QVERIFY(isAsIfNew());
            m_configuration.adcOffset -= 0.25F;
            QVERIFY(isAsIfNew());
            QLocale::setDefault(QLocale() == locale ? QLocale::c() : locale);
            QVERIFY(isAsIfNew());
            // Modified table cells do not affect cached conversions.
            table.setText(7, SweepTable::AmplitudeColumn, QStringLiteral("spoilt"));
            AmplitudeWriter(m_configuration, table).convertAllRows();
            QVERIFY(isAsIfNew());
        }
        QLocale::setDefault(QLocale::c());
    }

    void theInvertedDetectorIsTurnedRound()
    {
        Log log(m_configuration);
        test::FakeDesktop desktop;
        Instrument instrument(m_configuration, log, desktop, QString(), QString());
        const SweepTable &table = instrument.table();
        m_configuration.interfaceType = kInterfaceVna;
        m_configuration.measuringMode = 3;
        QVERIFY(instrument.makeDriver());
        instrument.store(vector(1000));
        QCOMPARE(table.text(1, 2), QStringLiteral("24"));
        m_configuration.measuringMode = 2;
        instrument.store(vector(1000));
        QCOMPARE(table.text(1, 2), QStringLiteral("1000"));
        m_configuration.interfaceType = kInterfaceLpt;
        m_configuration.measuringMode = 3;
        QVERIFY(instrument.makeDriver());
        instrument.store(vector(1000));
        QCOMPARE(table.text(400, 2), QStringLiteral("1000"));
    }

    void samplesAreEchoedOnlyWithTheLogOn()
    {
        SweepTable table(m_configuration);
        table.inizializzaGrid();
        SampleConversion conversion(m_configuration, table);
        QSignalSpy echoed(&conversion, &SampleConversion::sampleReceived);
        conversion.datiDDS(vector(7));
        QCOMPARE(echoed.count(), 0);
        m_configuration.logDebug = true;
        conversion.datiDDS(vector(7));
        QCOMPARE(echoed.count(), 400);
        QCOMPARE(echoed.last(), (QVariantList{400, 7}));
    }

    void aShortVectorIsAnError()
    {
        SweepTable table(m_configuration);
        table.inizializzaGrid();
        SampleConversion conversion(m_configuration, table);
        QSignalSpy stored(&conversion, &SampleConversion::vectorStored);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, conversion.datiDDS(QVector<int>(399, 1)));
        QCOMPARE(stored.count(), 0);
    }
};

QTEST_GUILESS_MAIN(TestSampleConversion)
#include "test_sample_conversion.moc"
