// SPDX-License-Identifier: MIT
#include "setup/number_entry.h"

#include "core/common_functions.h"
#include "core/number_text.h"

namespace calvorn {

NumberEntry::NumberEntry(EntryBox *box, Kind kind, Binding binding, Messages &messages, ErrorBoundary &boundary)
    : QObject(box)
    , m_box(box)
    , m_kind(kind)
    , m_binding(std::move(binding))
    , m_messages(messages)
    , m_enterName(box->objectName().toLatin1() + "_GotFocus")
    , m_leaveName(box->objectName().toLatin1() + "_LostFocus")
{
    boundary.connect(box, &EntryBox::gotFocus, this, m_enterName.constData(), [this] { enter(); });
    boundary.connect(box, &EntryBox::lostFocus, this, m_leaveName.constData(), [this] { leave(); });
}

void NumberEntry::enter() const
{
    const NumberText numbers;
    if (m_kind == Kind::Whole && numbers.isNumeric(m_box->text()))
        m_box->setText(numbers.generalNumber(m_box->text()));
}

void NumberEntry::leave() const
{
    const NumberText numbers;
    const QString text = m_kind == Kind::Real ? normaliseDecimal(m_box->text()) : m_box->text();
    if (numbers.isNumeric(text)) {
        const double entered = numbers.toDouble(text);
        const auto [lowest, highest] = m_binding.range();
        const double value = entered < lowest ? lowest : entered > highest ? highest : entered;
        if (value != entered)
            m_messages.desktop().beep();
        m_binding.take(value);
    } else {
        m_messages.desktop().beep();
    }
    show();
}

} // namespace calvorn
