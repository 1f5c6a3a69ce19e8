// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"
#include "core/messages.h"
#include "widgets/entry_box.h"

#include <QObject>

#include <functional>
#include <utility>

namespace calvorn {

// Connects a text box of the set-up to the number that it edits. An invalid entry is corrected in place with a beep but
// without a message: text that is not a number is replaced with the previous number, an out-of-range number with the
// nearest limit.
class NumberEntry : public QObject
{
    Q_OBJECT

public:
    // Whole: thousands are grouped, except during editing. Real: accepts either decimal separator.
    enum class Kind { Whole, Real };

    struct Binding
    {
        std::function<QString()> shown;                   // the number as shown in the box
        std::function<void(double)> take;                 // stores a number that is within the range
        std::function<std::pair<double, double>()> range; // lowest and highest
    };

    // The box becomes the parent.
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
    QByteArray m_enterName; // names of the handlers, for the error boundary
    QByteArray m_leaveName;
};

} // namespace calvorn
