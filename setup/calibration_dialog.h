// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"
#include "instrument/acquisition_driver.h"

#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>

namespace calvorn {

// What the two calibrations share: instructions, the offset being tried with its nudge control, Apply and Exit.
class CalibrationDialog : public QDialog
{
    Q_OBJECT

public:
    // Null when the configured interface has no driver.
    void setDriver(AcquisitionDriver *driver) { m_driver = driver; }

protected:
    // Positions of the nudge control, which rests in the middle.
    enum Nudge { Up = 1, Rest = 2, Down = 3 };

    struct Texts
    {
        QString name; // of the dialog
        QString title;
        QString instructions;
        QString boxName; // of the text box
        QString boxLabel;
        QString nudgeToolTip;
    };

    CalibrationDialog(const Texts &texts, Configuration &configuration, Messages &messages, ErrorBoundary &boundary,
                      QWidget *parent);

    virtual void load() = 0;
    virtual void unload() = 0;
    // The text of the box is a number that was typed, and may be shown in another form.
    virtual void numberTyped() {}
    // Called after load(), too.
    virtual void offsetChanged() {}
    // direction: 1 up, -1 down.
    virtual void nudged(int direction) = 0;
    virtual void cmdApply_Click() = 0;

    // The tried offset; a text that is no number counts as 0.
    double offset() const;

    // Below the box, in the order of the calls: a read-out with its caption, or a text as wide as the dialog.
    void addRow(const QString &caption, QWidget *readOut);
    void addNote(QWidget *note);
    QLineEdit *box() const { return m_box; }
    AcquisitionDriver *driver() const { return m_driver.data(); }
    Configuration &configuration() const { return m_configuration; }
    Messages &messages() const { return m_messages; }
    ErrorBoundary &boundary() const { return m_boundary; }

    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    static bool isNumeric(const QString &text);
    bool isNumeric() const { return isNumeric(m_box->text()); }
    void changed();
    bool completeEntry();
    void buildEntry(const Texts &texts);
    void buildButtons();
    void VScrollOffset_Change();

    Configuration &m_configuration;
    Messages &m_messages;
    ErrorBoundary &m_boundary;
    QPointer<AcquisitionDriver> m_driver;
    QGridLayout *m_grid;
    QLineEdit *m_box;
    QScrollBar *m_nudge;
    QByteArray m_changeName; // of the text box's handler, for the error boundary
    QString m_pending;       // what was typed of a number that the box cannot show yet: "-", "." or "-."
    bool m_busy = false;     // keeps the two change handlers from entering each other
};

} // namespace calvorn
