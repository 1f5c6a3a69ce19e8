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

// Base class of the generator and detector calibrations: instructions, the trial offset with its nudge control, and the
// "Apply" and "Exit" buttons.
class CalibrationDialog : public QDialog
{
    Q_OBJECT

public:
    // driver: null if the configured interface has none.
    void setDriver(AcquisitionDriver *driver) { m_driver = driver; }

protected:
    // Positions of the nudge control; its rest position is in the middle.
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
    // Called after the user has typed a number, so that it can be reformatted.
    virtual void numberTyped() {}
    // Called when the trial offset has changed, and after load().
    virtual void offsetChanged() {}
    // direction: 1 up, -1 down.
    virtual void nudged(int direction) = 0;
    virtual void cmdApply_Click() = 0;

    // The trial offset; 0 if the text is not a number.
    double offset() const;

    // Add a read-out with its caption, or a note as wide as the dialog, below the previous row.
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
    QByteArray m_changeName; // name of the text box's handler, for the error boundary
    QString m_pending;       // start of a number that the box cannot show yet: "-", "." or "-."
    bool m_busy = false;     // prevents recursion between the two change handlers
};

} // namespace calvorn
