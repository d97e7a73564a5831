#pragma once

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tapalong {

/// The colours of the settings window and of the exit overlay, for a light or a dark desktop.
class Theme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool dark READ dark WRITE setDark NOTIFY changed FINAL)
    Q_PROPERTY(QColor window READ window NOTIFY changed FINAL)
    Q_PROPERTY(QColor card READ card NOTIFY changed FINAL)
    Q_PROPERTY(QColor hairline READ hairline NOTIFY changed FINAL)
    Q_PROPERTY(QColor text READ text NOTIFY changed FINAL)
    Q_PROPERTY(QColor secondary READ secondary NOTIFY changed FINAL)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed FINAL)
    Q_PROPERTY(QColor warningInk READ warningInk NOTIFY changed FINAL)
    Q_PROPERTY(QColor warningFill READ warningFill NOTIFY changed FINAL)
    Q_PROPERTY(QColor control READ control NOTIFY changed FINAL)
    Q_PROPERTY(QColor controlPressed READ controlPressed NOTIFY changed FINAL)
    Q_PROPERTY(QColor track READ track NOTIFY changed FINAL)
    Q_PROPERTY(QColor field READ field NOTIFY changed FINAL)
    Q_PROPERTY(QColor outline READ outline NOTIFY changed FINAL)

public:
    struct Colors {
        QColor window;         ///< behind everything
        QColor card;           ///< behind a section's rows
        QColor hairline;       ///< between rows
        QColor text;           ///< also the desktop's primary text colour
        QColor secondary;      ///< heads, hints, values
        QColor accent;         ///< switched on, focused
        QColor warningInk;     ///< on warningFill
        QColor warningFill;    ///< behind what hinders a start
        QColor control;        ///< a button's face
        QColor controlPressed; ///< the same under the pointer's button
        QColor track;          ///< the empty part of a slider, a switch that is off
        QColor field;          ///< behind text that can be edited
        QColor outline;        ///< around a field, a colour well, a switch
    };

    explicit Theme(QObject* parent = nullptr) : QObject(parent) {}

    [[nodiscard]] static const Colors& colors(bool dark);

    [[nodiscard]] bool dark() const { return m_dark; }
    void setDark(bool dark);

    [[nodiscard]] QColor window() const { return now().window; }
    [[nodiscard]] QColor card() const { return now().card; }
    [[nodiscard]] QColor hairline() const { return now().hairline; }
    [[nodiscard]] QColor text() const { return now().text; }
    [[nodiscard]] QColor secondary() const { return now().secondary; }
    [[nodiscard]] QColor accent() const { return now().accent; }
    [[nodiscard]] QColor warningInk() const { return now().warningInk; }
    [[nodiscard]] QColor warningFill() const { return now().warningFill; }
    [[nodiscard]] QColor control() const { return now().control; }
    [[nodiscard]] QColor controlPressed() const { return now().controlPressed; }
    [[nodiscard]] QColor track() const { return now().track; }
    [[nodiscard]] QColor field() const { return now().field; }
    [[nodiscard]] QColor outline() const { return now().outline; }

signals:
    void changed();

private:
    [[nodiscard]] const Colors& now() const { return colors(m_dark); }

    bool m_dark = false;
};

} // namespace tapalong
