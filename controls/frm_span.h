// SPDX-License-Identifier: MIT
#pragma once

#include "controls/span.h"
#include "platform/desktop.h"
#include "widgets/entry_box.h"

#include <QDialog>

class QGridLayout;

namespace calvorn {

// The frmSpan dialog, which sets the range by centre and span. As in the start and stop boxes, an invalid entry is
// corrected in place with a beep; the span is reduced to what fits between the generator's limits around the centre.
class FrmSpan : public QDialog
{
    Q_OBJECT

public:
    FrmSpan(const Configuration &configuration, Desktop &desktop, QWidget *parent = nullptr);

    // Shows the configured range. Call before opening the dialog.
    void load();

signals:
    // The user has changed the centre or the span and pressed OK.
    void spanEntered(const Span &span);

protected:
    void done(int result) override;

private:
    EntryBox *addBox(QGridLayout *grid, const char *name, const QString &caption, const QString &toolTip);
    static void enterBox(EntryBox *box);
    void txtCentre_LostFocus();
    void txtSpan_LostFocus();
    double entered(const EntryBox *box, double former);
    double within(double value, double lowest, double highest);
    void narrowSpan();
    static void showHertz(EntryBox *box, double value);
    Span span() const;

    const Configuration &m_configuration;
    Desktop &m_desktop;
    EntryBox *m_centreBox;
    EntryBox *m_spanBox;
    double m_centre = 0.0; // Hz, whole
    double m_span = 0.0;   // Hz, whole
    bool m_falls = false;
    bool m_changed = false;
};

} // namespace calvorn
