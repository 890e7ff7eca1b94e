// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include <utility>

namespace rvengine {

/// Calls a function in the thread of a receiver, from its event loop, each time that any thread
/// asks for it. Calls that are pending when the receiver is destroyed are dropped.
///
/// A connection that is made once hands nothing from thread to thread but the wish to call: unlike
/// QMetaObject::invokeMethod with a function object, it leaves the thread sanitizer nothing to
/// suppress.
class Notice : public QObject
{
    Q_OBJECT

public:
    template <class Receiver, class Function>
    Notice(Receiver* receiver, Function&& function)
    {
        connect(this, &Notice::given, receiver, std::forward<Function>(function),
                Qt::QueuedConnection);
    }

    /// Returns at once. Any thread may call this.
    void give() { emit given(); }

signals:
    void given();
};

} // namespace rvengine
