// SPDX-License-Identifier: MIT
#pragma once

#include "core/error_boundary.h"
#include "core/messages.h"
#include "setup/set_up_values.h"
#include "widgets/option_choice.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

namespace calvorn {

// The objects shared by all set-up pages.
struct SetUpContext
{
    SetUpValues &values;
    const Configuration &configuration; // for iniPath; the pages do not change it
    Messages &messages;
    ErrorBoundary &boundary;
};

// A page of the set-up: controls that edit the working copies.
class SetUpPage : public QGroupBox
{
    Q_OBJECT

public:
    SetUpPage(const SetUpContext &context, const QString &title)
        : QGroupBox(title)
        , m_context(context)
    {
        // Keep the dialog the same size for all pages.
        QSizePolicy policy = sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        setSizePolicy(policy);
    }

    // Shows the working copies. Called before the page is shown.
    virtual void fill() = 0;

    // Clears what fill() does not overwrite. Called when the dialog opens.
    virtual void forget() {}

protected:
    SetUpValues &values() const { return m_context.values; }
    const QString &iniPath() const { return m_context.configuration.iniPath; }
    Messages &messages() const { return m_context.messages; }
    ErrorBoundary &boundary() const { return m_context.boundary; }

    // Makes a box as wide as its widest number, regardless of the page's width.
    static void fitToNumber(QLineEdit *box, const QString &widest)
    {
        box->setFixedWidth(box->fontMetrics().horizontalAdvance(widest + QStringLiteral("00")));
    }

    // Makes a label wrap its text in the available width, without requesting any width.
    static QLabel *wrapping(QLabel *label)
    {
        label->setWordWrap(true);
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        return label;
    }

    // Sets the name, tool tip and accessible name of a control.
    template <typename Control>
    static Control *named(Control *control, const QString &name, const QString &toolTip,
                          const QString &accessibleName = {})
    {
        control->setObjectName(name);
        control->setToolTip(toolTip);
        if (!accessibleName.isEmpty())
            control->setAccessibleName(accessibleName);
        return control;
    }

private:
    SetUpContext m_context;
};

} // namespace calvorn
