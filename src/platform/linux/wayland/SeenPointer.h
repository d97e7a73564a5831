#pragma once

#include <QObject>
#include <QPointF>

#include <optional>

namespace tapalong {

/// Where the pointer was last seen in one of our windows; a compositor tells no more.
class SeenPointer final : public QObject {
public:
    SeenPointer();

    /// In the toolkit's screen coordinates; none while the pointer is in no window of ours.
    [[nodiscard]] std::optional<QPointF> position() const { return m_position; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::optional<QPointF> m_position;
};

} // namespace tapalong
