// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"
#include "core/messages.h"
#include "widgets/entry_box.h"

#include <QObject>

#include <functional>
#include <utility>

namespace calvorn {

// What a text box of the set-up does to the number it edits. A bad entry is corrected in place with a beep and no
// message: what is no number gives way to the former one, what is out of range to the nearest in it.
class NumberEntry : public QObject
{
    Q_OBJECT

public:
    // Whole: thousands may be grouped, and are not while the box is edited. Real: either decimal separator will do.
    enum class Kind { Whole, Real };

    struct Binding
    {
        std::function<QString()> shown;                   // the number as the box shows it
        std::function<void(double)> take;                 // in range
        std::function<std::pair<double, double>()> range; // lowest and highest
    };

    // Belongs to the box.
    NumberEntry(EntryBox *box, Kind kind, Binding binding, Messages &messages, ErrorBoundary &boundary);

    EntryBox *box() const { return m_box; }
    void show() const { m_box->setText(m_binding.shown()); }

private:
    void enter() const;
    void leave() const;

    EntryBox *m_box;
    Kind m_kind;
    Binding m_binding;
    Messages &m_messages;
    QByteArray m_enterName; // of the handlers, for the error boundary
    QByteArray m_leaveName;
};

} // namespace calvorn
