#pragma once

namespace tapalong {

/// Lets the processor draw where there is no graphics card: its stand-in for one costs many times more per key. To be
/// called after the QGuiApplication is made and before any window. A choice of the user's in the environment holds.
void chooseRenderer();

} // namespace tapalong
