// SPDX-License-Identifier: MIT
// Tests that the programs' keys, the page that documents them and the delivered settings file agree.
#include "core/detector_settings.h"
#include "core/settings_table.h"
#include "protocol/aux_settings.h"
#include "protocol/lpt_wiring_parser.h"
#include "protocol/port_error.h"
#include "protocol/simulator_keys.h"
#include "tests/support/settings_page.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>

using namespace calvorn;

namespace {

QString nameOf(SettingKind kind)
{
    switch (kind) {
    case SettingKind::Text:
        return QStringLiteral("text");
    case SettingKind::Int16:
    case SettingKind::Int32:
    case SettingKind::Decibels:
    case SettingKind::MarkerFrequency:
        return QStringLiteral("whole number");
    case SettingKind::Real:
    case SettingKind::MarkerLevel:
        return QStringLiteral("number");
    case SettingKind::Boolean:
        return QStringLiteral("yes or no");
    case SettingKind::Address:
        return QStringLiteral("address");
    }
    return {};
}

QStringList tableSections()
{
    QStringList sections;
    for (const SettingRow &row : settingsTable())
        sections.append(QString::fromLatin1(row.key.section));
    sections.removeDuplicates();
    return sections;
}

// Returns "key=default" for each key in a section, in table order.
QStringList keysOfTable(const QString &section)
{
    QStringList keys;
    for (const SettingRow &row : settingsTable())
        if (section == QLatin1String(row.key.section))
            keys.append(QString::fromLatin1(row.key.name) + u'=' + QString::fromLatin1(row.key.fallback));
    return keys;
}

QVector<SettingKey> outputKeys(std::size_t index)
{
    const AuxKeys &keys = kAuxKeys[index];
    QVector<SettingKey> all{keys.title, keys.enabled, keys.inverse};
    for (const SettingKey &step : keys.steps)
        all.append(step);
    if (index == 1)
        all += {kPotMax, kPotMin, kI2cControl, kI2cCommand};
    return all;
}

QVector<ProfileEntry> preparedEntries(const QString &section)
{
    return readProfileSection(QStringLiteral(CALVORN_SOURCE_DIR "/packaging/Calvorn.ini"), section);
}

QStringList namesOf(const QVector<ProfileEntry> &entries)
{
    QStringList names;
    for (const ProfileEntry &entry : entries)
        names.append(entry.key);
    return names;
}

QStringList withoutDefaults(QStringList keys)
{
    return keys.replaceInStrings(QRegularExpression(QStringLiteral("=.*")), QString());
}

} // namespace

class TestSettingsTable : public QObject
{
    Q_OBJECT

private slots:
    void thePageHasEverySection();
    void thePageHasEveryKeyAndDefault();
    void thePageSaysWhatAValueIsAndWhoWritesIt();
    void thePageHasTheLawsOfTheDetector();
    void thePageHasTheOutputs();
    void thePageHasTheSimulatedBoards();
    void thePageHasTheWiring();
    void thePreparedFileHasEveryKeyInItsPlace();
    void thePreparedInterfacesHaveTheKeysOfTheHardware();
    void thePreparedOutputsAndBoardsAreKnown();
    void theDictionaryOfTheFuzzerIsKnown();
    void everySectionThatIsMentionedExists_data();
    void everySectionThatIsMentionedExists();
};

void TestSettingsTable::thePageHasEverySection()
{
    QStringList sections = tableSections();
    sections += QStringList{"Aux1",      "Aux2",       "Interface1", "Interface2", "Interface3",
                            "Simulator", "LPT Wiring", "Ports",      "Attenuator", "Measure",
                            "View",      "Detector",   "Level",      "Generator",  "Remote"};
    QStringList documented = test::sectionsOfPage();
    std::sort(sections.begin(), sections.end());
    std::sort(documented.begin(), documented.end());
    QCOMPARE(documented, sections);
}

void TestSettingsTable::thePageHasEveryKeyAndDefault()
{
    QCOMPARE(tableSections(), (QStringList{"Config", "Debug", "Parallel Port", "Serial Port", "Calvorn"}));
    qsizetype keys = 0;
    for (const QString &section : tableSections()) {
        QStringList known = keysOfTable(section);
        if (section == QLatin1String(kAdcLaw.section))
            known += test::keysOf({kAdcLaw});
        if (section == QLatin1String(kPicSettling.section))
            known += test::keysOf({kPicSettling});
        QCOMPARE(test::keysOfPage(section), known);
        keys += test::keysOfPage(section).size();
    }
    QCOMPARE(keys, 34);
}

