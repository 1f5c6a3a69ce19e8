// SPDX-License-Identifier: MIT
#include "measure/measure_choices.h"

#include "core/number_text.h"
#include "core/setting_reader.h"
#include "core/settings_table.h"
#include "platform/profile_file.h"

#include <algorithm>

namespace calvorn {

namespace {

constexpr const char *kSection = "Measure";

// Calls the visitor with each key and its field.
template <typename Choices, typename Visitor>
void visitChoices(Choices &&choices, Visitor visit)
{
    visit(SettingKey{kSection, "Open", "0"}, choices.isOpen);
    visit(SettingKey{kSection, "Floating", "0"}, choices.isFloating);
    visit(SettingKey{kSection, "Place", ""}, choices.place);
    visit(SettingKey{kSection, "Page", "1"}, choices.page);
    visit(SettingKey{kSection, "Max hold", "0"}, choices.maxHold);
    visit(SettingKey{kSection, "Min hold", "0"}, choices.minHold);
    visit(SettingKey{kSection, "Average", "0"}, choices.average);
    visit(SettingKey{kSection, "Average over", "10"}, choices.averageOver);
    visit(SettingKey{kSection, "Legend", "1"}, choices.legend);
    visit(SettingKey{kSection, "Results", "0"}, choices.kind);
    visit(SettingKey{kSection, "Source", "0"}, choices.source);
    visit(SettingKey{kSection, "Fixture", "50"}, choices.fixtureOhms);
    visit(SettingKey{kSection, "Prominence", "3"}, choices.prominence);
    visit(SettingKey{kSection, "Track peak", "0"}, choices.tracksPeak);
    visit(SettingKey{kSection, "Limits", "0"}, choices.limits);
    visit(SettingKey{kSection, "Beep", "0"}, choices.beeps);
    visit(SettingKey{kSection, "Limit margin", "3"}, choices.limitMargin);
    visit(SettingKey{kSection, "Limits file", ""}, choices.limitsFile);
}

} // namespace

QVector<SettingKey> measureKeys()
{
    QVector<SettingKey> keys;
    visitChoices(MeasureChoices(), [&keys](const SettingKey &key, const auto &) { keys.push_back(key); });
    return keys;
}

MeasureChoices readMeasureChoices(const QString &settingsFile)
{
    MeasureChoices choices;
    SettingReader reader(settingsFile, SettingReader::Defaults::KeepOut);
    visitChoices(choices, [&reader](const SettingKey &key, auto &value) { reader.read(value, key); });
    choices.page = std::clamp<std::int16_t>(choices.page, 0, 3);
    choices.averageOver =
        std::clamp<std::int16_t>(choices.averageOver, TraceSet::kFewestAveraged, TraceSet::kMostAveraged);
    choices.kind = std::clamp<std::int16_t>(choices.kind, 0, 3);
    choices.source = std::clamp<std::int16_t>(choices.source, 0, 1);
    return choices;
}

bool saveMeasureChoices(const MeasureChoices &choices, const QString &settingsFile)
{
    const MeasureChoices before = readMeasureChoices(settingsFile);
    if (choices == before)
        return true;
    QVector<ProfileEntry> entries;
    const NumberText numbers;
    visitChoices(choices, [&](const SettingKey &key, const auto &value) {
        entries.append({QString::fromLatin1(key.section), QString::fromLatin1(key.name), settingText(numbers, value)});
    });
    return writeProfileStrings(settingsFile, entries);
}

} // namespace calvorn
