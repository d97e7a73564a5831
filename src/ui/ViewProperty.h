#pragma once

#include "ui/Conversion.h"

// One line per property of an adapter. `expression` is evaluated at every read; writes go straight to the core, whose
// announcement brings the change signal. Macros, because the meta-object compiler reads no templates.

#define VIEW_PROPERTY(type, name, expression)                                                                          \
    Q_PROPERTY(type name READ name NOTIFY changed FINAL)                                                               \
public:                                                                                                                \
    [[nodiscard]] type name() const {                                                                                  \
        return tapalong::toQml(expression);                                                                            \
    }

#define VIEW_SETTING(type, name, setter, preference)                                                                   \
    Q_PROPERTY(type name READ name WRITE setter NOTIFY changed FINAL)                                                  \
public:                                                                                                                \
    [[nodiscard]] type name() const {                                                                                  \
        return tapalong::toQml((preference).get());                                                                    \
    }                                                                                                                  \
    void setter(const type& value) {                                                                                   \
        (preference).set(tapalong::fromQml(value));                                                                    \
    }

// A setting behind a slider: what is written is one of the range's own values, whoever asks for it. A screen reader may
// ask for any.
#define VIEW_SLIDER(name, setter, preference, range)                                                                   \
    Q_PROPERTY(double name READ name WRITE setter NOTIFY changed FINAL)                                                \
public:                                                                                                                \
    [[nodiscard]] double name() const {                                                                                \
        return (preference).get();                                                                                     \
    }                                                                                                                  \
    void setter(double value) {                                                                                        \
        (preference).set((range).snapped(value));                                                                      \
    }