void TestSettingsTable::thePageSaysWhatAValueIsAndWhoWritesIt()
{
    for (const SettingRow &row : settingsTable()) {
        const QString key = QString::fromLatin1(row.key.name);
        const QVector<test::SettingsRow> rows = test::rowsOfPage(QString::fromLatin1(row.key.section));
        const auto found =
            std::find_if(rows.begin(), rows.end(), [&](const test::SettingsRow &other) { return other.key == key; });
        QVERIFY2(found != rows.end(), row.key.name);
        QCOMPARE(key + u' ' + found->kind, key + u' ' + nameOf(row.kind));
        QStringList writers;
        if (row.places.shutdown > 0)
            writers.append(QStringLiteral("close"));
        if (row.places.apply > 0)
            writers.append(QStringLiteral("Apply"));
        if (key == u"Cursor mode")
            writers.append(QStringLiteral("Preferences"));
        QCOMPARE(key + u' ' + found->written.join(u' '), key + u' ' + writers.join(u' '));
    }
}

void TestSettingsTable::thePageHasTheLawsOfTheDetector()
{
    QStringList known = test::keysOf({kDetectorSlope, kDetectorIntercept});
    known.append(QStringLiteral("Point 1="));
    QCOMPARE(test::keysOfPage(QString::fromLatin1(kDetectorSection)), known);
    // The delivered file contains no law.
    QStringList faults;
    QCOMPARE(readDetectorLaw(Profile(QStringLiteral(CALVORN_SOURCE_DIR "/packaging/Calvorn.ini")), faults),
             DetectorLaw());
    QVERIFY(faults.isEmpty());
}

void TestSettingsTable::thePageHasTheOutputs()
{
    QCOMPARE(test::keysOfPage(QStringLiteral("Aux1")), test::keysOf(outputKeys(0)));
    QCOMPARE(test::keysOfPage(QStringLiteral("Aux2")), test::keysOf(outputKeys(1)));
    for (const SettingKey &key : outputKeys(0))
        QCOMPARE(QString::fromLatin1(key.section), QStringLiteral("Aux1"));
    for (const SettingKey &key : outputKeys(1))
        QCOMPARE(QString::fromLatin1(key.section), QStringLiteral("Aux2"));
}

void TestSettingsTable::thePageHasTheSimulatedBoards()
{
    QCOMPARE(test::keysOfPage(QStringLiteral("Simulator")),
             test::keysOf({kSimulatorKeys.begin(), kSimulatorKeys.end()}));
    for (const SettingKey &key : kSimulatorKeys)
        QCOMPARE(QString::fromLatin1(key.section), QStringLiteral("Simulator"));
}

// The parser accepts each key on the page, and the defaults on the page result in the standard wiring.
void TestSettingsTable::thePageHasTheWiring()
{
    const QVector<test::SettingsRow> rows = test::rowsOfPage(QStringLiteral("LPT Wiring"));
    QCOMPARE(rows.size(), static_cast<qsizetype>(kLptLineCount) + 1);
    QVector<ProfileEntry> entries;
    for (const test::SettingsRow &row : rows)
        entries.append({QStringLiteral("LPT Wiring"), row.key, row.fallback});
    QStringList keys = namesOf(entries);
    QCOMPARE(keys.removeDuplicates(), 0);
    const BoardWiring wiring = parseBoardWiring(entries);
    QVERIFY(wiring.loading == DdsLoading::Serial);
    for (std::size_t i = 0; i < kLptLineCount; ++i) {
        const LineWiring &line = wiring.lines[i];
        const LineWiring &standard = kStandardLptWiring[i];
        QVERIFY2(line.portRegister == standard.portRegister && line.mask == standard.mask &&
                     line.inverted == standard.inverted,
                 qPrintable(rows[static_cast<qsizetype>(i) + 1].key));
    }
    // The parser checks each key's value.
    for (const test::SettingsRow &row : rows)
        QVERIFY_THROWS_EXCEPTION(PortError,
                                 parseBoardWiring({{QStringLiteral("LPT Wiring"), row.key, QStringLiteral("D9")}}));
}

// The delivered file is complete, so starting the program adds no keys.
void TestSettingsTable::thePreparedFileHasEveryKeyInItsPlace()
{
    for (const QString &section : tableSections())
        QCOMPARE(namesOf(preparedEntries(section)), withoutDefaults(keysOfTable(section)));
}

