// SPDX-License-Identifier: MIT
#include "setup/calibration_dialog.h"

#include "core/common_functions.h"
#include "core/number_text.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QShowEvent>
#include <QVBoxLayout>

namespace calvorn {

namespace {

// Returns whether the key continues an entry: it types a character or modifies the next key.
bool typesOn(const QKeyEvent &key)
{
    switch (key.key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
        return true;
    default:
        return !key.text().isEmpty() && key.text().front().isPrint();
    }
}

} // namespace

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

void CalibrationDialog::addRow(const QString &caption, QWidget *readOut)
{
    const int row = m_grid->rowCount();
    m_grid->addWidget(new QLabel(caption, this), row, 0);
    m_grid->addWidget(readOut, row, 1);
}

void CalibrationDialog::addNote(QWidget *note)
{
    m_grid->addWidget(note, m_grid->rowCount(), 0, 1, m_grid->columnCount());
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
    m_nudge->setTracking(false); // dragging the handle counts as one step, on release
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
        changed();
    });
    m_box->installEventFilter(this);
    m_boundary.connect(m_nudge, &QScrollBar::valueChanged, this, "VScrollOffset_Change",
                       [this] { VScrollOffset_Change(); });
}

void CalibrationDialog::buildButtons()
{
    auto *apply = new QPushButton(tr("&Apply"), this);
    apply->setObjectName(QStringLiteral("cmdApply"));
    apply->setToolTip(tr("Apply this offset; it is saved when the program closes"));
    auto *exit = new QPushButton(tr("&EXIT"), this);
    exit->setObjectName(QStringLiteral("cmdExit"));
    exit->setToolTip(tr("Close without applying the offset"));
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
    if (!event->spontaneous()) {
        m_pending.clear();
        m_boundary.run("Form_Load", [this] {
            const QScopedValueRollback guard(m_busy, true);
            load();
        });
        // An unchanged offset does not emit a signal, but must still be applied to the hardware.
        m_boundary.run(m_changeName.constData(), [this] { changed(); });
        m_box->setFocus();
        m_box->selectAll();
    }
    QDialog::showEvent(event);
}

void CalibrationDialog::changed()
{
    const QScopedValueRollback guard(m_busy, true);
    if (completeEntry())
        numberTyped();
    offsetChanged();
}

// Replaces text that is not a number with "0", which the next key overwrites. A sign or a decimal separator would be
// lost that way, so it is stored until the next key; so is the sign of a zero, because it is not shown.
bool CalibrationDialog::completeEntry()
{
    static const QRegularExpression beginning(QStringLiteral("^[+-]?[.,]?$"));
    const QString completed = m_pending + m_box->text();
    const int cursor = m_box->cursorPosition() + static_cast<int>(m_pending.size());
    m_pending.clear();
    if (completed != m_box->text() && isNumeric(completed)) {
        m_box->setText(completed);
        m_box->setCursorPosition(cursor);
    }
    if (isNumeric()) {
        if (m_box->text().startsWith(u'-') && offset() == 0.0)
            m_pending = QStringLiteral("-");
        return true;
    }
    for (const QString &typed : {completed, m_box->text()})
        if (m_pending.isEmpty() && beginning.match(typed).hasMatch())
            m_pending = typed;
    if (m_pending.isEmpty())
        m_messages.desktop().beep();
    m_box->setText(QStringLiteral("0"));
    m_box->selectAll();
    return false;
}

// Any edit other than continued typing starts a new number.
bool CalibrationDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_box) {
        if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::FocusOut)
            m_pending.clear();
        else if (event->type() == QEvent::KeyPress && !typesOn(*static_cast<QKeyEvent *>(event)))
            m_pending.clear();
    }
    return QDialog::eventFilter(watched, event);
}

// Returning the bar to rest emits the signal again.
void CalibrationDialog::VScrollOffset_Change()
{
    if (m_busy)
        return;
    const QScopedValueRollback guard(m_busy, true);
    m_pending.clear();
    const int position = m_nudge->value();
    m_nudge->setValue(Rest);
    if (position != Rest)
        nudged(position == Up ? 1 : -1);
}

bool CalibrationDialog::isNumeric(const QString &text)
{
    return NumberText().isNumeric(normaliseDecimal(text));
}

double CalibrationDialog::offset() const
{
    return isNumeric() ? NumberText().toDouble(normaliseDecimal(m_box->text())) : 0.0;
}

} // namespace calvorn
