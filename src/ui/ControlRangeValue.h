#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tapalong {

/// What a slider can take, for QML.
struct ControlRangeValue {
    Q_GADGET
    QML_VALUE_TYPE(controlRange)
    Q_PROPERTY(double lower MEMBER lower CONSTANT FINAL)
    Q_PROPERTY(double upper MEMBER upper CONSTANT FINAL)
    Q_PROPERTY(double step MEMBER step CONSTANT FINAL)

public:
    double lower = 0;
    double upper = 0;
    double step = 0;

    bool operator==(const ControlRangeValue&) const = default;
};

} // namespace tapalong
