// SPDX-License-Identifier: MIT
#include "setup/calibration_dialog.h"

#include "core/common_functions.h"
#include "core/number_text.h"

#include <QPushButton>
#include <QScopedValueRollback>
#include <QShowEvent>
#include <QVBoxLayout>

namespace calvorn {

CalibrationDialog::CalibrationDialog(const Texts &texts, Configuration &configuration, Messages &messages,
                                     ErrorBoundary &boundary, QWidget *parent)
    : QDialog(parent)
    , m_configuration(configuration)
    , m_messages(messages)
    , m_boundary(boundary)
    , m_grid(new QGridLayout)
    , m_box(new QLineEdit(this))
    , m_nudge(new QScrollBar(Qt::Vertical, this))
    , m_changeName(texts.boxName.toLatin1() + "_Change")
{
    setObjectName(texts.name);
    setWindowTitle(texts.title);
    auto *column = new QVBoxLayout(this);
    auto *instructions = new QLabel(texts.instructions, this);
    instructions->setObjectName(QStringLiteral("Label1"));
    instructions->setTextFormat(Qt::PlainText);
    column->addWidget(instructions);
    column->addLayout(m_grid);
    column->addStretch();
    buildEntry(texts);
    buildButtons();
    m_boundary.connect(this, &QDialog::finished, this, "Form_Unload", [this] { unload(); });
}

void CalibrationDialog::buildEntry(const Texts &texts)
{
    m_box->setObjectName(texts.boxName);
    m_box->setAlignment(Qt::AlignRight);
    m_box->setToolTip(texts.boxLabel);
    m_box->setAccessibleName(texts.boxLabel);
    auto *label = new QLabel(QStringLiteral("&") + texts.boxLabel, this);
    label->setBuddy(m_box);
    m_nudge->setObjectName(QStringLiteral("VScrollOffset"));
    m_nudge->setRange(Up, Down);
    m_nudge->setPageStep(1);
    m_nudge->setValue(Rest);
    m_nudge->setFocusPolicy(Qt::StrongFocus);
    m_nudge->setMinimumHeight(44);
    m_nudge->setToolTip(texts.nudgeToolTip);
    m_nudge->setAccessibleName(texts.nudgeToolTip);
    m_grid->addWidget(label, 0, 0);
    m_grid->addWidget(m_box, 0, 1);
    m_grid->addWidget(m_nudge, 0, 2);
    m_grid->setColumnStretch(1, 1);
    m_boundary.connect(m_box, &QLineEdit::textChanged, this, m_changeName.constData(), [this] {
        if (m_busy)
            return;
        const QScopedValueRollback guard(m_busy, true);
        offsetChanged();
    });
    m_boundary.connect(m_nudge, &QScrollBar::valueChanged, this, "VScrollOffset_Change",
                       [this] { VScrollOffset_Change(); });
}

void CalibrationDialog::buildButtons()
{
    auto *apply = new QPushButton(tr("&Apply"), this);
    apply->setObjectName(QStringLiteral("cmdApply"));
    apply->setToolTip(tr("Take this offset; it is saved when the program ends"));
    auto *exit = new QPushButton(tr("&EXIT"), this);
    exit->setObjectName(QStringLiteral("cmdExit"));
    exit->setToolTip(tr("Close; an offset that was not applied is forgotten"));
    auto *row = new QHBoxLayout;
    row->addStretch();
    for (QPushButton *button : {apply, exit}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    static_cast<QVBoxLayout *>(layout())->addLayout(row);
    m_boundary.connect(apply, &QPushButton::clicked, this, "cmdApply_Click", [this] { cmdApply_Click(); });
    m_boundary.connect(exit, &QPushButton::clicked, this, "cmdExit_Click", [this] { reject(); });
}

void CalibrationDialog::showEvent(QShowEvent *event)
{
    if (!event->spontaneous())
        m_boundary.run("Form_Load", [this] {
            const QScopedValueRollback guard(m_busy, true);
            load();
        });
    QDialog::showEvent(event);
}

// Putting the bar back raises the event again.
void CalibrationDialog::VScrollOffset_Change()
{
    if (m_busy)
        return;
    const QScopedValueRollback guard(m_busy, true);
    const int position = m_nudge->value();
    m_nudge->setValue(Rest);
    if (position != Rest)
        nudged(position == Up ? 1 : -1);
}

bool CalibrationDialog::isNumeric() const
{
    return NumberText().isNumeric(normaliseDecimal(m_box->text()));
}

double CalibrationDialog::offset() const
{
    return isNumeric() ? NumberText().toDouble(normaliseDecimal(m_box->text())) : 0.0;
}

} // namespace calvorn
