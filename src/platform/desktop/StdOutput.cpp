#include "platform/desktop/StdOutput.h"

#include <iostream>

namespace tapalong {

void StdOutput::print(std::string_view line) {
    std::cout << line << '\n' << std::flush;
    // One line that could not be written (a closed pipe, a full disk) must not silence the rest.
    std::cout.clear();
}

} // namespace tapalong
