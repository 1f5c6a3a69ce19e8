// SPDX-License-Identifier: MIT
#include "acquisition/test_panel.h"

#include "core/number_text.h"
#include "core/runtime_error.h"

#include <QGridLayout>
#include <QLabel>

#include <limits>

namespace calvorn {

TestPanel::TestPanel(Log &log, ErrorBoundary &boundary, QWidget *parent)
    : QGroupBox(tr("Test"), parent)
    , m_log(new QListWidget(this))
    , m_received(new QLineEdit(this))
    , m_errors(new QLineEdit(QStringLiteral("0"), this))
    , m_forcedStop(new QPushButton(tr("Stop"), this))
{
    setObjectName(QStringLiteral("frameTest"));
    const auto name = [](QWidget *widget, const char *objectName, const QString &toolTip) {
        widget->setObjectName(QString::fromLatin1(objectName));
        widget->setToolTip(toolTip);
        widget->setAccessibleName(toolTip);
    };
    name(m_log, "lstLOG", tr("Log of the acquisition"));
    name(m_received, "txtRX", tr("Last received sample: number and count"));
    name(m_errors, "txtErrori", tr("Transmission errors counted"));
    name(m_forcedStop, "cmdSwStop", tr("Bring the buttons back when the hardware never ends a sweep"));
    m_received->setReadOnly(true);
    m_errors->setReadOnly(true);
    m_log->setMinimumHeight(48);
    m_log->setUniformItemSizes(true);

    auto *grid = new QGridLayout(this);
    grid->addWidget(m_log, 0, 0, 1, 2);
    grid->setContentsMargins(6, 2, 6, 6);
    grid->setVerticalSpacing(3);
    grid->addWidget(new QLabel(tr("Received"), this), 1, 0);
    grid->addWidget(m_received, 1, 1);
    grid->addWidget(new QLabel(tr("Errors"), this), 2, 0);
    grid->addWidget(m_errors, 2, 1);
    grid->addWidget(m_forcedStop, 3, 0, 1, 2);
    grid->setRowStretch(0, 1);

    for (const QString &line : log.takeEarlyLines())
        appendLine(line);
    boundary.connect(&log, &Log::lineWritten, this, "writeLog", [this](const QString &text) { appendLine(text); });
    connect(m_forcedStop, &QPushButton::clicked, this, &TestPanel::forcedStop);
}

void TestPanel::appendLine(const QString &text)
{
    if (m_log->count() >= std::numeric_limits<std::int16_t>::max())
        throw RuntimeError(RuntimeError::Kind::Overflow, tr("the log list is full"));
    m_log->addItem(text);
    m_log->setCurrentRow(m_log->count() - 1);
}

void TestPanel::echoSample(int index, int value)
{
    m_received->setText(NumberText::fromInteger(index) + u':' + NumberText::fromInteger(value));
    m_received->repaint();
}

void TestPanel::countError()
{
    const NumberText numbers;
    const QString text = m_errors->text();
    const double count = numbers.isNumeric(text) ? numbers.toDouble(text) : 0.0;
    m_errors->setText(numbers.fromDouble(count + 1.0));
}

} // namespace calvorn
