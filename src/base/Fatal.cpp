#include "base/Fatal.h"

#include <cstdio>
#include <cstdlib>

namespace tapalong {

void fatal(std::string_view whatMustHold, std::source_location where) {
    static_cast<void>(std::fprintf(stderr, "%s:%u: %s: fatal: %.*s\n", where.file_name(), where.line(),
                                   where.function_name(), static_cast<int>(whatMustHold.size()), whatMustHold.data()));
    std::abort();
}

} // namespace tapalong
