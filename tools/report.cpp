// SPDX-License-Identifier: MIT
#include "tools/report.h"

#include "analysis/result_text.h"
#include "analysis/text_plot.h"
#include "core/number_text.h"
#include "core/scale_type.h"
#include "tools/single_sweep.h"
#include "tools/sweep_options.h"
#include "tools/sweep_tool.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <vector>

namespace calvorn {

namespace {

constexpr DisplayMask kMaskJudgedDb{"#0.00"};
constexpr DisplayMask kMaskJudgedVolt{"#0.0000"};
constexpr int kResponseColumn = 18;
constexpr int kColumnDistance = 2;

struct Row
{
    QString caption;
    QString value;
    QString remark;
};

// Aligns captions left and values right, followed by the remarks.
QString aligned(const std::vector<Row> &rows)
{
    qsizetype captions = 0;
    qsizetype values = 0;
    for (const Row &row : rows) {
        captions = std::max(captions, row.caption.size() + kColumnDistance);
        values = std::max(values, row.value.size());
    }
    QString text;
    for (const Row &row : rows) {
        text += row.caption.leftJustified(captions) + row.value.rightJustified(values);
        if (!row.remark.isEmpty())
            text += QString(kColumnDistance, u' ') + row.remark;
        text += u'\n';
    }
    return text;
}

QString hertzText(double hertz)
{
    return NumberText().masked(hertz, kMaskHertz) + QStringLiteral(" Hz");
}

// Returns an amplitude with its unit; ratios have none.
QString amplitudeText(double amplitude, const ShownCurve &curve, DisplayMask volts, DisplayMask decibels)
{
    const bool linear = isLinearScale(curve.scale());
    const QString number = NumberText().masked(amplitude, linear ? volts : decibels);
    if (linear && curve.isRelative())
        return number;
    return number + (linear ? QStringLiteral(" V") : QStringLiteral(" dB"));
}

// Returns the response of a mean or relative curve, which the table does not contain.
SweepResponse responseOf(const ShownCurve &curve)
{
    const Response &in = curve.response();
    const std::optional<Plateau> highest = highestPlateau(in.frequencies, in.decibels);
    if (!highest)
        return {};
    const Crossings points = crossings(in, kHalfPowerDb);
    const std::vector<double> &amplitudes = curve.amplitudes();
    double peak = amplitudes[highest->first];
    if (curve.trace().step < 0.0)
        peak = amplitudes[amplitudes.size() - 1 - highest->first];
    return {peak, middleOf(in.frequencies, *highest), points.lower.frequency, points.upper.frequency};
}

// JSON is not translated, because scripts read it.
QString reasonInJson(Missing missing)
{
    switch (missing) {
    case Missing::Nothing:
        break;
    case Missing::NoSweep:
        return QStringLiteral("no sweep");
    case Missing::NoCrossing:
        return QStringLiteral("outside the sweep range");
    case Missing::BelowFloor:
        return QStringLiteral("below the detector's floor");
    case Missing::NoReference:
        return QStringLiteral("no reference");
    case Missing::NoParallelResonance:
        return QStringLiteral("no parallel resonance inside the range");
    case Missing::Gap:
        return QStringLiteral("a gap in the curve");
    case Missing::NotReached:
        return QStringLiteral("the curve does not reach this level");
    case Missing::NotBelowReference:
        return QStringLiteral("not below the reference");
    }
    return {};
}

QString decibelReferenceOf(const ShownCurve &curve)
{
    if (curve.isRelative())
        return QStringLiteral("reference");
    return QStringLiteral("%1 V").arg(voltsOfZeroDb(curve.scale()));
}

} // namespace

QString responseText(const SingleSweep &sweep, const ShownCurve &curve)
{
    const SweepTable &table = sweep.table();
    const bool linear = isLinearScale(curve.scale());
    const bool isInTable = !curve.isRelative() && !curve.isAveraged();
    const SweepResponse response = isInTable ? responseOf(table, sweep.configuration()) : responseOf(curve);
    const auto hertz = [](const std::optional<double> &value) {
        return value ? hertzText(*value) : SweepTool::tr("outside the range");
    };
    QString text;
    const auto row = [&text](const QString &name, const QString &value) {
        text += name.leftJustified(kResponseColumn) + value.rightJustified(kResponseColumn) + u'\n';
    };
    row(SweepTool::tr("Peak"), amplitudeText(response.peak, curve, kMaskVolt, kMaskDb));
    row(SweepTool::tr("Peak at"), hertz(response.peakFrequency));
    row(SweepTool::tr("-3 dB from"), hertz(response.lower));
    row(SweepTool::tr("-3 dB to"), hertz(response.upper));
    row(SweepTool::tr("-3 dB bandwidth"), hertz(response.bandwidth()));
    const auto frequency = [&table](int number) { return table.text(number, SweepTable::FrequencyColumn); };
    const QStringList plot = isInTable ? textPlot(table, linear)
                                       : textPlot({frequency(1), frequency(kSweepPoints / 2), frequency(kSweepPoints)},
                                                  curve.amplitudes(), linear);
    return text + u'\n' + plot.join(u'\n') + u'\n';
}

QString resultsText(const Results &results)
{
    std::vector<Row> rows;
    for (const Result &result : results)
        rows.push_back(
            {ResultText::caption(result.key), ResultText::value(result), ResultText::missing(result.missing)});
    return aligned(rows);
}

QString verdictText(const LimitVerdict &verdict, const ShownCurve &curve)
{
    const auto amplitude = [&curve](double value) {
        return amplitudeText(value, curve, kMaskJudgedVolt, kMaskJudgedDb);
    };
    return aligned(
        {{SweepTool::tr("Limits"), verdict.hasPassed() ? SweepTool::tr("passed") : SweepTool::tr("failed"), QString()},
         {SweepTool::tr("Worst at"), hertzText(verdict.frequency), QString()},
         {SweepTool::tr("Amplitude"), amplitude(verdict.value), QString()},
         {verdict.isUpper ? SweepTool::tr("Upper limit") : SweepTool::tr("Lower limit"), amplitude(verdict.limit),
          QString()},
         {SweepTool::tr("Margin"), amplitude(verdict.margin), QString()},
         {SweepTool::tr("Outside"), SweepTool::tr("%1 of %2 points").arg(verdict.outside).arg(verdict.judged),
          QString()}});
}

QByteArray reportAsJson(ResultKind kind, const Results &results, const ShownCurve &curve,
                        const std::optional<LimitVerdict> &verdict)
{
    const Trace &trace = curve.trace();
    QJsonObject report{{QStringLiteral("kind"), nameOf(kind)},
                       {QStringLiteral("start"), trace.start},
                       {QStringLiteral("stop"), trace.frequencyAt(trace.volts.size() - 1)},
                       {QStringLiteral("points"), static_cast<qint64>(trace.volts.size())},
                       {QStringLiteral("averaged"), curve.averaged()},
                       {QStringLiteral("relative"), curve.isRelative()},
                       {QStringLiteral("decibelReference"), decibelReferenceOf(curve)}};
    QJsonObject notes;
    for (const Result &result : results) {
        const QString key = QString::fromLatin1(result.key);
        report[key] = result.value ? QJsonValue(*result.value) : QJsonValue(QJsonValue::Null);
        if (!result.value)
            notes[key] = reasonInJson(result.missing);
    }
    report[QStringLiteral("notes")] = notes;
    if (verdict)
        report[QStringLiteral("limits")] = QJsonObject{
            {QStringLiteral("passed"), verdict->hasPassed()}, {QStringLiteral("frequency"), verdict->frequency},
            {QStringLiteral("value"), verdict->value},        {QStringLiteral("limit"), verdict->limit},
            {QStringLiteral("margin"), verdict->margin},      {QStringLiteral("outside"), qint64(verdict->outside)}};
    return QJsonDocument(report).toJson();
}

} // namespace calvorn
