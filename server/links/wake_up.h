// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace calvorn {

// Lets any thread call the owner's attention: knocks made before the owner looks become one. A descriptor of the
// kernel (eventfd(2)), so the knocking thread needs no Qt.
class WakeUp : public QObject
{
    Q_OBJECT

public:
    explicit WakeUp(QObject *parent = nullptr);
    ~WakeUp() override;

    // Any thread.
    void knock() const;

signals:
    void knocked(); // in the owner's thread

private:
    void clear();

    int m_event = -1;
};

} // namespace calvorn