void TestSettingsTable::thePreparedInterfacesHaveTheKeysOfTheHardware()
{
    QStringList hardware = withoutDefaults(keysOfTable(QStringLiteral("Config")));
    QCOMPARE(hardware.takeFirst(), QStringLiteral("Interface"));
    for (int interfaceType = 1; interfaceType <= 3; ++interfaceType)
        QCOMPARE(namesOf(preparedEntries(QStringLiteral("Interface%1").arg(interfaceType))), hardware);
    // The configuration dialog reads each of these keys.
    QStringList setUp;
    for (const SettingRow *row : settingsInOrder(&SettingPlaces::hardware))
        setUp.append(QString::fromLatin1(row->key.name));
    QCOMPARE(setUp, (QStringList{"DDS Device", "DDS Multiplier", "DDS Xtal freq", "DDS Max freq", "DDS Min freq",
                                 "DDS Offset", "ADC Device", "ADC Step", "ADC Channel", "ADC Offset"}));
    std::sort(setUp.begin(), setUp.end());
    std::sort(hardware.begin(), hardware.end());
    QCOMPARE(setUp, hardware);
}

void TestSettingsTable::thePreparedOutputsAndBoardsAreKnown()
{
    for (const char *section : {"Aux1", "Aux2", "Simulator"}) {
        const QStringList known = withoutDefaults(test::keysOfPage(QString::fromLatin1(section)));
        const QStringList prepared = namesOf(preparedEntries(QString::fromLatin1(section)));
        QVERIFY(!prepared.isEmpty());
        for (const QString &key : prepared)
            QVERIFY2(known.contains(key), qPrintable(key));
    }
    // The delivered file contains no unknown section.
    static const QRegularExpression header(QStringLiteral(R"(^\[(.+)\]$)"), QRegularExpression::MultilineOption);
    int sections = 0;
    for (auto match = header.globalMatch(test::sourceText(QStringLiteral("packaging/Calvorn.ini")).remove(u'\r'));
         match.hasNext(); ++sections) {
        const QString section = match.next().captured(1);
        QVERIFY2(test::sectionsOfPage().contains(section), qPrintable(section));
    }
    QCOMPARE(sections, 11);
}

void TestSettingsTable::theDictionaryOfTheFuzzerIsKnown()
{
    QStringList known;
    for (const QString &section : test::sectionsOfPage())
        known += withoutDefaults(test::keysOfPage(section));
    static const QRegularExpression word(QStringLiteral(R"(\x22(?:\[([^\]]+)\]|([^\x22=]+)=)\x22)"));
    int words = 0;
    for (auto match = word.globalMatch(test::sourceText(QStringLiteral("fuzz/settings_file_fuzz.dict")));
         match.hasNext(); ++words) {
        const QRegularExpressionMatch found = match.next();
        if (!found.captured(1).isEmpty())
            QVERIFY2(test::sectionsOfPage().contains(found.captured(1)), qPrintable(found.captured(1)));
        else
            QVERIFY2(known.contains(found.captured(2)), qPrintable(found.captured(2)));
    }
    QVERIFY(words > 30);
}

void TestSettingsTable::everySectionThatIsMentionedExists_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("README.md") << QStringLiteral("README.md");
    const QDir root(QStringLiteral(CALVORN_SOURCE_DIR));
    for (const char *folder : {"help", "docs/hardware"})
        for (const QString &name : QDir(root.filePath(QString::fromLatin1(folder)))
                                       .entryList({QStringLiteral("*.html"), QStringLiteral("*.md")}, QDir::Files)) {
            const QString path = QString::fromLatin1(folder) + u'/' + name;
            QTest::newRow(qPrintable(path)) << path;
        }
}

// Finds "[Section] Key" in tables, "[Section] "Key"" in sentences, and sections without a key.
void TestSettingsTable::everySectionThatIsMentionedExists()
{
    QFETCH(QString, path);
    // Excludes Markdown links, which also have brackets.
    static const QRegularExpression mention(QStringLiteral(
        R"(\[([A-Z][A-Za-z0-9]+(?: [A-Z][a-z]+)?)\](?!\()(?: \x22([^\x22]+)\x22| ([A-Z][A-Za-z]+)</td>)?)"));
    const QString text = test::sourceText(path);
    for (auto match = mention.globalMatch(text); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        const QString section = found.captured(1);
        QVERIFY2(test::sectionsOfPage().contains(section), qPrintable(section));
        const QString key = found.captured(2) + found.captured(3);
        if (!key.isEmpty())
            QVERIFY2(withoutDefaults(test::keysOfPage(section)).contains(key), qPrintable(section + u' ' + key));
    }
}

QTEST_APPLESS_MAIN(TestSettingsTable)
#include "test_settings_table.moc"
