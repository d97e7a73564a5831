#pragma once

#include "settings/Color.h"

namespace tapalong {

/// The colour of many characters. A text has few colours, so equal ones are kept once, and as long as the program runs;
/// a character that held its own would be nearly twice as large. Main thread only.
class SharedColor {
public:
    SharedColor(const Color& color); // NOLINT(google-explicit-constructor): it is the colour, kept elsewhere

    operator const Color&() const { return *m_color; } // NOLINT(google-explicit-constructor)
    const Color* operator->() const { return m_color; }

private:
    const Color* m_color;
};

} // namespace tapalong
