#pragma once

#include "base/Observable.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace tapalong {

/// Base of the objects that QML binds to. They store nothing: each property reads the core when it is asked, and one
/// signal stands for all of them. Derived classes name this one in full: so must what the type registration is to find.
class ViewAdapter : public QObject {
    Q_OBJECT
    QML_ANONYMOUS

public:
    ~ViewAdapter() override;

    /// Emits a change that is still waiting for its turn, now.
    void flush();

signals:
    /// At most once per turn of the event loop, however much changed.
    void changed();

protected:
    using QObject::QObject;

    /// The core announces before it changes, so the signal comes on the next turn.
    void follow(ObservableObject& object);
    void unfollowAll();
    /// Runs right before `changed`.
    virtual void aboutToEmit() {}

private:
    void schedule();

    std::vector<Subscription> m_subscriptions;
    bool m_pending = false;
};

} // namespace tapalong
