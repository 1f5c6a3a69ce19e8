// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace calvorn {

// Lets any thread wake the owner; several knocks before the owner reacts result in a single signal. Uses a kernel
// descriptor (eventfd(2)), so knock() can be called from threads that do not use Qt.
class WakeUp : public QObject
{
    Q_OBJECT

public:
    explicit WakeUp(QObject *parent = nullptr);
    ~WakeUp() override;

    // Can be called from any thread.
    void knock() const;

signals:
    void knocked(); // emitted in the owner's thread

private:
    void clear();

    int m_event = -1;
};

} // namespace calvorn
