// SPDX-License-Identifier: MIT
#pragma once

#include "setup/number_entry.h"
#include "setup/set_up_page.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QScrollBar>

#include <array>

class QGridLayout;

namespace calvorn {

// The two auxiliary outputs of the parallel-port board, and the range of the potentiometer on the second output.
class AuxPage : public SetUpPage
{
    Q_OBJECT

public:
    explicit AuxPage(const SetUpContext &context);

    void fill() override;

private:
    struct Output
    {
        QCheckBox *enabled = nullptr;
        QCheckBox *inverse = nullptr;
        QLineEdit *title = nullptr;
        std::array<QLineEdit *, kAuxSteps> captions{};
        std::array<NumberEntry *, kAuxSteps> weights{};
    };

    QWidget *buildOutput(std::size_t output);
    void buildSteps(std::size_t output, QGridLayout *grid);
    QWidget *buildPotentiometer();
    QLineEdit *makePotBox(const char *name, const QString &toolTip, QString &value);
    NumberEntry *makeWeight(std::size_t output, std::size_t step);
    void txtPot_Change(QLineEdit *box, QString &value);
    void showPotRange();

    std::array<Output, 2> m_outputs;
    QScrollBar *m_potentiometer = nullptr;
    QLineEdit *m_potMax = nullptr;
    QLineEdit *m_potMin = nullptr;
};

} // namespace calvorn
