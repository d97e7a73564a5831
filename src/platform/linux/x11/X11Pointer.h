#pragma once

#include <QPointF>

#include <optional>

namespace tapalong {

class X11Connection;
class X11ScreenPixels;

/// Where the pointer is, in the toolkit's screen coordinates; none while it is on another X screen. Waits for the
/// server's answer on our own connection where that is usable: the toolkit has a thread that reads its own, so that
/// each question there wakes two threads instead of one.
[[nodiscard]] std::optional<QPointF> pointerPosition(const X11Connection& connection, const X11ScreenPixels& screens);

} // namespace tapalong
